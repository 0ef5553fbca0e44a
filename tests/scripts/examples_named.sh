#!/bin/sh
# examples_named.sh REPOSITORY: every example has a case that runs it, and says what it shows.
cd "$1" || exit 2
status=0
for example in examples/*.zrv; do
  grep -rqE "^(--- program )?$example( |\$)" tests/cases || { echo "no case runs $example"; status=1; }
  head -n 1 "$example" | grep -q '^! ...' || { echo "$example begins with no comment"; status=1; }
done
exit $status
