// A walk goes field by field and slice by slice. The counts that a field keeps are taken over
// before the taker sees the slice, so that source and taker alike know all counts up to where they
// are.
#include "service/save_layout.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "driver/interruption.h"
#include "driver/messages.h"

namespace zorvik {
namespace {

static_assert(std::endian::native == std::endian::little, "files are little-endian byte streams");

using enum FieldRole;
using enum SaveCount;
using enum SaveItem;
using enum Presence;
using enum Placeholder;
using enum TextShape;

constexpr int kMaxListIntegers = 20000;  // j0li may not exceed it

constexpr Difference exactly(int n) { return {kNone, kNone, -n}; }
constexpr Difference all(SaveCount count) { return {count, kNone, 0}; }
constexpr Difference below(SaveCount count) { return {count, kNone, 1}; }
constexpr Difference between(SaveCount low, SaveCount high) { return {high, low, 1}; }
constexpr Difference kRestOfS1 = between(kLs1p, kJ30ev);  // decides on R17 to R19 alike

// clang-format off
constexpr SaveField kControlStructures[] = {
    /* C1 */ {.comment = "! Ncons,lentit,lefle1,Nels", .item = kInteger, .count = exactly(4),
     .keeps = kNcons},
    /* C2 */ {.comment = "! title", .item = kTitleChar, .role = kTitle,
     .count = all(kLentit)},
    /* C3 */ {.comment = "! j30,j10,j2,(iE(j),j=1,Nels)", .item = kInteger, .count = exactly(3),
     .keeps = kJ30, .shape = kGroupGoesOn},
    {.item = kInteger, .count = all(kNels)},
    /* C4 */ {.comment = "! (lbufer(j),j=1,leflen-1)", .item = kInteger, .count = below(kLefle1),
     .shape = kSliced},
    /* C5 */ {.comment = "! (iE1(j),j=1,j10-1)", .item = kInteger, .count = below(kJ10),
     .shape = kSliced},
    /* C6 */ {.comment = "! (iexE(j),j=1,j2-1)", .item = kInteger, .count = below(kJ2),
     .shape = kSliced, .minus_in_text = true},
};

constexpr SaveField kRecordFields[] = {
    /* R1 */ {.comment = "! Nvar", .item = kInteger, .count = exactly(1), .keeps = kNvar},
    /* R2 */ {.comment = "! TAU,DT_MAX,Nsaves", .item = kReal, .role = kTimes,
     .count = exactly(2)},
    {.item = kInteger, .role = kRecordNumber, .count = exactly(1), .keeps = kNsaves},
    /* R3 */ {.comment = "! j3x,j2x,nx,j3xt,j2x00,(iX(j),j=1,nx),(iX1(j),j=1,nx),"
     "(iexX(j),j=j2x000,j2x-1)",
     .item = kInteger, .count = exactly(5), .keeps = kJ3x},
    {.item = kInteger, .count = all(kNx)},
    {.item = kInteger, .count = all(kNx)},
    {.item = kInteger, .count = {kJ2x, kJ2x00, 0}},
    /* R4 */ {.comment = "! (lcx(j),j=1,nx),(iXp(j),j=1,j3x-1),(X(j),j=1,j3x-1)",
     .item = kInteger, .count = all(kNx)},
    {.item = kInteger, .count = below(kJ3x)},
    {.item = kReal, .count = below(kJ3x), .minus_in_text = true},
    /* R5 */ {.comment = "! (Cx(j),j=1,nx)", .item = kShortText, .count = all(kNx)},
    /* R6 */ {.comment = "! iXt(1:j3xt-1)", .item = kCharCode, .count = below(kJ3xt)},
    /* R7 */ {.comment = "! nev,j3ce,j2ce,j3cte", .item = kInteger, .count = exactly(4),
     .keeps = kNev},
    /* R8 */ {.comment = "! (iexCe(j),j=1,j2ce-1) OR 0", .item = kInteger, .count = below(kJ2ce),
     .presence = kWhenAny, .placeholder = kZero},
    /* R9 */ {.comment = "! iCte(1:j3cte-1) OR SP", .item = kCharCode, .count = below(kJ3cte),
     .presence = kWhenAny, .placeholder = kBlank},
    /* R10 */ {.comment = "! (Cev(j),j=1,j3ce-1) OR 0", .item = kReal, .count = below(kJ3ce),
     .presence = kWhenAny, .placeholder = kZero, .minus_in_text = true},
    /* R11 */ {.comment = "! (cnEV(j),j=1,nev) OR SP", .item = kShortText, .role = kEventNames,
     .count = all(kNev), .presence = kWhenAny, .placeholder = kBlank, .comment_needs_items = true},
    /* R12 */ {.comment = "! (iadev(j),j=1,nev) OR 0", .item = kInteger, .count = all(kNev),
     .presence = kWhenAny, .placeholder = kZero, .comment_needs_items = true},
    /* R13 */ {.comment = "! j0ev", .item = kInteger, .count = exactly(1), .keeps = kJ0ev},
    /* R14 */ {.comment = "! (ievent(j),j=1,j0ev-1) OR 0", .item = kInteger,
     .count = below(kJ0ev), .presence = kWhenAny, .placeholder = kZero, .shape = kSliced,
     .minus_in_text = true},
    /* R15 */ {.comment = "! j30ev,j10ev,j2ev", .item = kInteger, .count = exactly(3),
     .keeps = kJ30ev},
    /* R16 */ {.comment = "! ls1p,lE1,lexE", .item = kInteger, .count = exactly(3),
     .keeps = kLs1p},
    /* R17 */ {.comment = "! (S1(j),j=ls1p + 1,j30ev - 1) OR 0", .item = kReal,
     .count = kRestOfS1, .presence = kUnlessTestZero, .test = kRestOfS1, .placeholder = kZero,
     .comment_needs_items = true, .minus_in_text = true},
    /* R18 */ {.comment = "! (iE1(j),j=lE1 + 1,j10ev - 1) OR 0", .item = kInteger,
     .count = between(kLe1, kJ10ev), .presence = kUnlessTestZero, .test = kRestOfS1,
     .placeholder = kZero, .comment_needs_items = true},
    /* R19 */ {.comment = "! (iexE(j),j=lexE + 1,j2ev - 1) OR 0", .item = kInteger,
     .count = between(kLexe, kJ2ev), .presence = kUnlessTestZero, .test = kRestOfS1,
     .placeholder = kZero, .comment_needs_items = true},
    /* R20 */ {.comment = "! nnlist,j0li", .item = kInteger, .count = exactly(2),
     .keeps = kNnlist},
    /* R21 */ {.comment = "! (cnLIS(j),j=1,nnlist)", .item = kShortText, .count = all(kNnlist),
     .presence = kUnlessTestZero, .test = all(kNnlist)},
    /* R22 */ {.comment = "! (ialist(j),j=1,j0li-1)", .item = kInteger, .count = below(kJ0li),
     .presence = kUnlessTestZero, .test = all(kNnlist)},
    /* R23 */ {.comment = "! (iadlis(j),j=1,nnlist)", .item = kInteger, .count = all(kNnlist),
     .presence = kUnlessTestZero, .test = all(kNnlist)},
    /* R24 */ {.comment = "! (S1(j),j=1,j30-1)", .item = kReal, .count = below(kJ30),
     .shape = kSliced, .minus_in_text = true},
    /* R25 */ {.comment = "! nWRo,lWRb", .item = kInteger, .count = exactly(2), .keeps = kNwro},
    /* R26 */ {.comment = "! (iWRo(j),j=1,nWRo-1) OR 0", .item = kInteger, .count = below(kNwro),
     .presence = kWhenAny, .placeholder = kZero, .minus_in_text = true},
    /* R27 */ {.comment = "! (b1(j),j=1,lWRb) OR SP", .item = kLongText, .count = all(kLwrb),
     .presence = kUnlessTestZero, .test = all(kLwrb), .placeholder = kBlank},
    /* R28 */ {.comment = "! Nvar,i2", .item = kInteger, .count = exactly(2),
     .keeps = kNvarAgain},
};
// clang-format on

// The counts of one part do not outlive it, so that no record is read by those of another one.
void forget_record_counts(SaveCounts& counts) {
  std::fill(counts.value + static_cast<int>(kNvar), std::end(counts.value), 0);
}

constexpr int kSliceBytes = kSliceItems * 8;

// Texts are longer than numbers: of them fewer go into a slice.
int slice_of(SaveItem item, std::int64_t items_left) {
  const std::int64_t most = std::min<std::int64_t>(kSliceItems, kSliceBytes / bytes_of(item));
  return static_cast<int>(std::min(items_left, most));
}

std::span<const SaveField> fields_of(SavePart part) {
  if (part == SavePart::kControlStructures) return kControlStructures;
  return kRecordFields;
}

FieldItems items_of(const SaveCounts& counts, const SaveField& field) {
  const std::int64_t count = std::max<std::int64_t>(field.count.in(counts), 0);
  const bool has_items = field.presence == kAlways || (field.presence == kWhenAny && count > 0) ||
                         (field.presence == kUnlessTestZero && field.test.in(counts) != 0);
  if (has_items) return {true, false, field.item, count};
  const bool stands_in = field.placeholder != kNothing;
  return {stands_in, stands_in, field.placeholder == kBlank ? kTitleChar : kInteger,
          stands_in ? 1 : 0};
}

// Takes over from the integers of a field the counts that it keeps.
void keep_counts(SaveCounts& counts, const SaveField& field, const char* slice) {
  if (field.keeps == kNone) return;
  const auto kept = static_cast<std::size_t>(field.count.in(counts));
  std::memcpy(counts.value + static_cast<int>(field.keeps), slice, kept * sizeof(std::int32_t));
  if (field.keeps == kNnlist && counts[kNnlist] != 0 && counts[kJ0li] > kMaxListIntegers) {
    stop_on_console("%dbg- ZRV2:LIST: 5*MXelem>lpres");
  }
}

// The end of the file before the first byte of a field may be the end of all records.
PartStatus status_after(ReadStatus read, bool first_slice) {
  if (read == ReadStatus::kOk) return PartStatus::kOk;
  if (read == ReadStatus::kError) return PartStatus::kReadError;
  return read == ReadStatus::kEnd && first_slice ? PartStatus::kEnd : PartStatus::kCut;
}

// The slice is one for all walks: they never nest.
PartStatus walk_items(FieldSource& source, SaveCounts& counts, const SaveField& field,
                      const FieldItems& items, FieldTaker* taker) {
  alignas(8) static char slice[kSliceBytes];
  for (std::int64_t left = items.count; left > 0;) {
    const int count = slice_of(items.item, left);
    const ReadStatus read = source.read(field, items, slice, count);
    if (read != ReadStatus::kOk) return status_after(read, left == items.count);
    keep_counts(counts, field, slice);
    if (taker != nullptr) taker->take(field, items, slice, count);
    left -= count;
  }
  return PartStatus::kOk;
}

// Takes one field; kEnd when the source ends before its first byte.
PartStatus walk_field(FieldSource& source, SaveCounts& counts, const SaveField& field,
                      FieldTaker& taker) {
  const FieldItems items = items_of(counts, field);
  if (!items.present) return PartStatus::kOk;
  const bool wanted = taker.wants(field);
  // Counts must be read even when nobody wants their field.
  if (!wanted && field.keeps == kNone && items.count > 0) {
    if (const auto skipped = source.skip(items)) return status_after(*skipped, true);
  }
  if (wanted) taker.begin(field, items);
  source.begin(field, items);
  const PartStatus status = walk_items(source, counts, field, items, wanted ? &taker : nullptr);
  if (status != PartStatus::kOk) return status;
  source.end(field, items);
  if (wanted) taker.end(field, items);
  return PartStatus::kOk;
}

class FileSource : public FieldSource {
 public:
  explicit FileSource(File& file) : file_(file) {}

