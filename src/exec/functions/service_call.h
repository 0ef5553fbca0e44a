// The call of SCMD2: hands its two evaluated arguments to the service commands.
#ifndef ZORVIK_EXEC_FUNCTIONS_SERVICE_CALL_H_
#define ZORVIK_EXEC_FUNCTIONS_SERVICE_CALL_H_

namespace zorvik {

// The arguments are the two topmost entries of the evaluation stack. The command ends the run, so
// that, unlike the other functions of the language, this one has no result.
[[noreturn]] void call_service_command(int function_number);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_SERVICE_CALL_H_
