// PRINT, WRITE and WRITE1: values as text, packed into lines.
#ifndef ZORVIK_EXEC_OUTPUT_STATEMENT_H_
#define ZORVIK_EXEC_OUTPUT_STATEMENT_H_

#include "lang/code/code_store.h"

namespace zorvik {

// Executes the output statement `code` whose first expression stands at `position`; returns the
// position after it. PRINT writes to the console, WRITE outside an OUTPUT to the listing; WRITE and
// WRITE1 in an OUTPUT to the OUTPUT's own file, which the first of them opens.
int execute_output_statement(StatementCode code, int position);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_OUTPUT_STATEMENT_H_
