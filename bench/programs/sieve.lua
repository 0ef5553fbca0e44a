local n, count, prime = 15000, 0, {}
for round = 1, 20 do
  for i = 1, n do prime[i] = 1 end
  for i = 2, 122 do
    if prime[i] == 1 then
      for j = i * i, n, i do prime[j] = 0 end
    end
  end
  for i = 2, n do
    if prime[i] == 1 then count = count + 1 end
  end
end
print(count)
