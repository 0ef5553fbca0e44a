local x = 1.5 print(x)
