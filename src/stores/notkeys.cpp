// Names are found through a hash; values and texts are handed out from the front of their pools and
// never given back.
#include "stores/notkeys.h"

#include "driver/messages.h"
#include "driver/name_slots.h"
#include "driver/text.h"

namespace zorvik {

NotkeyStore notkeys;

namespace {

NameSlots<1024> slots;                   // numbers of notkeys
static_assert(2 * kMaxNotkeys <= 1024);  // half of the slots stay free, so searches end soon

}  // namespace

void reset_notkeys() {
  slots.reset();
  notkeys.count = 0;
  notkeys.next_value = 1;
  notkeys.next_text = 1;
}

std::string_view notkey_name(int number) {
  const Notkey& notkey = notkeys.notkey[number];
  return {notkey.name, static_cast<std::size_t>(notkey.name_length)};
}

int find_notkey(std::string_view name) {
  return slots.find(trim_right_char(name, ' '), notkey_name);
}

int enter_notkey(std::string_view name, int line) {
  if (notkeys.count >= kMaxNotkeys) {
    stop_with_listing(message("%fat- Number of notkeys > ", kMaxNotkeys), line);
  }
  Notkey& notkey = notkeys.notkey[++notkeys.count];
  copy_padded(notkey.name, kNotkeyNameWidth, name);
  notkey.name_length = static_cast<int>(name.substr(0, kNotkeyNameWidth).size());
  notkey.defined = false;
  slots.slot(notkey_name(notkeys.count), notkey_name) = static_cast<std::int16_t>(notkeys.count);
  return notkeys.count;
}

void define_notkey(int number, BaseType base_type, int rank, int d1, int d2, int line) {
  const bool is_text = base_type == kCharacter;
  int& next = is_text ? notkeys.next_text : notkeys.next_value;
  // The product of two extents may pass 32 bits.
  const long long wanted = is_text ? d1 : static_cast<long long>(d1) * d2;
  if (next + wanted - 1 > (is_text ? kTextPoolCapacity : kNotkeyCapacity)) {
    stop_with_listing(
        is_text ? "%fat- Space for TEXT notkeys is full" : "%fat- Space for notkeys is full", line);
  }
  Notkey& notkey = notkeys.notkey[number];
  notkey.defined = true;
  notkey.rank = rank;
  notkey.base_type = base_type;
  notkey.descriptor = {next, d1, d2};
  next += static_cast<int>(wanted);
}

}  // namespace zorvik
