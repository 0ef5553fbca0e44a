#!/bin/sh
# readme.sh REPOSITORY BUILD: runs the blocks of README.md one after the other, as a reader would:
# sh blocks from the repository's root, a zorvik block as the program build/demo/zrvdat. What a text
# block shows must be in the output of the sh block before it. scripts/test, which runs this, is left
# out. The commands name build/release, so with other builds there is nothing to run.
. "${0%/*}/head.sh"
[ "$2" = "$1/build/release" ] || { echo "skipped: not the build that README.md speaks of"; exit 77; }
cd "$1"
awk -v to="$work/" '
  /^```/ { name = ""; if (!open) name = sprintf("%s%02d.%s", to, ++n, substr($0, 4)); open = !open; next }
  open { print > name }' README.md
export HOME="$work"
blocks=0
for block in "$work"/*; do
  case $block in
    *.sh)
      grep -qx scripts/test "$block" && continue
      sh -eu "$block" >"$work/output" 2>&1 </dev/null || { cat "$block" "$work/output"; exit 1; }
      ;;
    *.zorvik) cp "$block" build/demo/zrvdat ;;
    *.text)
      # As one string: the lines must stand there one after the other.
      case $(cat "$work/output") in
        *"$(cat "$block")"*) ;;
        *) echo "not shown:"; cat "$block"; echo "but:"; cat "$work/output"; exit 1 ;;
      esac
      ;;
    *) echo "a block of no known kind: $block"; exit 1 ;;
  esac
  blocks=$((blocks + 1))
done
echo "$blocks blocks of README.md are as they say"
[ "$blocks" -ge 8 ]
