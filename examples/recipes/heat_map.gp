# Draws a quantity over cells and time, from the file of examples/heat_map.zrv: a line for each
# cell of each record with the time, the cell and the value.
#   gnuplot -e "file='map'; quantity='wall temperature, K'" heat_map.gp     makes map.png
if (!exists("file")) file = 'map'
if (!exists("quantity")) quantity = 'wall temperature, K'
set terminal pngcairo size 640,360 font ",10"
set output file.'.png'
set xlabel 'TAU, s'
set ylabel 'cell'
set cblabel quantity
set autoscale xfix
set autoscale yfix
plot file using 1:2:3 with image notitle
