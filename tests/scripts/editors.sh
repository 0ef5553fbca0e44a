#!/bin/sh
# editors.sh REPOSITORY: the editor files mark what stands behind column 80 and are well formed. Vim
# shows its file on a line, when it is installed. (Their words: documents/pages.)
. "${0%/*}/head.sh"
cd "$1/editors"
grep -q 'colorcolumn=81' zorvik.vim
grep -q 'guidestripe 81' zorvik.nanorc
grep -q '"editor.rulers": \[80\]' vscode/package.json
if has node; then
  for file in vscode/*.json vscode/syntaxes/*.json; do
    node -e 'JSON.parse(require("fs").readFileSync(process.argv[1]))' "$file"
  done
fi
if has vim; then
  { printf "tau = ws1p1(1,'P! IF', 2.5, 2) ! end"; printf '%46s X = 1\n' ''; } >"$work/program.zrv"
  cat >"$work/show.vim" <<'VIM'
syntax on
source zorvik.vim
call writefile(map([1, 7, 16, 17, 24, 34, 86], 'synIDattr(synID(1, v:val, 1), "name")'), $WORK . "/names")
qa!
VIM
  WORK=$work vim -N -u NONE -i NONE -n -es -S "$work/show.vim" "$work/program.zrv" </dev/null || true
  printf 'zorvik%s\n' Key Function Text Text Number Comment Lost | diff - "$work/names"
fi
