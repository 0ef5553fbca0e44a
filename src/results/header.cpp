// A header is untrusted: each group is judged before the next is sized by it. A list of elements
// that would pass the table of entries is read only up to the element that passes it; then the
// catalogue is full.
//   nTANK = 5000 alone, 8 entries each -> 500 pairs are read, the last of which passes 3999 entries
#include "results/header.h"

#include <algorithm>
#include <bit>

namespace zorvik {
namespace {

static_assert(std::endian::native == std::endian::little, "files are little-endian byte streams");

// One entry less than the table holds: the catalogue has to leave the next free place inside it.
constexpr int kCatalogueCapacity = kMaxEntries - 1;

// Entries of DT and of the lists before `kind`.
std::int64_t entries_before(const ResultsHeader& header, int kind) {
  std::int64_t entries = header.is_extended() ? 1 : 0;
  for (int k = 0; k < kind; ++k) {
    entries += std::max<std::int64_t>(header.count_of(k), 0) * kElementKinds[k].quantity_count();
  }
  return entries;
}

// Pairs of a list that are read: all of them, or up to the one that fills the catalogue.
int pairs_read(const ResultsHeader& header, int kind) {
  const std::int64_t count = header.count_of(kind);
  // The pair that means nothing.
  if (count < 1) return 1;
  const std::int64_t room = kCatalogueCapacity - entries_before(header, kind);
  return static_cast<int>(std::min(count, room / kElementKinds[kind].quantity_count() + 1));
}

HeaderStatus check_sizes(const ResultsHeader& header) {
  // Records of no values could not be counted.
  if (header.h1() == 0 || header.nv() < 0 || header.nt() < 0 ||
      header.nl() != std::int64_t{kEntryIntegers} * header.nv()) {
    return HeaderStatus::kInvalid;
  }
  if (header.nv() > kMaxEntries || header.nt() > kMaxTitle) return HeaderStatus::kTooLarge;
  return HeaderStatus::kOk;
}

HeaderStatus check_parts(const ResultsHeader& header) {
  // Without an extended part NB and NR are carried along and not used.
  if (header.is_extended() && (header.parts[0] < 0 || header.parts[1] < 0)) {
    return HeaderStatus::kInvalid;
  }
  if (entries_before(header, kElementKindCount) + header.nv() > kMaxEntries)
    return HeaderStatus::kTooLarge;
  return HeaderStatus::kOk;
}

}  // namespace

std::size_t HeaderItems::bytes() const {
  const auto items = static_cast<std::size_t>(count);
  switch (kind) {
    case HeaderItem::kInteger:
      return items * sizeof(std::int32_t);
    case HeaderItem::kName:
      return items * kEntryNameWidth;
    case HeaderItem::kCharacter:
      break;
  }
  return items;
}

HeaderItems items_of(ResultsHeader& header, HeaderGroup group) {
  const bool catalogue = header.has_catalogue();
  if (is_list(group)) {
    const int kind = kind_of_list(group);
    const int start = kind == 0 ? 0 : header.list_start[kind];
    const int pairs = catalogue ? pairs_read(header, kind) : 0;
    header.list_start[kind] = start;
    header.list_start[kind + 1] = start + pairs;
    return {HeaderItem::kInteger, catalogue, header.elements + start, 2 * pairs};
  }
  switch (group) {
    case kSizes:
      return {HeaderItem::kInteger, true, header.sizes, 4};
    case kCounts:
      return {HeaderItem::kInteger, catalogue, header.counts,
              catalogue ? kElementKindCount + 1 : 0};
    case kParts:
      return {HeaderItem::kInteger, catalogue, header.parts, catalogue ? 2 : 0};
    case kDescriptors:
      return {HeaderItem::kInteger, true, header.descriptors, header.nl()};
    case kNames:
      return {HeaderItem::kName, true, header.names, header.nv()};
    default:
      return {HeaderItem::kCharacter, true, header.title, header.nt()};
  }
}

HeaderStatus check_group(const ResultsHeader& header, HeaderGroup group) {
  if (group == kSizes) return check_sizes(header);
  if (!header.has_catalogue()) return HeaderStatus::kOk;
  if (is_list(group)) {
    const bool full = entries_before(header, kind_of_list(group) + 1) > kCatalogueCapacity;
    return full ? HeaderStatus::kCatalogueFull : HeaderStatus::kOk;
  }
  return group == kParts ? check_parts(header) : HeaderStatus::kOk;
}

HeaderStatus read_group(File& file, ResultsHeader& header, HeaderGroup group) {
  const HeaderItems items = items_of(header, group);
  switch (file.read(items.data, items.bytes())) {
    case ReadStatus::kOk:
      return check_group(header, group);
    case ReadStatus::kError:
      return HeaderStatus::kReadError;
    case ReadStatus::kEnd:
    case ReadStatus::kCut:
      break;
  }
  return HeaderStatus::kEnd;
}

HeaderStatus read_header(File& file, ResultsHeader& header) {
  for (int group = kSizes; group <= kTitle; ++group) {
    const HeaderStatus status = read_group(file, header, static_cast<HeaderGroup>(group));
    if (status != HeaderStatus::kOk) return status;
  }
  return HeaderStatus::kOk;
}

}  // namespace zorvik
