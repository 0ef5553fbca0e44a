// Text form of results files in the extended layout, and joining.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "driver/text.h"
#include "sample/results_file.h"
#include "unit/service_run.h"

namespace zorvik {
namespace {

using sample::ResultsFile;

class ResultsFiles : public ServiceRun {};

// Every record 2 values of the extended part, then TAU, one of VOID.COL's and the listed one.
ResultsFile extended() {
  return {4,
          sample::Catalogue{{}, {}, {}, {{7, 0}}, {}, {}, {}, 1, 0, 2},
          {{"X(1:2)", 1, 2, 1, 1, 2001}},
          "Run 1",
          {{9, 8, 0.5, 7, 1, 2}, {19, 18, 1.5, 17, 3, 4}}};
}

// A file whose only value besides the time is the time again, negative.
ResultsFile at_times(const std::vector<double>& times) {
  ResultsFile file{2, {}, {{"X", 1, 1, 1, 1, 1001}}, "T", {}};
  for (const double time : times) file.records.push_back({time, -time});
  return file;
}

const char* const kExtendedText =
    "-4 1 6 5\n"
    "0 1 0 0 0 0 0 1\n"
    "0 0\n0 0\n0 0\n7 0\n0 0\n0 0\n0 0\n"
    "0 2\n"
    "0 1 2 1 1 2001\n"
    "0_TEXT_0\n[X(1:2)                                  ]\n1_TEXT_1\n"
    "0_TEXT_0\n[Run 1]\n1_TEXT_1\n"
    "9.000000000E+00 8.000000000E+00\n"
    "! Tau\n5.000000000E-01 7.000000000E+00 1.000000000E+00 2.000000000E+00\n"
    "1.900000000E+01 1.800000000E+01\n"
    "! Tau\n1.500000000E+00 1.700000000E+01 3.000000000E+00 4.000000000E+00\n";

std::string line(const std::string& text) { return message(' ', text, '\n'); }

TEST_F(ResultsFiles, BecomeTextAndAFileAgain) {
  put("vnxres", sample::results_file_bytes(extended()));
  EXPECT_EQ(scmd2("TO_TEXT RESULTS").status, 0);
  EXPECT_EQ(get("restxt"), kExtendedText);
  remove("restxt");
  std::vector<ResultsFile> files{extended()};
  for (const int rest : {2, 0}) {  // two blocks of 20000, and then 2 values or none
    ResultsFile file = extended();
    file.title.assign(98, 't');
    file.catalogue->blocks = 2;
    file.catalogue->rest = rest;
    file.records.resize(1);
    file.records[0].insert(file.records[0].begin(), 39998u + static_cast<unsigned>(rest), 1.0);
    files.push_back(file);
  }
  for (const ResultsFile& file : files) {
    put("vnxres", sample::results_file_bytes(file));
    EXPECT_EQ(scmd2("TO_TEXT RESULTS").status, 0);
    remove("vnxres");
    const RunOutcome outcome = scmd2("FROM_TEXT RESULTS");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.listing + outcome.console, "");
    EXPECT_EQ(get("vnxres"), sample::results_file_bytes(file));
    remove("restxt");
  }
}

TEST_F(ResultsFiles, ARunCutInTwoIsJoinedAgain) {
  const std::vector<double> times = {0, 1, 2, 3, 4, 5};
  const auto part = [&](int first, int end) {
    return sample::results_file_bytes(at_times({times.begin() + first, times.begin() + end}));
  };
  const std::string whole = part(0, 6);
  const char* const kBehind = "T2B,T2E from a,T3E from b";
  const struct {
    int end_of_first, start_of_second;
    double mode;
    const char *base, *from;
  } kCases[] = {
      {3, 3, 0, "a: T2B,T2E,3.000000000E+00,T3E", kBehind},
      {4, 2, 0, "a: T2B,T2E,4.000000000E+00,T3E", kBehind},
      {3, 3, 1, "c: T2B,T2E,3.000000000E+00,T3E", kBehind},
      {4, 3, 1, "c: T2B,T2E,4.000000000E+00,T3E", kBehind},
      {3, 3, 2, "c: T2B,T2E,3.000000000E+00,T3E", kBehind},
      {5, 3, 2, "c: T2B,2.000000000E+00,T3B,T3E", "T2B,2.000000000E+00 from a T3B,T3E from b"},
      {1, 1, 1, "c: T2B,T2E,1.000000000E+00,T3E", kBehind},
  };
  for (const auto& c : kCases) {
    put("a", part(0, c.end_of_first));
    put("b", part(c.start_of_second, 6));
    const std::string output = c.mode == 0 ? "a" : "c";
    const RunOutcome outcome = scmd2(message(output, " = a\t+b"), {c.mode});
    const auto time = [](int k) { return message(format_real(k)); };
    EXPECT_EQ(outcome.listing,
              line(message("%inf- SCMD2: ", output, "=a+b complited successfully")) +
                  line("%inf- Let Beg_time = T2B , Last_time = T2E File a") +
                  line("%inf- Let Beg_time = T3B , Last_time = T3E File b") +
                  line(message("%inf- T2B , T2E = ", time(0), " , ", time(c.end_of_first - 1))) +
                  line(message("%inf- T3B , T3E = ", time(c.start_of_second), " , ", time(5))) +
                  line(message("%inf- Base time points in ", c.base)) +
                  line(message("      ", c.from)));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(get(output), whole);
    remove("c");
  }
}

TEST_F(ResultsFiles, AFileThatMayOnlyBeReadIsNotJoinedTo) {
  put("a", sample::results_file_bytes(at_times({0})));
  put("b", sample::results_file_bytes(at_times({1, 2})));
  const RunOutcome refused = run([&] {  // nothing restrains the superuser
    if (::chmod("a", 0444) != 0 || ::chmod(".", 0755) != 0) ::_exit(99);
    if (::geteuid() == 0 && ::seteuid(65534) != 0) ::_exit(99);
    command("a=a+b", {0});
  });
  EXPECT_EQ(refused.console, " %fat- Write error. 1st  file in SCMD2\n Fortran iostat = 13\n");
  EXPECT_EQ(refused.listing, "");
}

}  // namespace
}  // namespace zorvik
