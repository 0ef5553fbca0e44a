// Distances in the optimal string alignment form of Damerau and Levenshtein, by the table of
// prefixes: PP.CH5 -> P.CH5 is 1, P.HC5 -> P.CH5 is 1 (exchanged neighbours).
#include "lang/compile/nearest_name.h"

#include <algorithm>
#include <array>

#include "results/results_variables.h"
#include "stores/keys.h"
#include "stores/notkeys.h"

namespace zorvik {
namespace {

constexpr std::size_t kLongest = 40;  // kEntryNameWidth: no known name is longer

// Characters to be added, left out, replaced or exchanged with their neighbour that make one text
// the other; texts longer than kLongest are far apart.
int edit_distance(std::string_view a, std::string_view b) {
  if (std::max(a.size(), b.size()) > kLongest) return static_cast<int>(kLongest);
  std::array<std::array<int, kLongest + 1>, kLongest + 1> d;
  for (std::size_t i = 0; i <= a.size(); ++i) d[i][0] = static_cast<int>(i);
  for (std::size_t k = 0; k <= b.size(); ++k) d[0][k] = static_cast<int>(k);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t k = 1; k <= b.size(); ++k) {
      const int replaced = d[i - 1][k - 1] + (a[i - 1] == b[k - 1] ? 0 : 1);
      d[i][k] = std::min({d[i - 1][k] + 1, d[i][k - 1] + 1, replaced});
      const bool exchanged = i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1];
      if (exchanged) d[i][k] = std::min(d[i][k], d[i - 2][k - 2] + 1);
    }
  }
  return d[a.size()][b.size()];
}

struct Nearest {
  std::string_view wanted;
  int distance;
  std::string_view name;

  void offer(std::string_view candidate) {
    const int candidate_distance = edit_distance(wanted, candidate);
    if (candidate_distance >= distance) return;
    distance = candidate_distance;
    name = candidate;
  }
};

}  // namespace

std::string_view nearest_known_name(std::string_view name) {
  // Of one or two characters nearly every short name is near.
  if (name.size() < 3) return {};
  const int allowed = name.size() < 8 ? 1 : 2;
  Nearest nearest{name, allowed + 1, {}};
  for (int v = 1; v <= results_variables.count; ++v) {
    nearest.offer(name_of(results_variables.variable[v]));
  }
  for (int key = kFirstMainKey; key <= kLastOutputKey; ++key) nearest.offer(key_of(key).name);
  for (int number = 1; number <= notkeys.count; ++number) nearest.offer(notkey_name(number));
  return nearest.name;
}

}  // namespace zorvik
