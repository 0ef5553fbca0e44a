# Draws the columns of an OUTPUT file over the time in its first column:
#   gnuplot -e "file='table'" plot_output.gp          makes table.png
# Every WRITE of the OUTPUT must give one line; lines that begin with # are headings.
if (!exists("file")) file = 'table'
if (!exists("columns")) { stats file nooutput; columns = STATS_columns }
set terminal pngcairo size 640,360 font ",10"
set output file.'.png'
set xlabel 'TAU, s'
set key outside top center horizontal
set grid
# Quantities of different size share the picture: each is drawn as a part of its largest value.
largest(c) = system(sprintf("awk '!/^#/ { x = $%d < 0 ? -$%d : $%d; if (x > m) m = x } END { printf \"%%.9e\", m }' %s", c, c, c, file)) + 0.0
array M[columns]
do for [c=2:columns] { M[c] = largest(c) > 0 ? largest(c) : 1.0 }
set ylabel 'part of the largest value'
plot for [c=2:columns] file using 1:(column(c) / M[c]) with lines lw 2 \
  title sprintf('column %d, to %.3g', c, M[c])
