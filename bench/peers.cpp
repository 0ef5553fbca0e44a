// bench_peers TASK: what a user would write by hand for the task, with the same input and output
// files.
//   header      looks up Q2000(7) in vnxres, of whose names it makes a hash table
//   seven       writes seven quantities of each record of vnxres to the file table
//   print       prints four reals a line, 60,000 times; write: the same into the file table
//   from_text   makes the numbers of restxt binary; to_text: the other way, from vnxres
//   properties  400,000 densities of water and steam from the tables of nwsp_dat
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

// Output through one large buffer, numbers in the form 1.234567890e+04.
class Writer {
 public:
  explicit Writer(std::FILE* to) : to_(to) {}
  ~Writer() { std::fwrite(buffer_.data(), 1, used_, to_); }
  void real(double value) {
    char* const first = buffer_.data() + used_;
    used_ = static_cast<std::size_t>(std::to_chars(first, buffer_.data() + buffer_.size(), value,
                                                   std::chars_format::scientific, 9)
                                         .ptr -
                                     buffer_.data());
    put(' ');
  }
  void end_line() {
    buffer_[used_ - 1] = '\n';
    if (used_ < buffer_.size() - 4096) return;
    std::fwrite(buffer_.data(), 1, used_, to_);
    used_ = 0;
  }
  void put(char c) { buffer_[used_++] = c; }

 private:
  std::FILE* to_;
  std::size_t used_ = 0;
  std::vector<char> buffer_ = std::vector<char>(1 << 16);
};

struct Header {
  std::int32_t h1, nv, nl, nt;
  std::vector<std::int32_t> descriptors;
  std::vector<char> names;
  long first_record;
};

// Of a file without a catalogue.
Header read_header(std::FILE* in) {
  Header header{};
  if (std::fread(&header, 4, 4, in) != 4) return header;
  header.descriptors.resize(static_cast<std::size_t>(header.nl));
  header.names.resize(static_cast<std::size_t>(header.nv) * 40);
  bool whole = std::fread(header.descriptors.data(), 4, header.descriptors.size(), in) > 0;
  whole = std::fread(header.names.data(), 1, header.names.size(), in) > 0 && whole;
  header.first_record = std::ftell(in) + header.nt;
  return header;
}

int header_task() {
  std::FILE* const in = std::fopen("vnxres", "rb");
  if (in == nullptr) return 1;
  const Header header = read_header(in);
  std::unordered_map<std::string_view, long> starts;
  long start = 1;
  for (std::size_t e = 0; e < static_cast<std::size_t>(header.nv); ++e) {
    const std::string_view name(header.names.data() + 40 * e, 40);
    const std::int32_t* const d = header.descriptors.data() + 6 * e;
    starts.emplace(name.substr(0, name.find_first_of("( ")), start);
    start += long{d[2] - d[1] + 1} * (d[4] - d[3] + 1);
  }
  const auto found = starts.find("Q2000");
  if (found == starts.end()) return 1;
  double time = 0, value = 0;
  std::fseek(in, header.first_record, SEEK_SET);
  bool whole = std::fread(&time, 8, 1, in) == 1;
  std::fseek(in, header.first_record + 8 * (found->second + 6), SEEK_SET);
  whole = std::fread(&value, 8, 1, in) == 1 && whole;
  std::printf("%.9E %.9E\n", time, value);
  return whole ? 0 : 1;
}

int seven_task() {
  std::FILE* const in = std::fopen("vnxres", "rb");
  std::FILE* const out = std::fopen("table", "w");
  if (in == nullptr || out == nullptr) return 1;
  std::fseek(in, read_header(in).first_record, SEEK_SET);
  const auto place = [](int variable, int element) { return 25 * (variable - 1) + element; };
  const int places[] = {place(2, 3),   place(5, 1),   place(5, 25), place(9, 7),
                        place(12, 12), place(15, 20), place(19, 2)};
  std::vector<double> record(501);
  Writer writer(out);
  while (std::fread(record.data(), 8, record.size(), in) == record.size()) {
    writer.real(record[0]);
    for (const int k : places) writer.real(record[static_cast<std::size_t>(k)]);
    writer.end_line();
  }
  return 0;
}

int print_task(std::FILE* out) {
  Writer writer(out);
  double x = 1.25, y = -0.75, z = 1.0e-20, w = 123456.75;
  for (int k = 0; k < 60000; ++k) {
    x *= 1.0003, y *= 0.9998, z *= 1.0011, w -= 1.37;
    writer.real(x), writer.real(y), writer.real(z), writer.real(w);
    writer.end_line();
  }
  return 0;
}

