// The save file's layout, written down once: a table of fields, and the walk over it that takes a
// part from where it comes from to where it goes. Scanning, listing, copying, writing as text and
// reading from text are such walks.
//
// vnxsav is a little-endian byte stream with nothing between the fields: the control structures,
// groups C1 to C6, once, then saving records, groups R1 to R28, to the file's end. A group is one
// or more fields, a field a run of items whose number follows from counts read earlier; a field
// whose items are absent may leave a placeholder, one integer or one character. Example, the
// control structures of a file without arrays: Ncons 7, title "AB", j30 = j10 = j2 = 1, no cells:
//   C1 07000000 02000000 01000000 00000000   C2 4142   C3 01000000 01000000 01000000
// Counts are untrusted: they are subtracted in 64 bits, and a negative number of items is none.
#ifndef ZORVIK_SERVICE_SAVE_LAYOUT_H_
#define ZORVIK_SERVICE_SAVE_LAYOUT_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "driver/file.h"

namespace zorvik {

enum class SaveItem : std::uint8_t {
  kInteger,   // int32
  kReal,      // 8-byte IEEE double
  kCharCode,  // int32, the code of one character
  kTitleChar,
  kShortText,  // 20 characters: names
  kLongText,   // 40 characters
};
constexpr std::int64_t bytes_of(SaveItem item) {
  constexpr std::int64_t kBytes[] = {4, 8, 4, 1, 20, 40};
  return kBytes[static_cast<int>(item)];
}

// Integers of the file on which the layout itself depends, under the names that the system code and
// the text form give them.
enum class SaveCount : std::uint8_t {
  // clang-format off
  kNone, kNcons, kLentit, kLefle1, kNels, kJ30, kJ10, kJ2,                  // control structures
  kNvar, kNsaves, kJ3x, kJ2x, kNx, kJ3xt, kJ2x00,                           // R1 to R3
  kNev, kJ3ce, kJ2ce, kJ3cte, kJ0ev, kJ30ev, kJ10ev, kJ2ev,                 // R7, R13, R15
  kLs1p, kLe1, kLexe, kNnlist, kJ0li, kNwro, kLwrb, kNvarAgain, kI2, kEnd,  // R16, R20, R25, R28
  // clang-format on
};

// The values met so far. Those of the control structures stay for the records that follow.
struct SaveCounts {
  std::int32_t value[static_cast<int>(SaveCount::kEnd)] = {};
  std::int32_t& operator[](SaveCount count) { return value[static_cast<int>(count)]; }
  std::int32_t operator[](SaveCount count) const { return value[static_cast<int>(count)]; }
};

// A number of items: the difference of two counts, less a constant.
struct Difference {
  SaveCount plus = SaveCount::kNone, minus = SaveCount::kNone;
  std::int64_t less = 0;
  std::int64_t in(const SaveCounts& counts) const {
    return std::int64_t{counts[plus]} - counts[minus] - less;
  }
};

enum class Presence : std::uint8_t {
  kAlways,
  kWhenAny,         // when the field has at least one item
  kUnlessTestZero,  // when the field's test is not zero
};
enum class Placeholder : std::uint8_t { kNothing, kZero, kBlank };

// How a field of numbers stands in the text form.
enum class TextShape : std::uint8_t {
  kGroup,        // one number group
  kGroupGoesOn,  // one number group together with the next field
  kSliced,       // a number group for every 20000 items, none when there are no items
};

// What a field is to the commands; the system code alone knows what the plain ones are.
enum class FieldRole : std::uint8_t {
  kPlain,
  kTitle,
  kTimes,         // the problem time, then the largest time step
  kRecordNumber,  // which a copy gets anew
  kEventNames,
};

struct SaveField {
  std::string_view comment = {};  // comment line of the text form before the field
  SaveItem item;
  FieldRole role = FieldRole::kPlain;
  Difference count = {};
  SaveCount keeps = SaveCount::kNone;  // the first of the counts that the items become
  Presence presence = Presence::kAlways;
  Difference test = {};
  Placeholder placeholder = Placeholder::kNothing;  // stands in for absent items
  TextShape shape = TextShape::kGroup;
  bool comment_needs_items = false;  // no comment line before a placeholder
  bool minus_in_text = false;        // the text form may hold a minus before its numbers
};

enum class SavePart { kControlStructures, kRecord };

// What a field holds, the counts before it being known.
struct FieldItems {
  bool present;      // false: nothing at all
  bool placeholder;  // one integer (kInteger) or one character (kTitleChar) instead of the items
  SaveItem item;
  std::int64_t count;  // >= 0
};

// Where its number stands in every record: the fields before it have fixed lengths.
std::int64_t offset_of_record_number();

// Items are handled in slices of at most so many.
constexpr int kSliceItems = 20000;

// Where the fields of a walk come from. Slices are asked for in their order.
class FieldSource {
 public:
  virtual ~FieldSource() = default;
  virtual void begin(const SaveField&, const FieldItems&) {}
  virtual ReadStatus read(const SaveField& field, const FieldItems& items, void* slice,
                          int count) = 0;
  // Passes over all items of a field that nobody wants; without a value when they can only be read.
  virtual std::optional<ReadStatus> skip(const FieldItems&) { return std::nullopt; }
  virtual void end(const SaveField&, const FieldItems&) {}
};

// What is done with the fields met on a walk. Slices of a field come in their order; a field
// without items has none.
class FieldTaker {
 public:
  virtual ~FieldTaker() = default;
  virtual bool wants(const SaveField& field) const = 0;  // else its bytes are passed over
  virtual void begin(const SaveField&, const FieldItems&) {}
  virtual void take(const SaveField& field, const FieldItems& items, void* slice, int count) = 0;
  virtual void end(const SaveField&, const FieldItems&) {}
};

enum class PartStatus {
  kOk,
  kEnd,  // a record: the file ends where it would begin
  kCut,  // the file ends inside the part
  kReadError,
};

// Takes one part from the source, or from the file's position, to the taker. `counts` comes from
// the control structures (or is empty when they are being read) and holds the part's own counts
// afterwards. A list longer than the system code can hold ends the run: "%dbg- ZRV2:LIST:
// 5*MXelem>lpres" on the console.
PartStatus walk_part(FieldSource& source, SavePart part, SaveCounts& counts, FieldTaker& taker);
PartStatus walk_part(File& file, SavePart part, SaveCounts& counts, FieldTaker& taker);

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_SAVE_LAYOUT_H_
