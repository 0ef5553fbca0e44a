#!/bin/sh
# editors.sh REPOSITORY PRINT_TABLES: the editor files know each keyword, function and key, and no
# others; each marks what stands behind column 80. Vim shows it on a line, when it is installed.
set -eu
cd "$1/editors"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$2" | sort >"$work/words"
status=0
compare() {
  sort "$work/found" | diff "$work/words" - >"$work/diff" && return
  echo "$1, < missing, > unknown:"
  cat "$work/diff"
  status=1
}
sed -nE 's/^syntax keyword zorvik[A-Za-z]+ //p' zorvik.vim | tr ' ' '\n' >"$work/found"
compare zorvik.vim
sed -nE 's/.*\\<\(([A-Z0-9_|]+)\)\\>.*/\1/p' zorvik.nanorc | tr '|' '\n' >"$work/found"
compare zorvik.nanorc
sed -nE 's/.*\(\?i\)\\\\b\(([A-Z0-9_|]+)\)\\\\b.*/\1/p' vscode/syntaxes/*.json | tr '|' '\n' >"$work/found"
compare vscode
grep -q 'colorcolumn=81' zorvik.vim
grep -q 'guidestripe 81' zorvik.nanorc
grep -q '"editor.rulers": \[80\]' vscode/package.json

if command -v node >/dev/null; then
  for file in vscode/*.json vscode/syntaxes/*.json; do
    node -e 'JSON.parse(require("fs").readFileSync(process.argv[1]))' "$file" || status=1
  done
fi
if command -v vim >/dev/null; then
  { printf "tau = ws1p1(1,'P! IF', 2.5, 2) ! end"; printf '%46s X = 1\n' ''; } >"$work/program.zrv"
  cat >"$work/show.vim" <<'END'
syntax on
source zorvik.vim
let names = []
for column in [1, 7, 16, 17, 24, 34, 86]
  call add(names, synIDattr(synID(1, column, 1), "name"))
endfor
call writefile(names, $WORK . "/names")
qa!
END
  WORK=$work vim -N -u NONE -i NONE -n -es -S "$work/show.vim" "$work/program.zrv" </dev/null || true
  printf 'zorvik%s\n' Key Function Text Text Number Comment Lost | diff - "$work/names" || status=1
else
  echo "vim is not installed: its file was compared only"
fi
exit $status
