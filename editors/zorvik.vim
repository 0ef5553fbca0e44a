" Vim syntax file for programs of ZORVIK (zrvdat, *.zrv).
" Copy it to ~/.vim/syntax/zorvik.vim and add to ~/.vimrc:
"   autocmd BufRead,BufNewFile zrvdat,*.zrv setfiletype zorvik
if exists("b:current_syntax")
  finish
endif
syntax case ignore

syntax keyword zorvikKeyword IF THEN ELSE ENDIF GOTO PRINT STOP END OUT OUTPUT
syntax keyword zorvikKeyword WRITE RETURN BEGIN WRITE1 DO ENDDO
syntax keyword zorvikFunction MINA MAXA ABS LOG INT FLOAT NINT SQRT EXP SIN COS TAN
syntax keyword zorvikFunction ASIN ACOS ATAN SINH COSH TANH TETA RAND MOD MAX MIN
syntax keyword zorvikFunction RANDG LINA LINS WS1P1 WS2P1 SCMD2 INTEG FOURT GINFO
syntax keyword zorvikKey LOCAL_ERR FORMAT TAU TURN_ON DT_OUT FIRST
syntax match zorvikLabel "\<\h\w*\s*:\ze\(\s\|$\)"
syntax match zorvikNumber "\<\d\+\(\.\d*\)\?\(E[+-]\?\d\+\)\?"
syntax match zorvikOperator "[][&|^]\|\*\*\|<>\|=="
syntax match zorvikComment "!.*$"
syntax match zorvikText "'[^']*'"
syntax match zorvikLost "\%>80v.\+" containedin=ALL

highlight default link zorvikKeyword Statement
highlight default link zorvikFunction Function
highlight default link zorvikKey Identifier
highlight default link zorvikLabel Label
highlight default link zorvikNumber Number
highlight default link zorvikOperator Operator
highlight default link zorvikComment Comment
highlight default link zorvikText String
highlight default link zorvikLost Error

" What stands behind column 80 does not count.
setlocal colorcolumn=81 commentstring=!%s
let b:current_syntax = "zorvik"
