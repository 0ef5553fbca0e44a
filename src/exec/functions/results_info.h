// GINFO: the shape of a results variable by its name.
#ifndef ZORVIK_EXEC_FUNCTIONS_RESULTS_INFO_H_
#define ZORVIK_EXEC_FUNCTIONS_RESULTS_INFO_H_

namespace zorvik {

// GINFO(k, name): rank (k = 0), first (1) or second extent (2). All messages end the run: "%fat-
// 2nd argument of GINFO is not CHARACTER", "%fat- 1st argument of GINFO is not INTEGER", "%err- 1st
// argument of GINFO is not SCALAR", "%fat- 1st argument of GINFO out of [0,2]", "%err- 2nd argument
// of GINFO consists of spaces", "%err- <vnxres> not opened because <vnxdat> starts from a label"
// and "%fat- See function GINFO", "%fat- Variable " and the name with " is absent in <vnxres>".
void results_variable_info(int number);

}  // namespace zorvik

#endif  // ZORVIK_EXEC_FUNCTIONS_RESULTS_INFO_H_
