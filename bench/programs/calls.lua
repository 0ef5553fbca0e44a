local sum, x = 0.0, 0.0
local sqrt, sin, abs, max = math.sqrt, math.sin, math.abs, math.max
local function step() sum = sum + sqrt(x) * sin(x) + max(x, 1.5) / (1.0 + abs(sum)) end
for i = 1, 300000 do
  x = i * 0.001
  step()
end
print(sum)
