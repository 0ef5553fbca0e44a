// The kinds of elements that a plant consists of, one row each: what the catalogue of a results
// file says of a kind follows from its row.
//
// Each element of a kind makes the kind's entries, in the order of its quantities. CH number 5 with
// 12 cells -> P.CH5(1:12) T.CH5(1:2,1:12) VOID.CH5(1:12) G.CH5(1:2,1:13) DM.CH5(1:2,1:12)
#ifndef ZORVIK_RESULTS_ELEMENT_KINDS_H_
#define ZORVIK_RESULTS_ELEMENT_KINDS_H_

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace zorvik {

// An extent of a quantity; N is the element's number of cells.
enum class Extent {
  kOne,
  kTwo,
  kFour,
  kCells,  // N
  kFaces,  // N + 1
};

struct Quantity {
  std::string_view name;  // an entry's name up to the "."
  Extent rows = Extent::kOne, columns = Extent::kOne;
};

constexpr int kMaxQuantities = 8;

struct ElementKind {
  std::string_view name;  // in entry names and in messages
  int count_place;        // of the kind's count among the header's counts, from 0
  std::array<Quantity, kMaxQuantities> quantities;  // what is left over has no name

  constexpr int quantity_count() const {
    return static_cast<int>(std::ranges::find(quantities, "", &Quantity::name) -
                            quantities.begin());
  }
};

namespace element_kind_rows {
using enum Extent;
// In the order of the element lists, which is not that of the counts.
// clang-format off
inline constexpr ElementKind kRows[] = {
    {"CH", 0, {{{"P", kCells}, {"T", kTwo, kCells}, {"VOID", kCells}, {"G", kTwo, kFaces},
                {"DM", kTwo, kCells}}}},
    {"HCS", 6, {{{"TW", kTwo, kCells}, {"QW", kFour, kCells}}}},
    {"COL", 2, {{{"P"}, {"T", kTwo}, {"VOID"}, {"DM", kTwo}}}},
    {"SCH", 1, {{{"G", kTwo}}}},
    {"SLVES", 4, {{{"P"}, {"Q", kTwo}, {"VOIDP", kCells}, {"PP", kCells}, {"GEN"}, {"M", kTwo}}}},
    {"TANK", 5, {{{"PA"}, {"PV"}, {"TENV"}, {"VOIDP", kCells}, {"PP", kCells}, {"GEN"}, {"GVM"},
                  {"M", kTwo}}}},
    {"ACCUM", 3, {{{"P"}, {"TF"}, {"TG"}, {"TW"}, {"PW"}, {"MG"}, {"MF"}}}},
};
// clang-format on
}  // namespace element_kind_rows

inline constexpr auto& kElementKinds = element_kind_rows::kRows;
constexpr int kElementKindCount = static_cast<int>(std::size(kElementKinds));

// Each count has just one kind, and each kind a name of its own and something to say.
constexpr bool kinds_are_complete() {
  for (int place = 0; place < kElementKindCount; ++place) {
    if (std::ranges::count(kElementKinds, place, &ElementKind::count_place) != 1) return false;
  }
  return std::ranges::all_of(kElementKinds, [](const ElementKind& kind) {
    return std::ranges::count(kElementKinds, kind.name, &ElementKind::name) == 1 &&
           kind.quantity_count() > 0;
  });
}
static_assert(kinds_are_complete());

}  // namespace zorvik

#endif  // ZORVIK_RESULTS_ELEMENT_KINDS_H_
