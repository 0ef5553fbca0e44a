// What is run in trouble: one run of a program and every service command, with files of its own.
#ifndef ZORVIK_TESTS_FAULTS_SCENARIOS_H_
#define ZORVIK_TESTS_FAULTS_SCENARIOS_H_

#include <cstddef>
#include <string>
#include <vector>

#include "faults/failing_system.h"

namespace zorvik::faults {

enum class Layout { kStandard, kCatalogue, kExtended };  // of the results files

// What may become of the file that a command rewrites.
enum class Rewrite {
  kNone,      // it rewrites none
  kReplaced,  // the old file or the new one
  kCut,       // its beginning stays; what was cut off is kept beside it unless it is a torn record
  kLonger,    // the old file, or more of the new one
};

struct Scenario {
  std::string name;
  Files files;                     // the program among them
  std::vector<std::string> swept;  // files that are damaged
  Rewrite rewrite = Rewrite::kNone;
  std::string rewritten;
  std::size_t header_bytes = 0, record_bytes = 0;  // of a file that is cut
};

// The files' arrays have `values` elements: small files are damaged byte by byte, large ones need
// several calls to be read and written.
std::vector<Scenario> all_scenarios(Layout layout, int values);

}  // namespace zorvik::faults

#endif  // ZORVIK_TESTS_FAULTS_SCENARIOS_H_
