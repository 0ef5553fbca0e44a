// The tests' own tools: binary text and the writer of results files describe the same bytes.
#include "support/binary_text.h"

#include <gtest/gtest.h>

#include "sample/results_file.h"

namespace zorvik::support {
namespace {

TEST(BinaryText, DescribesBytes) {
  std::string bytes;
  EXPECT_EQ(append_binary_text({"int32 1 -2  # two", "text 3 \"#\"", "byte 0A ff", "chars A b  ",
                                "# nothing", "real 2*1.0", "cut 12"},
                               bytes),
            "");
  EXPECT_EQ(bytes, std::string("\x01\0\0\0\xfe\xff\xff\xff#  \x0a\xff"
                               "A b\0\0\0\0",
                               20));
}

TEST(BinaryText, RefusesWhatItDoesNotKnow) {
  for (const char* line : {"int32 2147483648", "int32 1.5", "real x", "byte 100", "text 2 ABC",
                           "cut 1", "word 1", "real x*2"}) {
    std::string bytes;
    EXPECT_NE(append_binary_text({line}, bytes), "") << line;
  }
}

TEST(ResultsFileWriter, WritesCountsAndListsInTheirOwnOrders) {
  const sample::Catalogue catalogue{{{1, 2}, {5, 6}}, {{7, 8}}, {}, {}, {}, {}, {{3, 1}}, 1, 0, 30};
  const sample::ResultsFile file{
      2, catalogue, {{"X(1:2)", 1, 2, 1, 1, 2003}}, "T", {{1.0, 2.0}, {3.0}}};
  std::string expected;
  ASSERT_EQ(append_binary_text(
                {"int32 -2 1 6 1", "int32 2 0 0 1 0 0 1 1  # CH SCH COL ACCUM SLVES TANK HCS DT",
                 "int32 1 2 5 6", "int32 7 8", "int32 8*0", "int32 3 1", "int32 0 30",
                 "int32 0 1 2 1 1 2003", "name X(1:2)", "chars T", "real 1 2 3"},
                expected),
            "");
  EXPECT_EQ(sample::results_file_bytes(file), expected);
}

}  // namespace
}  // namespace zorvik::support
