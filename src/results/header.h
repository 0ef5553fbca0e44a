// The header of a results file: its one description, which everything that needs a header walks
// over.
//
// Byte layout of vnxres: little-endian, nothing between the fields; int32 and 8-byte IEEE doubles.
//   group          items                                                          present
//   kSizes         H1 NV NL NT                                                    always
//   kCounts        nCH nSCH nCOL nACCUM nSLVES nTANK nHCS DTflag                  H1 < 0
//   kFirstList ..  a list for each kind of element: pairs (element number,        H1 < 0
//                  cells), as many as the kind's count has; a count below 1
//                  gives one pair that means nothing
//   kParts         NB NR                                                          H1 < 0
//   kDescriptors   NL integers, six an entry: link lo1 hi1 lo2 hi2 form           always
//   kNames         NV names of 40 characters                                      always
//   kTitle         NT characters                                                  always
// Then the records, without a break: when DTflag > 0 the extended part, NB * 20000 + NR values, and
// always the standard part, |H1| values of which the first is the problem time. Example, 5 values a
// record, one entry, no title: 05000000 01000000 06000000 00000000, then the six integers of the
// entry, its 40-character name, and the records.
#ifndef ZORVIK_RESULTS_HEADER_H_
#define ZORVIK_RESULTS_HEADER_H_

#include <cstdint>
#include <string_view>

#include "driver/file.h"
#include "results/element_kinds.h"

namespace zorvik {

constexpr int kMaxEntries = 4000;
constexpr int kEntryNameWidth = 40;
constexpr int kEntryIntegers = 6;
constexpr int kMaxTitle = 200;
constexpr int kBlockValues = 20000;  // values of a block of the extended part
constexpr std::int64_t kValueBytes = sizeof(double);

struct ElementPair {
  std::int32_t number, cells;
};

enum HeaderGroup : int {
  kSizes,
  kCounts,
  kFirstList,  // of the kinds in the order of kElementKinds
  kParts = kFirstList + kElementKindCount,
  kDescriptors,
  kNames,
  kTitle,
};
constexpr bool is_list(HeaderGroup group) { return group >= kFirstList && group < kParts; }
constexpr int kind_of_list(HeaderGroup group) { return group - kFirstList; }

struct ResultsHeader {
  std::int32_t sizes[4];                       // H1 NV NL NT
  std::int32_t counts[kElementKindCount + 1];  // in the order of the file, DTflag last
  std::int32_t parts[2];                       // NB NR
  ElementPair elements[kMaxEntries + kElementKindCount];
  int list_start[kElementKindCount + 1];  // first pair of each list, then the end of the last
  std::int32_t descriptors[kEntryIntegers * kMaxEntries];
  char names[kEntryNameWidth * kMaxEntries];
  char title[kMaxTitle];

  std::int32_t h1() const { return sizes[0]; }
  std::int32_t nv() const { return sizes[1]; }
  std::int32_t nl() const { return sizes[2]; }
  std::int32_t nt() const { return sizes[3]; }
  bool has_catalogue() const { return h1() < 0; }
  bool is_extended() const { return has_catalogue() && counts[kElementKindCount] > 0; }
  std::int32_t count_of(int kind) const { return counts[kElementKinds[kind].count_place]; }
  std::string_view listed_name(int entry) const {  // 0 .. nv - 1, blanks included
    return {names + entry * kEntryNameWidth, static_cast<std::size_t>(kEntryNameWidth)};
  }
  std::string_view title_text() const { return {title, static_cast<std::size_t>(nt())}; }

  std::int64_t standard_values() const { return h1() < 0 ? -std::int64_t{h1()} : h1(); }
  std::int64_t extended_values() const {
    return is_extended() ? std::int64_t{parts[0]} * kBlockValues + parts[1] : 0;
  }
  std::int64_t record_values() const { return standard_values() + extended_values(); }
  std::int64_t record_bytes() const { return record_values() * kValueBytes; }
};

// The items of one group: where they stand and how many there are. Valid once all groups before it
// are filled and found good. `count` is 0 for a group that is not present.
enum class HeaderItem { kInteger, kName, kCharacter };
struct HeaderItems {
  HeaderItem kind;
  bool present;
  void* data;  // int32_t or char, without gaps
  int count;   // integers, names, or characters of the title
  std::size_t bytes() const;
};
//
// Asking for an element list also gives it its place: it begins behind the list before it, and
// `list_start` of this list and the next are set. So the lists are asked for in their order; in a
// header that is read whole each has been.
HeaderItems items_of(ResultsHeader& header, HeaderGroup group);

enum class HeaderStatus {
  kOk,
  kReadError,
  kEnd,            // the file ends inside the header
  kInvalid,        // counts that contradict each other or plain sense
  kTooLarge,       // more entries, or a longer title, than there is room for
  kCatalogueFull,  // the catalogue alone passes the table of entries
};

// Judges what the groups up to `group` say, before anything that follows is sized by it: kOk,
// kInvalid, kTooLarge or kCatalogueFull.
HeaderStatus check_group(const ResultsHeader& header, HeaderGroup group);

// Reads and checks the next group, or the whole header, at the file's position; at kOk the file
// stands behind it, behind the whole header at the first record. At kReadError file.io_status()
// tells why.
HeaderStatus read_group(File& file, ResultsHeader& header, HeaderGroup group);
HeaderStatus read_header(File& file, ResultsHeader& header);

}  // namespace zorvik

#endif  // ZORVIK_RESULTS_HEADER_H_
