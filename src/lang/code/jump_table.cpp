// A jump is compiled as a word that waits: 0 in the code store, and a note of the place in the text
// that it is to lead to. At the procedure's END each note is looked up among the places met:
//   GOTO L -> label L    THEN, ELSE -> ELSE or ENDIF    DO -> ENDDO    ENDDO -> behind the DO
#include "lang/code/jump_table.h"

#include "driver/messages.h"
#include "lang/code/code_store.h"
#include "stores/keys.h"

namespace zorvik {
namespace {

struct Place {
  Position position;
  int code_position;
};

struct WaitingWord {
  JumpTarget kind;
  Position target;
  int code_position;
};

constexpr int kKinds = 4;
constexpr int kMaxPlaces = 2 * kMaxControlStatements;   // an ELSE and an ENDIF for every IF
constexpr int kMaxWaiting = 5 * kMaxControlStatements;  // GOTO, THEN, ELSE, DO, ENDDO

struct JumpTable {
  Place place[kKinds][kMaxPlaces + 1];  // from 1, in the order of the text
  int places[kKinds];
  WaitingWord waiting[kMaxWaiting];
  int waiting_count;
};
JumpTable jump_table;

}  // namespace

void reset_jumps() {
  for (int& count : jump_table.places) count = 0;
  jump_table.waiting_count = 0;
}

void record_position(JumpTarget kind, Position position, int code_position) {
  const auto k = static_cast<int>(kind);
  if (jump_table.places[k] == kMaxPlaces) stop_on_console("%dbg- IU96BS");
  jump_table.place[k][++jump_table.places[k]] = {position, code_position};
}

void record_jump(JumpTarget kind, Position target, int code_position) {
  if (jump_table.waiting_count == kMaxWaiting) stop_on_console("%dbg- IU96BS");
  jump_table.waiting[jump_table.waiting_count++] = {kind, target, code_position};
}

// The places of a kind were met in the order of the text, so they can be searched by halving.
void resolve_jumps_of_procedure() {
  for (int w = 0; w < jump_table.waiting_count; ++w) {
    const WaitingWord& word = jump_table.waiting[w];
    const auto k = static_cast<int>(word.kind);
    const Place* const places = jump_table.place[k];
    const int found = IU96BS(places, &Place::position, jump_table.places[k], word.target,
                             SearchOrder::kIncreasing);
    code_store.word[word.code_position] = places[found].code_position;
  }
}

// They are known by their size alone: no other word is below -9800000. Heads reach down to
// -2099999, the separator of lists is -4000000, links of notkeys reach down to -300000.
void resolve_output_keys() {
  for (int position = 1; position < code_store.next_free; ++position) {
    std::int32_t& word = code_store.word[position];
    if (!is_output_key_link(word)) continue;
    const std::int32_t first_key = header_word(output_of_link(word), kFirstKeyDescriptor);
    word = first_key + key_of_link(word) - kFirstOutputKey;
  }
}

}  // namespace zorvik
