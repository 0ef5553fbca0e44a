// Name lookup: what a name in a procedure stands for.
#ifndef ZORVIK_LANG_COMPILE_NAME_LOOKUP_H_
#define ZORVIK_LANG_COMPILE_NAME_LOOKUP_H_

#include "lang/text/expression_items.h"
#include "lang/text/lexer.h"

namespace zorvik {

// The procedure whose names are looked up.
struct NameScope {
  int line;                  // of the statement, for messages
  int first_key_descriptor;  // of the OUTPUT's own key copies; 0 in MAIN and in the block
};

// Gives the item of a variable. In this order: a key of a named OUTPUT (KEY.NAME), a results
// variable, a key of the OUTPUT itself, a key of MAIN, a notkey. As a target a new name becomes a
// notkey. Otherwise false, after one of these, counted: "%err- Undefined variable ", "%err- Name of
// OUTPUT not found. Variable ", "%err- Variable from <vnxres>" ... " in the left side of "="",
// "%err- Key " ..., "%err- Multiple definition of key ".
bool lookup_name(const Lexeme& name, bool target, const NameScope& scope, Item& item);

}  // namespace zorvik

#endif  // ZORVIK_LANG_COMPILE_NAME_LOOKUP_H_
