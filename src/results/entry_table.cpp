// Both parts of the table come from the header: what the catalogue's elements imply, kind by kind
// in the order of their lists, then the listed entries. Their places in a record follow each other,
// so that each is the one after the entry before it.
//   CH 5 with 12 cells alone: P.CH5(1:12) from value 2 on, T.CH5(1:2,1:12) from 14, VOID.CH5(1:12)
//   from 38
#include "results/entry_table.h"

#include <string>

#include "driver/text.h"
#include "stores/results_store.h"

namespace zorvik {

EntryTable entry_table;

namespace {

using enum Extent;

std::int64_t extent_of(Extent extent, std::int32_t cells) {
  switch (extent) {
    case kOne:
      return 1;
    case kTwo:
      return 2;
    case kFour:
      return 4;
    case kCells:
      return cells;
    case kFaces:
      break;
  }
  return std::int64_t{cells} + 1;
}

std::string entry_name(const ElementKind& kind, const Quantity& quantity, std::int32_t number,
                       std::int64_t rows, std::int64_t columns) {
  std::string name = message(quantity.name, '.', kind.name, number);
  const bool one_column = quantity.columns == kOne;
  if (quantity.rows == kOne) return name;
  append_piece(name, message("(1:", rows));
  if (!one_column) append_piece(name, message(",1:", columns));
  return name + ')';
}

void set_name(Entry& entry, std::string_view name) {
  copy_padded(entry.name, kEntryNameWidth, name);
  const std::string_view full = trim_right_char(name.substr(0, kEntryNameWidth), ' ');
  const std::string_view base = trim_right_char(full.substr(0, full.find('(')), ' ');
  entry.full_length = static_cast<std::uint8_t>(full.size());
  entry.base_length = static_cast<std::uint8_t>(base.size());
}

HeaderStatus add_entry(std::string_view name, std::int64_t rows, std::int64_t columns) {
  if (rows < 0 || columns < 0) return HeaderStatus::kInvalid;
  if (rows > kResultsCapacity || columns > kResultsCapacity) return HeaderStatus::kTooLarge;
  // From here on the form, 1000 times the rows, fits into an int32.
  Entry& entry = entry_table.entry[++entry_table.count];
  set_name(entry, name);
  entry.lo1 = entry.lo2 = 1;
  entry.hi1 = static_cast<std::int32_t>(rows);
  entry.hi2 = static_cast<std::int32_t>(columns);
  entry.form = entry.hi1 * 1000 + 1;  // every quantity of an element is real
  return HeaderStatus::kOk;
}

HeaderStatus add_element(const ElementKind& kind, ElementPair element) {
  for (int k = 0; k < kind.quantity_count(); ++k) {
    const Quantity& quantity = kind.quantities[static_cast<std::size_t>(k)];
    const std::int64_t rows = extent_of(quantity.rows, element.cells);
    const std::int64_t columns = extent_of(quantity.columns, element.cells);
    const std::string name = entry_name(kind, quantity, element.number, rows, columns);
    const HeaderStatus status = add_entry(name, rows, columns);
    if (status != HeaderStatus::kOk) return status;
  }
  return HeaderStatus::kOk;
}

HeaderStatus add_catalogue(const ResultsHeader& header) {
  if (!header.has_catalogue()) return HeaderStatus::kOk;
  if (header.is_extended()) add_entry("DT", 1, 1);
  for (int kind = 0; kind < kElementKindCount; ++kind) {
    for (int e = 0; e < header.count_of(kind); ++e) {
      const ElementPair element = header.elements[header.list_start[kind] + e];
      const HeaderStatus status = add_element(kElementKinds[kind], element);
      if (status != HeaderStatus::kOk) return status;
    }
  }
  return HeaderStatus::kOk;
}

// Integer 0, the link, says nothing to this program.
void add_listed(const ResultsHeader& header) {
  for (int e = 0; e < header.nv(); ++e) {
    const std::int32_t* const integers = header.descriptors + e * kEntryIntegers;
    Entry& entry = entry_table.entry[++entry_table.count];
    set_name(entry, header.listed_name(e));
    entry.lo1 = integers[1];
    entry.hi1 = integers[2];
    entry.lo2 = integers[3];
    entry.hi2 = integers[4];
    entry.form = integers[5];
  }
}

bool plausible(const Entry& entry) {
  const int digit = entry.type_digit();
  return entry.form >= 0 && (digit == 0 || digit == 1 || digit == 3 || digit == 4) &&
         entry.lo1 >= 1 && entry.lo2 >= 1 && entry.rows() >= 0 && entry.columns() >= 0;
}

// In the extended layout the entry that follows the extended part skips the problem time, which is
// the first value of the standard part.
HeaderStatus place_entries(const ResultsHeader& header) {
  // Without an extended part value 1 is the problem time.
  std::int64_t next = header.is_extended() ? 1 : 2;
  bool in_extended_part = header.is_extended();
  for (int e = 1; e <= entry_table.count; ++e) {
    Entry& entry = entry_table.entry[e];
    if (!plausible(entry)) return HeaderStatus::kInvalid;
    if (entry.values() > kResultsCapacity) return HeaderStatus::kTooLarge;
    entry.start = next;
    next += entry.values();
    // An entry without values may stand behind the last value.
    if (entry.values() > 0 && next - 1 > header.record_values()) return HeaderStatus::kInvalid;
    if (in_extended_part && next > header.extended_values()) {
      in_extended_part = false;
      ++next;
    }
  }
  return HeaderStatus::kOk;
}

}  // namespace

HeaderStatus build_entry_table(const ResultsHeader& header) {
  entry_table.count = 0;
  const HeaderStatus status = add_catalogue(header);
  if (status != HeaderStatus::kOk) return status;
  add_listed(header);
  return place_entries(header);
}

}  // namespace zorvik
