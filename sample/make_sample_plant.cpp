// make_sample_plant [FILE...]: writes files of the sample plant into the current directory: those
// named, or vnxres, vnxsav and nwsp_dat. A file is written under another name with FILE=NAME.
#include <fstream>
#include <iostream>
#include <string>

#include "sample/sample_plant.h"

namespace zorvik::sample {
namespace {

bool write(const SampleFile& file, const std::string& name) {
  std::ofstream out(name, std::ios::binary);
  out << file.bytes();
  if (out.flush()) return true;
  std::cerr << "make_sample_plant: cannot write " << name << '\n';
  return false;
}

bool write_named(const std::string& word) {
  const std::string from = word.substr(0, word.find('='));
  for (const SampleFile& file : sample_files()) {
    if (file.name == from) return write(file, word.substr(word.find('=') + 1));
  }
  std::cerr << "make_sample_plant: no such file: " << from << ". There are:";
  for (const SampleFile& file : sample_files()) std::cerr << ' ' << file.name;
  std::cerr << '\n';
  return false;
}

}  // namespace
}  // namespace zorvik::sample

int main(int count, char** words) {
  using namespace zorvik::sample;
  for (int k = 1; k < count; ++k) {
    if (!write_named(words[k])) return 1;
  }
  for (std::size_t k = 0; count < 2 && k < kPlainFiles; ++k) {
    if (!write(sample_files()[k], sample_files()[k].name)) return 1;
  }
  return 0;
}
