local sum = 0.0
for i = 1, 1000 do
  local x = i * 0.5
  for j = 1, 2000 do
    sum = sum + x / j
    x = x * 1.0001 - 0.25
  end
end
print(sum)
