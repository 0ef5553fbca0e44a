// print_tables: the words of the language as the program knows them, one to a line: keyword,
// function (with its signature and number of arguments), key or operator. Documents and editor
// files are checked against it.
#include <iostream>

#include "lang/text/language_tables.h"
#include "stores/keys.h"

int main() {
  using namespace zorvik;
  for (const auto& keyword : kKeywords) std::cout << "keyword " << keyword << '\n';
  for (const Function& f : kFunctions) {
    std::cout << "function " << f.name << ' ' << f.signature << ' ' << f.arguments << '\n';
  }
  for (int key = kFirstMainKey; key <= kLastOutputKey; ++key) {
    std::cout << "key " << key_of(key).name << '\n';
  }
  for (int code = 1; code <= kLastOperator; ++code) {
    std::cout << "operator " << kOperatorTexts[static_cast<std::size_t>(code)] << '\n';
  }
}
