BEGIN {
  sum = 0.0
  for (i = 1; i <= 1000; ++i) {
    x = i * 0.5
    for (j = 1; j <= 2000; ++j) {
      sum = sum + x / j
      x = x * 1.0001 - 0.25
    }
  }
  print sum
}
