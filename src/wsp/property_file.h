// Reader of the property tables file nwsp_dat.
//
// The file is a sequence of records, each framed by 4-byte counts of its bytes. It is read once a
// run, front to back; every count is judged before it sizes anything.
//
// All failures are fatal, on the console, followed by "Water/Steam Properties. Stop":
//   "%WSP_F- Open error.File " or "%WSP_F- Read error.File ", the name, " Iostat = ", the status;
//   "%WSP_F- Premature end-of-file detected;File " and the name;
//   "%WSP_F- NWS0SM: " and "Length of input file specification > 80", or the count that is out of
//   range: "N > 150", "NP < 2", "K1 out of [1,N]" and the like.
#ifndef ZORVIK_WSP_PROPERTY_FILE_H_
#define ZORVIK_WSP_PROPERTY_FILE_H_

#include <string_view>

namespace zorvik {

constexpr std::string_view kPropertyFileName = "nwsp_dat";

// NWS0SM in messages. Reads the tables from the file `name` (empty: nwsp_dat) through `unit`, or,
// with unit 0, keeps those in use; then sets the options (property_tables.h). Returns 0.
int load_property_tables(int unit, std::string_view name, int mode, double option);

// Makes the tables ready for a built-in function: reads the file the first time and afterwards only
// selects the options anew.
void select_property_tables();

// True from the first selection on.
bool has_property_tables();

}  // namespace zorvik

#endif  // ZORVIK_WSP_PROPERTY_FILE_H_