std::vector<char> whole_file(const char* name) {
  std::ifstream in(name, std::ios::binary | std::ios::ate);
  std::vector<char> bytes(static_cast<std::size_t>(std::max<std::streamoff>(in.tellg(), 0)));
  in.seekg(0).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

// Reads a line at a time and takes every number of it for a real.
int from_text_task() {
  std::FILE* const in = std::fopen("restxt", "r");
  std::FILE* const out = std::fopen("vnxres", "wb");
  if (in == nullptr || out == nullptr) return 1;
  char line[256];
  while (std::fgets(line, sizeof line, in) != nullptr) {
    if (line[0] == '!' || line[0] == '[') continue;
    const char* next = line;
    const char* const end = line + std::strlen(line);
    for (double value; next < end;) {
      const auto [stop, fault] = std::from_chars(next, end, value);
      if (fault != std::errc{}) break;
      std::fwrite(&value, 8, 1, out);
      next = stop + 1;
    }
  }
  return std::fclose(out);
}

int to_text_task() {
  std::FILE* const in = std::fopen("vnxres", "rb");
  std::FILE* const out = std::fopen("restxt", "w");
  if (in == nullptr || out == nullptr) return 1;
  std::fseek(in, read_header(in).first_record, SEEK_SET);
  std::vector<double> record(501);
  Writer writer(out);
  while (std::fread(record.data(), 8, record.size(), in) == record.size()) {
    for (std::size_t k = 0; k < record.size(); ++k) {
      writer.real(record[k]);
      if (k % 4 == 3 || k + 1 == record.size()) writer.end_line();
    }
  }
  return 0;
}

// ---- properties

struct Tables {
  std::int32_t n, np, nt;
  std::vector<double> saturation_pressure, saturation_temperature, slope, pressure, temperature;
  std::vector<double> water, steam;  // density, the pressures fastest
};

// Passes over the frames of the file's records.
class RecordWalker {
 public:
  explicit RecordWalker(const std::vector<char>& bytes) : next_(bytes.data()) {}
  const char* record() {
    std::int32_t count;
    std::memcpy(&count, next_, 4);
    const char* const contents = next_ + 4;
    next_ = contents + count + 4;
    return contents;
  }
  void skip(int records) {
    for (int k = 0; k < records; ++k) record();
  }
  std::vector<double> reals(int count, int records = 1) {
    std::vector<double> values(static_cast<std::size_t>(count) * static_cast<std::size_t>(records));
    for (int k = 0; k < records; ++k) {
      std::memcpy(values.data() + k * count, record(), static_cast<std::size_t>(count) * 8);
    }
    return values;
  }

 private:
  const char* next_;
};

Tables read_tables() {
  const std::vector<char> bytes = whole_file("nwsp_dat");
  RecordWalker walker(bytes);
  Tables t{};
  std::int32_t counts[3];
  std::memcpy(counts, walker.record(), sizeof counts);
  t.n = counts[0], t.np = counts[1], t.nt = counts[2];
  t.saturation_pressure = walker.reals(t.n);
  t.saturation_temperature = walker.reals(t.n);
  walker.skip(13 + 12 + 4);
  t.slope = walker.reals(t.n);
  walker.skip(13 + 4);
  t.pressure = walker.reals(t.np);
  t.temperature = walker.reals(t.nt);
  constexpr int kDensityBlock = 2;
  walker.skip(kDensityBlock * t.nt);
  t.water = walker.reals(t.np, t.nt);
  walker.skip(11 * t.nt);
  t.steam = walker.reals(t.np, t.nt);
  return t;
}

std::size_t row_of(const std::vector<double>& grid, double x) {
  const auto above = std::upper_bound(grid.begin(), grid.end(), x) - grid.begin();
  return static_cast<std::size_t>(
      std::clamp<std::ptrdiff_t>(above - 1, 0, static_cast<std::ptrdiff_t>(grid.size()) - 2));
}

double density(const Tables& t, double pressure, double temperature) {
  const std::size_t s = row_of(t.saturation_pressure, pressure);
  const double boiling =
      t.saturation_temperature[s] + (pressure - t.saturation_pressure[s]) * t.slope[s];
  const std::vector<double>& grid = temperature > boiling ? t.steam : t.water;
  const std::size_t p = row_of(t.pressure, pressure), k = row_of(t.temperature, temperature);
  const double u = (pressure - t.pressure[p]) / (t.pressure[p + 1] - t.pressure[p]);
  const double v = (temperature - t.temperature[k]) / (t.temperature[k + 1] - t.temperature[k]);
  const double* const low = grid.data() + k * static_cast<std::size_t>(t.np) + p;
  const double* const high = low + t.np;
  const double below = low[0] + u * (low[1] - low[0]);
  return below + v * (high[0] + u * (high[1] - high[0]) - below);
}

int properties_task() {
  const Tables tables = read_tables();
  double sum = 0, p = 1.0e5;
  for (int i = 0; i < 400; ++i) {
    p += 3.7e4;
    double t = 300.0;
    for (int j = 0; j < 1000; ++j) {
      t += 0.31;
      sum += density(tables, p, t);
    }
  }
  std::printf("%.9E\n", sum);
  return 0;
}

int run(std::string_view task) {
  if (task == "header") return header_task();
  if (task == "seven") return seven_task();
  if (task == "print") return print_task(stdout);
  if (task == "write") {
    std::FILE* const out = std::fopen("table", "w");
    return out == nullptr ? 1 : print_task(out);
  }
  if (task == "from_text") return from_text_task();
  if (task == "to_text") return to_text_task();
  if (task == "properties") return properties_task();
  std::fputs("usage: bench_peers header|seven|print|write|from_text|to_text|properties\n", stderr);
  return 2;
}

}  // namespace

int main(int argc, char** argv) { return run(argc == 2 ? argv[1] : ""); }
