// print_tables: the keywords, functions and keys of the language as the program knows them, one to
// a line, for the check of the editor files.
#include <iostream>

#include "lang/text/language_tables.h"
#include "stores/keys.h"

int main() {
  using namespace zorvik;
  for (const auto& keyword : kKeywords) std::cout << keyword << '\n';
  for (const Function& function : kFunctions) std::cout << function.name << '\n';
  for (int key = kFirstMainKey; key <= kLastOutputKey; ++key) {
    std::cout << key_of(key).name << '\n';
  }
}
