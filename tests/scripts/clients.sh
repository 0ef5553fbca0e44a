#!/bin/sh
# clients.sh REPOSITORY ZORVIK MAKE_SAMPLE_PLANT: other programs write ZORVIK's input and read what it
# writes: a Fortran program with stream access and list-directed input, Octave. (recipes.sh: gnuplot.)
. "${0%/*}/head.sh"
zorvik=$2
cd "$work"
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
  e=5
  for entry in "P.CH7 $1 0" "T.CH7 2 $1" "VOID.CH7 $1 0" "G.CH7 2 $(($1 + 1))" "DM.CH7 2 $1" \
    'TW.HCS6 2 2' 'QW.HCS6 4 2' P.COL4 'T.COL4 2' VOID.COL4 'DM.COL4 2' P.SLVES2 'Q.SLVES2 2' \
    'VOIDP.SLVES2 2' 'PP.SLVES2 2' GEN.SLVES2 'M.SLVES2 2' PA.TANK5 PV.TANK5 TENV.TANK5 'VOIDP.TANK5 3' \
    'PP.TANK5 3' GEN.TANK5 GVM.TANK5 'M.TANK5 2' P.ACCUM3 TF.ACCUM3 TG.ACCUM3 TW.ACCUM3 PW.ACCUM3 \
    MG.ACCUM3 MF.ACCUM3; do
    set -- $entry
    check "$1" $e "${2:-0}" "${3:-0}"
    e=$((e + 1))
  done
}
program_of() {
  echo 'R = 0; COUNT = 0; WRONG = 0;'
  echo 'BEGIN R = R + 1; IF TAU <> R / 2.0 THEN WRONG = WRONG + 1; ENDIF'
  check A 1 0 0; check B 2 3 0; check C 3 2 4
  [ "$1" != extended ] || { check DT 4 0 0; catalogue 2600; }
  [ "$1" != catalogue ] || catalogue 3
  echo "END PRINT TITLE, R, COUNT, WRONG;"
}

if has gfortran; then
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
fi

if has octave; then
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
fi
echo "clients run:$ran"
[ -n "$ran" ] || exit 77
