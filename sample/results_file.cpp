#include "sample/results_file.h"

#include "sample/bytes.h"

namespace zorvik::sample {
namespace {

constexpr std::size_t kNameWidth = 40;

void append_int32s(std::string& bytes, std::initializer_list<std::int32_t> values) {
  for (const std::int32_t value : values) append_int32(bytes, value);
}

std::int32_t count(const auto& list) { return static_cast<std::int32_t>(list.size()); }

// A kind without elements still has one pair.
void append_list(std::string& bytes, const std::vector<Element>& list) {
  for (const Element& element : list) append_int32s(bytes, {element.number, element.cells});
  if (list.empty()) append_int32s(bytes, {0, 0});
}

// The counts stand in another order than the lists.
void append_catalogue(std::string& bytes, const Catalogue& c) {
  append_int32s(bytes, {count(c.ch), count(c.sch), count(c.col), count(c.accum), count(c.slves),
                        count(c.tank), count(c.hcs), c.dt_flag});
  for (const auto* list : {&c.ch, &c.hcs, &c.col, &c.sch, &c.slves, &c.tank, &c.accum}) {
    append_list(bytes, *list);
  }
  append_int32s(bytes, {c.blocks, c.rest});
}

}  // namespace

std::string results_header_bytes(const ResultsFile& file) {
  std::string bytes;
  const std::int32_t h1 = file.catalogue ? -file.standard_values : file.standard_values;
  append_int32s(bytes, {h1, count(file.entries), 6 * count(file.entries), count(file.title)});
  if (file.catalogue) append_catalogue(bytes, *file.catalogue);
  for (const ListedEntry& e : file.entries) {
    append_int32s(bytes, {0, e.lo1, e.hi1, e.lo2, e.hi2, e.form});
  }
  for (const ListedEntry& e : file.entries) append_text(bytes, e.name, kNameWidth);
  return bytes + file.title;
}

std::string results_file_bytes(const ResultsFile& file) {
  std::string bytes = results_header_bytes(file);
  for (const auto& record : file.records) {
    for (const double value : record) append_real(bytes, value);
  }
  return bytes;
}

}  // namespace zorvik::sample
