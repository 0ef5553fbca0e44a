// Writer of results files (vnxres) from plain data, for tests, samples and benchmarks. It writes
// what it is given, sensible or not: counts come from the lists, values from the caller.
#ifndef ZORVIK_SAMPLE_RESULTS_FILE_H_
#define ZORVIK_SAMPLE_RESULTS_FILE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zorvik::sample {

struct Element {
  std::int32_t number, cells;
};

// With dt_flag > 0 a record begins with an extended part of blocks * 20000 + rest values.
struct Catalogue {
  std::vector<Element> ch, hcs, col, sch, slves, tank, accum;
  std::int32_t dt_flag, blocks, rest;
};

struct ListedEntry {
  std::string name;  // with its shape text, as in X(1:2,1:3)
  std::int32_t lo1, hi1, lo2, hi2;
  std::int32_t form;  // 1000 * first extent of the variable + 1 for real, 3 for integer
};

struct ResultsFile {
  std::int32_t standard_values;  // of a record, its problem time included
  std::optional<Catalogue> catalogue;
  std::vector<ListedEntry> entries;
  std::string title;
  std::vector<std::vector<double>> records;  // extended part first, when there is one
};

// The bytes before the first record; all bytes. A writer of a large file takes the header from here
// and appends its records to the file one by one.
std::string results_header_bytes(const ResultsFile& file);
std::string results_file_bytes(const ResultsFile& file);

}  // namespace zorvik::sample

#endif  // ZORVIK_SAMPLE_RESULTS_FILE_H_
