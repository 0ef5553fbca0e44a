// The call of SCMD2: hands its two evaluated arguments to the service commands.
#ifndef ZORVIK_EXEC_SERVICE_CALL_H_
#define ZORVIK_EXEC_SERVICE_CALL_H_

namespace zorvik {

// The arguments are the two topmost entries of the evaluation stack. The command ends the run.
[[noreturn]] void call_service_command();

}  // namespace zorvik

#endif  // ZORVIK_EXEC_SERVICE_CALL_H_
