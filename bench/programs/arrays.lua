local a, top = {}, 0.0
for k = 1, 10000 do a[k] = 1.5 end
for i = 1, 300 do
  for k = 1, #a do a[k] = a[k] + 0.25 end
  for k = 1, #a do a[k] = a[k] * 0.999 end
end
local function maxa(t)
  local most = t[1]
  for k = 2, #t do if t[k] > most then most = t[k] end end
  return most
end
top = maxa(a)
local b = {}
for k = 1, 15000 do b[k] = 1.0 end
b[7777] = 2.0
for i = 1, 300 do
  top = top + maxa(b)
  b[1], b[2], b[3], b[4], b[5], b[6] = 1.0, 0.5, top, 0.25, 1.5, 2.5
end
print(top)
