// The joining command: its text, and the three files that it names.
#ifndef ZORVIK_SERVICE_JOIN_COMMAND_H_
#define ZORVIK_SERVICE_JOIN_COMMAND_H_

#include <array>
#include <string>
#include <string_view>

namespace zorvik {

enum class JoinMode {
  kAppend,   // 0: to the earlier file itself
  kFollow,   // 1: a new file of the earlier one and what the later one has after its end
  kReplace,  // 2: as 1, but the later file may replace the end of the earlier one
};

struct JoinCommand {
  std::array<std::string, 3> names;  // output, earlier, later
  JoinMode mode;
  const std::string& output() const { return names[0]; }
  const std::string& earlier() const { return names[1]; }
  const std::string& later() const { return names[2]; }
};

constexpr std::array<std::string_view, 3> kFileOrdinals = {"1st", "2nd", "3rd"};

// Parses "first = second + third"; blanks may stand anywhere. `mode` is the whole number given with
// the command. Then checks that the names differ as the mode wants it, and inquires the files: the
// output must not exist (mode 0: names the earlier file), the inputs must, none may be open. Every
// refusal ends the run with a message in the listing.
JoinCommand parse_join_command(std::string_view text, double mode);

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_JOIN_COMMAND_H_
