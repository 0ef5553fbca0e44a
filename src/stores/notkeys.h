// Notkeys: the user's own variables, their names, values and texts.
//
// Pass 2 enters a name at its first assignment in the text; the variable comes into being when an
// assignment to it is first executed, and keeps its shape, type and place for the rest of the run.
#ifndef ZORVIK_STORES_NOTKEYS_H_
#define ZORVIK_STORES_NOTKEYS_H_

#include <string_view>

#include "stores/value_types.h"

namespace zorvik {

constexpr int kMaxNotkeys = 300;
constexpr int kNotkeyNameWidth = 20;
constexpr int kNotkeyCapacity = 100000;  // values of numeric notkeys
constexpr int kTextPoolCapacity = 200;   // characters of character notkeys

struct Notkey {
  char name[kNotkeyNameWidth];
  int name_length;
  bool defined;
  int rank;  // 0, 1 or 2 once defined
  BaseType base_type;
  Descriptor descriptor;
};

struct NotkeyStore {
  Notkey notkey[kMaxNotkeys + 1];  // from 1
  int count;
  double value[kNotkeyCapacity + 1];  // from 1
  int next_value;
  char text[kTextPoolCapacity + 1];  // from 1
  int next_text;
};
extern NotkeyStore notkeys;

void reset_notkeys();

std::string_view notkey_name(int number);  // without trailing blanks

// The number (from 1) of the notkey of just that name, blanks behind it or not, or 0.
int find_notkey(std::string_view name);

// Enters a new name, cut to 20 characters, and returns its number; the 301st, of line `line`, ends
// the run with "%fat- Number of notkeys > 300".
int enter_notkey(std::string_view name, int line);

// Makes the notkey a defined variable and gives it its place: d1 * d2 positions of the store, or d1
// characters of the text pool. When they are not left: "%fat- Space for notkeys is full", "%fat-
// Space for TEXT notkeys is full", and the run ends.
void define_notkey(int number, BaseType base_type, int rank, int d1, int d2, int line);

}  // namespace zorvik

#endif  // ZORVIK_STORES_NOTKEYS_H_
