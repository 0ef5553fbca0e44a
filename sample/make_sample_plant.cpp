// make_sample_plant: writes the files of the sample plant into the current directory.
#include <fstream>
#include <iostream>

#include "sample/sample_plant.h"

int main() {
  for (const auto& [name, bytes] : zorvik::sample::sample_files()) {
    std::ofstream out(name, std::ios::binary);
    out << bytes();
    if (!out.flush()) {
      std::cerr << "make_sample_plant: cannot write " << name << '\n';
      return 1;
    }
  }
  return 0;
}
