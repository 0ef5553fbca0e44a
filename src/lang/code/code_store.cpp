// Words are appended one by one and the room is checked for each, so that the message names the
// line of the statement that does not fit. An expression of n items is laid down list by list:
//   n | n first words | n second words | n kind words
#include "lang/code/code_store.h"

#include "driver/messages.h"

namespace zorvik {

CodeStore code_store;

void reset_code_store() { code_store.next_free = 1; }

int append_code_word(std::int32_t word, int line, std::string_view full) {
  if (code_store.next_free > kCodeCapacity) stop_with_listing(full, line);
  code_store.word[code_store.next_free] = word;
  return code_store.next_free++;
}

void append_expression(const ItemList& items, int line, std::string_view full) {
  append_code_word(items.count, line, full);
  for (const auto word : {&Item::first, &Item::second, &Item::kind}) {
    for (int k = 0; k < items.count; ++k) append_code_word(items.item[k].*word, line, full);
  }
}

}  // namespace zorvik
