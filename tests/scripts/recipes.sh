#!/bin/sh
# recipes.sh REPOSITORY ZORVIK MAKE_SAMPLE_PLANT: the recipes over the sample plant.
. "${0%/*}/head.sh"
recipes=$1/examples/recipes
export ZORVIK="$2"
maker=$3
cd "$work"

# Two cases; the smaller break is at 8.0E6 - 1.0E4 Pa in the end, the other at 5.49E6.
mkdir -p cases/small cases/large
(cd cases/small && "$maker" variant=vnxres)
(cd cases/large && "$maker" vnxres)
printf "P = 0.0;\nBEGIN\nP = P.CH1(20);\nEND\nPRINT P;\nEND\n" >last.zrv
check_cases() {
  [ "$(cat cases/large/last/console cases/small/last/console)" = " 5.490000000E+06
 7.990000000E+06" ] || fail "wrong results of $1"
  rm -r cases/*/last
}
printf '%s\n' cases/* | xargs -P 2 -I {} "$recipes/run_case" last.zrv {}
check_cases xargs
if has parallel; then
  parallel "$recipes/run_case" last.zrv {} ::: cases/*
  check_cases parallel
fi
for task in 1 2; do
  SLURM_ARRAY_TASK_ID=$task SLURM_SUBMIT_DIR=$recipes "$recipes/slurm_array" last.zrv cases
done
check_cases slurm_array
mkdir empty
! "$recipes/run_case" last.zrv empty 2>message || fail "a case without results is no failure"
grep -q 'empty: status 1' message

# The power of record 5, at 8 s, is the second number of its standard part.
cd cases/large
"$recipes/edit_value" 5 2 1.25E9
printf "SUM = 0.0;\nBEGIN\nIF TAU == 8.0 THEN PRINT POWER; ENDIF\nSUM = SUM + POWER;\nEND\nPRINT SUM;\nEND\n" >../../power.zrv
"$recipes/run_case" ../../power.zrv .
# 3.0E9 six times, once changed, and 1.875E8 24 times
[ "$(cat power/console)" = " 1.250000000E+09
 2.375000000E+10" ] || fail "wrong results of edit_value"
! "$recipes/edit_value" 32 2 0 2>/dev/null || fail "edit_value found a record that is not there"
cd ../..

if has make && has gnuplot; then
  make -s -f "$recipes/Makefile" RESULTS=cases/large/vnxres.old
  for picture in table.png map.png; do
    [ "$(head -c 8 $picture | od -An -tx1)" = " 89 50 4e 47 0d 0a 1a 0a" ] || fail "$picture is no PNG"
    mv $picture large_$picture
  done
  touch cases/small/vnxres
  make -s -f "$recipes/Makefile" RESULTS=cases/small/vnxres table.png map.png
  ! cmp -s table.png large_table.png || fail "two runs look the same"
  cmp map.png large_map.png # the walls do not know of the pressure
  touch -d '1 hour' cases/small/vnxres
  ! make -s -f "$recipes/Makefile" RESULTS=cases/small/vnxres ZORVIK=false table.png 2>/dev/null ||
    fail "make does not notice a failed run"
fi