  ReadStatus read(const SaveField&, const FieldItems& items, void* slice, int count) override {
    return file_.read(slice, static_cast<std::size_t>(count * bytes_of(items.item)));
  }
  std::optional<ReadStatus> skip(const FieldItems& items) override {
    return file_.skip(items.count * bytes_of(items.item));
  }

 private:
  File& file_;
};

}  // namespace

std::int64_t offset_of_record_number() {
  std::int64_t offset = 0;
  for (const SaveField& field : fields_of(SavePart::kRecord)) {
    if (field.keeps == kNsaves) break;
    offset += items_of({}, field).count * bytes_of(field.item);
  }
  return offset;
}

PartStatus walk_part(FieldSource& source, SavePart part, SaveCounts& counts, FieldTaker& taker) {
  stop_if_interrupted();
  forget_record_counts(counts);
  bool first = part == SavePart::kRecord;
  for (const SaveField& field : fields_of(part)) {
    const PartStatus status = walk_field(source, counts, field, taker);
    // Only before the first field of a record is the file's end no damage.
    if (status == PartStatus::kEnd) return first ? PartStatus::kEnd : PartStatus::kCut;
    if (status != PartStatus::kOk) return status;
    first = false;
  }
  return PartStatus::kOk;
}

PartStatus walk_part(File& file, SavePart part, SaveCounts& counts, FieldTaker& taker) {
  FileSource source(file);
  return walk_part(source, part, counts, taker);
}

}  // namespace zorvik
