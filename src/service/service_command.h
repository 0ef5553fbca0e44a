// SCMD2: parses a service command and carries it out. Always the last thing a run does.
#ifndef ZORVIK_SERVICE_SERVICE_COMMAND_H_
#define ZORVIK_SERVICE_SERVICE_COMMAND_H_

#include <span>
#include <string_view>

#include "stores/value_types.h"

namespace zorvik {

constexpr int kMaxCommand = 80;        // characters of a command text
constexpr int kMaxListLength = 10000;  // record numbers that KEEP takes

// The two arguments of SCMD2 as they were evaluated.
struct ServiceArguments {
  std::string_view procedure_name;  // of the running procedure, blanks behind it or not
  BaseType command_type;            // the command text
  std::string_view command;         // read only when it is of type character
  BaseType number_type;             // the number or numbers
  Shape number_shape;
  std::span<const double> numbers;  // one value, the two ends of a range, or an array's values
};

// Checks the arguments, carries the command out and ends the run. Refused, in this order, before
// any file is touched: a call outside MAIN; a second argument that is not integer; a first one that
// is not character, is longer than 80 characters, or blank; a command or object that is unknown;
// numbers that do not fit the command.
[[noreturn]] void run_service_command(const ServiceArguments& arguments);

}  // namespace zorvik

#endif  // ZORVIK_SERVICE_SERVICE_COMMAND_H_
