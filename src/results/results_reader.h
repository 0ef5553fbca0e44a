// Reader of vnxres: the header once, then one record a call, strictly forwards.
#ifndef ZORVIK_RESULTS_RESULTS_READER_H_
#define ZORVIK_RESULTS_RESULTS_READER_H_

namespace zorvik {

constexpr int kRecordLoaded = 0;
constexpr int kNoMoreRecords = -1;

// Set by pass 1 when the program text begins with a label: vnxres is then neither opened nor read.
extern bool no_results_file;

// Opens vnxres, reads its header, forms the entry table, the results variables and the character
// notkey TITLE; nothing in a run without a results file. Ends the run, on the console: "%fat- Read
// error. File <vnxres>" with the I/O status, "%fat- Premature End_of_file detected. File <vnxres>",
// "%fat- Space is full. Increase parametermaxOUT in VARNOX utility", "%fat- Invalid header. File
// <vnxres>", "%fat- Header is too large. File <vnxres>"; in the listing: "%fat- File <vnxres> has
// no records".
void open_results_file();

// Once the program's names are known: plans the loading of the named variables, and of the problem
// time when the program uses it, and loads the first record. Its failures are those of
// read_results_record.
void load_first_record();

// Loads the next record. Returns kRecordLoaded or kNoMoreRecords (the variables and TAU then keep
// their values). Ends the run, on the console: "%fat- Read error. File <vnxres>" with the I/O
// status.
int read_results_record();

// Closes vnxres; 0 (also when it is not open) or the errno value of the failure.
int close_results_file();

// Writes the names of all entries to the listing, packed into lines. Without a results file in this
// run it opens vnxres and reads its header first.
void list_parameters();

}  // namespace zorvik

#endif  // ZORVIK_RESULTS_RESULTS_READER_H_
