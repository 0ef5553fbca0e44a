// Reader of vnxres: the header once, then one record a call, strictly forwards.
#ifndef ZORVIK_RESULTS_RESULTS_READER_H_
#define ZORVIK_RESULTS_RESULTS_READER_H_

namespace zorvik {

constexpr int kRecordLoaded = 0;
constexpr int kNoMoreRecords = -1;

// Set by pass 1 when the program text begins with a label: vnxres is then neither opened nor read.
extern bool no_results_file;

// The first call opens vnxres, reads its header, forms the entry table, the results variables and
// the character notkey TITLE, and loads the first record; every further call loads the next one.
// Sets TAU to the record's problem time. Returns kRecordLoaded or kNoMoreRecords (the variables and
// TAU then keep their values). Ends the run, on the console: "%fat- Read error. File <vnxres>" with
// the I/O status, "%fat- Premature End_of_file detected. File <vnxres>", "%fat- Space is full.
// Increase parametermaxOUT in VARNOX utility", "%fat- Invalid header. File <vnxres>", "%fat- Header
// is too large. File <vnxres>"; in the listing: "%fat- File <vnxres> has no records".
int read_results_record();

// Once the program's names are known: further records are loaded for the named variables only.
void load_named_variables_only();

// Closes vnxres; 0 (also when it is not open) or the errno value of the failure.
int close_results_file();

// Writes the names of all entries to the listing, packed into lines. Without a results file in this
// run it opens vnxres and reads its header first.
void list_parameters();

}  // namespace zorvik

#endif  // ZORVIK_RESULTS_RESULTS_READER_H_
