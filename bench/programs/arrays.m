a = 1.5 * ones(1, 10000);
for i = 1:300
  a = a + 0.25;
  a = a * 0.999;
end
top = max(a);
b = ones(1, 15000);
b(7777) = 2;
for i = 1:300
  top = top + max(b);
  b(1:6) = [1.0, 0.5, top, 0.25, 1.5, 2.5];
end
disp(top)
