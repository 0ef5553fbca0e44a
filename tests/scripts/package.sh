#!/bin/sh
# package.sh REPOSITORY BUILD VERSION: the packages hold what they must; the .deb is sound; the demo
# runs from the unpacked archive, with a listing and, where gnuplot is there, a picture.
. "${0%/*}/head.sh"
cd "$work"
cpack --config "$2/CPackConfig.cmake" -B "$work/packed" >cpack.log 2>&1 || { cat cpack.log; exit 1; }
mkdir unpacked
tar -xzf packed/*.tar.gz -C unpacked --strip-components=1
deb=$(find packed -maxdepth 1 -name "zorvik_$3_*.deb")
if has lintian && [ -n "$deb" ]; then
  lintian --allow-root --fail-on error "$deb"
  dpkg-deb -x "$deb" installed
  diff -r unpacked installed/usr
fi
# Those that need something prepared, those with a picture; the others go as outputs does.
for name in outputs heat_map compare join_append repair_results from_text_saving; do
  unpacked/share/zorvik/demo "$name" >demo.log 2>&1 || { cat demo.log; exit 1; }
  grep -q '^== exit status 0$' demo.log
  grep -q ' 00001 ' demo.log
  case $name in
    heat_map | outputs)
      ! command -v gnuplot >/dev/null || grep -q '^== picture' demo.log ;;
  esac
done
cd unpacked
for file in bin/zorvik share/doc/zorvik/copyright share/zorvik/editors/zorvik.vim share/man/man1/zorvik.1* \
  share/man/man5/zorvik_files.5* share/man/man7/zorvik_language.7* share/man/man7/zorvik_messages.7*; do
  [ -e "$file" ] || fail "no $file"
done
