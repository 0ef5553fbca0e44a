#!/bin/sh
# clients.sh REPOSITORY ZORVIK MAKE_SAMPLE_PLANT: other programs write ZORVIK's input and read what it
# writes: a Fortran program with stream access and list-directed input, Octave. (recipes.sh: gnuplot.)
set -eu
zorvik=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
fail() { echo "$1"; exit 1; }
ran=

run() {
  printf '%s\n' "$1" END >zrvdat
  rm -f zrvlis
  "$zorvik" || { cat zrvlis; exit 1; }
}
command_of() { run "COMMAND: X = SCMD2('$1', $2);"; }

# check VARIABLE NUMBER ROWS COLUMNS: counts the elements that are not as client.f90 says. 0 columns
# stand for a list, 0 rows for a single value.
check() {
  i=1 j=1 of='' open='' close=''
  [ "$3" = 0 ] || { i=I of='(I)' open="DO I = 1, $3;" close=ENDDO; }
  [ "$4" = 0 ] || { j=J of='(I,J)' open="DO J = 1, $4; $open" close='ENDDO ENDDO'; }
  echo "$open COUNT = COUNT + 1;"
  echo "IF $1$of <> ${2}.0E8 + 10000.0 * $i + $j + 3000.0 * R"
  echo "THEN WRONG = WRONG + 1; ENDIF $close"
}
catalogue() {
  check P.CH7 5 "$1" 0; check T.CH7 6 2 "$1"; check VOID.CH7 7 "$1" 0; check G.CH7 8 2 $(($1 + 1))
  check DM.CH7 9 2 "$1"; check TW.HCS6 10 2 2; check QW.HCS6 11 4 2
  check P.COL4 12 0 0; check T.COL4 13 2 0; check VOID.COL4 14 0 0; check DM.COL4 15 2 0
  check P.SLVES2 16 0 0; check Q.SLVES2 17 2 0; check VOIDP.SLVES2 18 2 0; check PP.SLVES2 19 2 0
  check GEN.SLVES2 20 0 0; check M.SLVES2 21 2 0
  check PA.TANK5 22 0 0; check PV.TANK5 23 0 0; check TENV.TANK5 24 0 0; check VOIDP.TANK5 25 3 0
  check PP.TANK5 26 3 0; check GEN.TANK5 27 0 0; check GVM.TANK5 28 0 0; check M.TANK5 29 2 0
  e=30
  for quantity in P TF TG TW PW MG MF; do check $quantity.ACCUM3 $e 0 0; e=$((e + 1)); done
}
program_of() {
  echo 'R = 0; COUNT = 0; WRONG = 0;'
  echo 'BEGIN R = R + 1; IF TAU <> R / 2.0 THEN WRONG = WRONG + 1; ENDIF'
  check A 1 0 0; check B 2 3 0; check C 3 2 4
  [ "$1" != extended ] || { check DT 4 0 0; catalogue 2600; }
  [ "$1" != catalogue ] || catalogue 3
  echo "END PRINT TITLE, R, COUNT, WRONG;"
}

if command -v gfortran >/dev/null; then
  ran="$ran gfortran"
  gfortran -std=f2018 -Wall -o client "$1/examples/clients/client.f90"
  # In each of two records 12 listed values, 8 * 3 + 50 of the catalogue, 8 * 2600 + 51 with DT.
  for layout in 'plain 24' 'catalogue 172' 'extended 41726'; do
    count=${layout#* } layout=${layout% *}
    rm -f vnxres restxt
    ./client "$layout"
    run "$(program_of "$layout")" >console
    [ "$(cat console)" = " BY CLIENT 2 $count 0" ] || fail "$layout: $(cat console)"
    command_of 'TO_TEXT RESULTS' 0
    [ "$(./client read "$layout")" = "$count values, 0 wrong" ] || fail "$layout: restxt is read wrongly"
  done
  ./client saving
  command_of 'SHOW EVENTS' 0
  [ "$(tail -n 4 zrvlis)" = " Title = BY CLIENT
 Record = 1     Problem time = 1.050000000E+01
 Record = 2     Problem time = 2.025000000E+01
 TRIP SCRAM" ] || fail "vnxsav is listed wrongly"
  mv vnxsav whole
  for record in 1 2; do
    rm -f savtxt vnxsav
    cp whole vnxsav
    command_of 'TO_TEXT SAVING' $record
    rm vnxsav
    command_of 'FROM_TEXT SAVING' 0
    mv vnxsav found
    ./client one $record
    cmp found vnxsav
  done
else
  echo "gfortran is not installed: no Fortran client was run"
fi

if command -v octave >/dev/null; then
  ran="$ran octave"
  rm -f vnxres
  "$3" vnxres
  cp "$1/examples/intervals.zrv" zrvdat
  rm -f zrvlis
  "$zorvik"
  # As Octave loads it: the pressure falls by 2.0E6 in each row from the third on.
  octave --norc --quiet --eval "t = load('rows');
    assert(size(t), [7 3]); assert(t(:,1)', 0:10:60); assert(diff(t(2:7,2))', -2e6 * ones(1, 5));" \
    >octave.log 2>&1 || fail "$(cat octave.log)"
else
  echo "octave is not installed: it loaded nothing"
fi
echo "clients run:$ran"
[ -n "$ran" ] || exit 77
