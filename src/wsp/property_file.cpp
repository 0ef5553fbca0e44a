// The layout of the file is the table kRecordGroups; the loader walks it. A group is a run of
// records of the same form whose contents are laid one after the other into the destination:
//   12 NT records of NP reals  ->  G1: quantity 1 at TG(1) over all pressures, at TG(2), ...
#include "wsp/property_file.h"

#include <cerrno>
#include <cstdint>
#include <string>

#include "driver/text.h"
#include "driver/units.h"
#include "wsp/property_messages.h"
#include "wsp/property_tables.h"

namespace zorvik {
namespace {

constexpr std::size_t kLongestName = 80;
constexpr int kIndexRows = 600;  // of the grids' bucket tables, whatever the grids have
// How the language's functions use the tables: with bilinear interpolation, the widest tolerance.
constexpr double kBuiltInOption = 0.0;

PropertyTables& tables = property_tables;
PropertyHeader& header = property_tables.header;

// A count known from the start, or a field read before it is needed.
struct Count {
  int fixed = 0;
  const std::int32_t* field = nullptr;
  constexpr Count(int number) : fixed(number) {}              // NOLINT: reads as a number
  constexpr Count(const std::int32_t* from) : field(from) {}  // NOLINT
  int value() const { return field != nullptr ? *field : fixed; }
};

struct RecordGroup {
  Count records, times;  // records * times records of
  Count values;          // so many values of
  int value_bytes;       // so many bytes,
  void* destination;     // laid down here; nullptr: read over
  void (*check)();       // judges what the group brought; may be nullptr
};

void check_header();
void check_steam_rows();

constexpr int kInt = sizeof(std::int32_t), kFloat = sizeof(double);

constexpr RecordGroup kRecordGroups[] = {
    {1, 1, 1, sizeof(PropertyHeader), &header, check_header},
    {kSaturationColumns, 1, &header.n, kFloat, tables.saturation, nullptr},
    {kMoreColumns, 1, &header.n, kFloat, tables.saturation_more, nullptr},
    {4, 1, &header.nc, kInt, nullptr, nullptr},  // bucket tables: rows are found by bisection
    {kSlopeColumns, 1, &header.n, kFloat, tables.saturation_slope, nullptr},
    {4, 1, kIndexRows, kInt, nullptr, nullptr},  // bucket tables of the grids
    {1, 1, &header.np, kFloat, tables.pressure, nullptr},
    {1, 1, &header.nt, kFloat, tables.temperature, nullptr},
    {kGridBlocks, &header.nt, &header.np, kFloat, tables.water_grid, nullptr},
    {kGridBlocks, &header.nt, &header.np, kFloat, tables.steam_grid, nullptr},
    {1, 1, 1, kInt, &tables.steam_rows, check_steam_rows},
    {&header.n, &header.n, kPatchSize, kFloat, tables.water_enthalpy, nullptr},
    {&header.n, &header.n, kPatchSize, kFloat, tables.water_property5, nullptr},
    {&tables.steam_rows, &header.n, kPatchSize, kFloat, tables.steam_enthalpy, nullptr},
    {&tables.steam_rows, &header.n, kPatchSize, kFloat, tables.steam_property5, nullptr},
    {3, 1, &header.n, kFloat, tables.saturation_cubic, nullptr},
};

[[noreturn]] void stop_on_header(std::string_view what) {
  stop_with_property_message(message("%WSP_F- NWS0SM: ", what));
}

[[noreturn]] void stop_on_failure(std::string_view what, std::string_view name, int status) {
  const std::string digits = message(status);
  const std::string field(digits.size() < 10 ? 10 - digits.size() : 0, ' ');
  stop_with_property_message(
      message("%WSP_F- ", what, " error.File ", name, " Iostat = ", field, digits));
}

// Two rows make an interval. K1 and K2 are used as rows; the steps of the bucket tables are not
// used.
void check_header() {
  const struct {
    std::string_view name;
    int count, lowest, highest;
  } kRanges[] = {
      {"N", header.n, 2, kMaxSaturationRows},
      {"NP", header.np, 2, kMaxGridRows},
      {"NT", header.nt, 2, kMaxGridRows},
      {"NC", header.nc, 1, kMaxBucketRows},
  };
  for (const auto& range : kRanges) {
    if (range.count > range.highest) stop_on_header(message(range.name, " > ", range.highest));
    if (range.count < range.lowest) stop_on_header(message(range.name, " < ", range.lowest));
  }
  if (header.k1 < 1 || header.k1 > header.n) stop_on_header("K1 out of [1,N]");
  if (header.k2 < 1 || header.k2 > header.n) stop_on_header("K2 out of [1,N]");
}

void check_steam_rows() {
  if (tables.steam_rows > kMaxSteamRows) stop_on_header(message("M > ", kMaxSteamRows));
  if (tables.steam_rows < 0) tables.steam_rows = 0;
}

class RecordReader {
 public:
  RecordReader(File& file, std::string_view name) : file_(file), name_(name) {}

  // Reads one record whose contents begin with `bytes` wanted bytes; more of it is passed over.
  void read_record(char* to, int bytes) {
    // The widest of the records that are read over; those of NC integers are no longer.
    char passed_over[kIndexRows * kInt];
    const std::int32_t count = read_count();
    if (count < bytes) stop_on_failure("Read", name_, EIO);
    read(to != nullptr ? to : passed_over, static_cast<std::size_t>(bytes));
    if (count > bytes && file_.seek(file_.position() + (count - bytes)) != 0) {
      stop_on_failure("Read", name_, file_.io_status());
    }
    if (read_count() != count) stop_on_failure("Read", name_, EIO);  // the frame's two counts agree
  }

 private:
  std::int32_t read_count() {
    std::int32_t count = 0;
    read(&count, sizeof count);
    return count;
  }

  void read(void* to, std::size_t bytes) {
    const ReadStatus status = file_.read(to, bytes);
    if (status == ReadStatus::kOk) return;
    if (status == ReadStatus::kError) stop_on_failure("Read", name_, file_.io_status());
    stop_with_property_message(message("%WSP_F- Premature end-of-file detected;File ", name_));
  }

  File& file_;
  std::string_view name_;
};

void read_group(RecordReader& reader, const RecordGroup& group) {
  // The fields have been judged: what they size fits into the destination.
  const int bytes = group.values.value() * group.value_bytes;
  const int records = group.records.value() * group.times.value();
  char* to = static_cast<char*>(group.destination);
  for (int k = 0; k < records; ++k) {
    reader.read_record(to, bytes);
    if (to != nullptr) to += bytes;
  }
  if (group.check != nullptr) group.check();
}

bool tables_loaded = false;

}  // namespace

int load_property_tables(int unit, std::string_view name, int mode, double option) {
  if (unit != 0) {
    if (name.size() > kLongestName) {
      stop_on_header(message("Length of input file specification > ", kLongestName));
    }
    if (name.empty()) name = kPropertyFileName;
    File& file = file_on(unit);
    if (const int status = file.open_to_read(std::string(name)); status != 0) {
      stop_on_failure("Open", name, status);
    }
    RecordReader reader(file, name);
    for (const RecordGroup& group : kRecordGroups) read_group(reader, group);
    file.close();
    // Rows found and saturation temperatures noted belong to other tables, or to none.
    start_searches();
    reset_property_inquiry();
  }
  set_property_options(mode, option);
  return 0;
}

void select_property_tables() {
  load_property_tables(tables_loaded ? 0 : kPropertyUnit, {}, kRunMode, kBuiltInOption);
  tables_loaded = true;
}

bool has_property_tables() { return tables_loaded; }

}  // namespace zorvik
