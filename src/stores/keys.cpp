// The table is written as the language describes its keys: a 10-character name, then the attributes
//   column 11  "+": may be given a value only once     column 16  R real, I integer
//   column 13  "+": may be assigned                    column 17  D: has a default
#include "stores/keys.h"

#include <array>

#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/text.h"
#include "stores/value_types.h"

namespace zorvik {
namespace {

// Column 12, "+" for TAU, tells nothing that a check asks for.
constexpr Key make_key(std::string_view entry, double default_value) {
  return {entry.substr(0, entry.find(' ')),    entry[10] == '+', entry[12] == '+',
          entry[15] == 'R' ? kReal : kInteger, entry[16] == 'D', default_value};
}

constexpr std::array<Key, 7> kKeys = {
    Key{},
    make_key("LOCAL_ERR ---..RD-..", 1.0e-4),
    make_key("FORMAT    --+..ID-..", kStartDigits),
    make_key("TAU       -+-..R--..", kUndefined),
    make_key("TURN_ON   --+..ID-..", 1.0),
    make_key("DT_OUT    --+..RD-..", 0.0),
    make_key("FIRST     --+..ID-..", 0.0),
};
static_assert(kKeys[kFormat].assignable && !kKeys[kTau].assignable &&
              kKeys[kFirst].name == "FIRST");

}  // namespace

const Key& key_of(int number) { return kKeys[static_cast<std::size_t>(number)]; }

int find_key(std::string_view name, int first, int last) {
  for (int number = first; number <= last; ++number) {
    if (equal_padded(name, key_of(number).name)) return number;
  }
  return 0;
}

void set_initial_values_of_main() {
  for (int number = kFirstMainKey; number <= kLastUserMainKey; ++number) {
    const Key& key = key_of(number);
    double& value = main_key_value(static_cast<KeyNumber>(number));
    if (value != kUndefined) continue;
    if (!key.has_default) {
      count_error(message("%err- MAIN proc. Undefined key ", key.name));
      continue;
    }
    value = key.default_value;
    const NumberText text =
        key.base_type == kReal ? format_real(value) : format_integer(round_half_away(value));
    issue_message(listing_unit,
                  message("%inf- MAIN proc. Initial value of ", key.name, " is ", text));
  }
}

}  // namespace zorvik
