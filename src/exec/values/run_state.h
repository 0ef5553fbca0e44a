// What is running: procedure, statement, and how its errors name it.
#ifndef ZORVIK_EXEC_VALUES_RUN_STATE_H_
#define ZORVIK_EXEC_VALUES_RUN_STATE_H_

#include <string>
#include <string_view>

#include "lang/code/procedure_table.h"

namespace zorvik {

inline constexpr std::string_view kBlockRunName = "BEGIN-END block";

struct RunState {
  int position;  // the code word being executed
  int procedure;
  Context context;
};
extern RunState run_state;

// The running procedure as messages name it.
std::string_view running_name();

// Makes the procedure the running one.
void enter_context(int procedure);

// Writes "%fat- Procedure ", the procedure's name and `text`, with the line of the statement being
// executed, and ends the run.
[[noreturn]] void stop_in_procedure(std::string_view text = {});

// Writes an "%err-" message of one or two lines first.
[[noreturn]] void stop_on_error(std::string_view text, std::string_view more = {});

// Ends the run with a "%fat-" text of its own and the statement's line.
[[noreturn]] void stop_at_statement(std::string_view text);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_VALUES_RUN_STATE_H_
