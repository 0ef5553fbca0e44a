// Text form, repair and joining of results files.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

#include "driver/text.h"
#include "sample/results_file.h"
#include "service/results_text.h"
#include "unit/service_run.h"

namespace zorvik {
namespace {

using sample::Catalogue;
using sample::ResultsFile;

class ResultsFiles : public ServiceRun {};

const ResultsFile kStandard = {
    3, {}, {{"X(1:2)", 1, 2, 1, 1, 2001}}, "Run 1", {{0.5, 1, -2.5e300}, {1.5, 8.9e307, 1e-305}}};

// Every record 2 values of the extended part, then TAU, one of VOID.COL's and the listed one.
ResultsFile extended() {
  ResultsFile file = kStandard;
  file.catalogue = Catalogue{{}, {}, {}, {{7, 0}}, {}, {}, {}, 1, 0, 2};
  file.standard_values = 4;
  file.records = {{9, 8, 0.5, 7, 1, 2}, {19, 18, 1.5, 17, 3, 4}};
  return file;
}

// A file whose only value besides the time is the time again, negative.
ResultsFile at_times(const std::vector<double>& times) {
  ResultsFile file{2, {}, {{"X", 1, 1, 1, 1, 1001}}, "T", {}};
  for (const double time : times) file.records.push_back({time, -time});
  return file;
}

const char* const kStandardText =
    "3 1 6 5\n"
    "0 1 2 1 1 2001\n"
    "0_TEXT_0\n[X(1:2)                                  ]\n1_TEXT_1\n"
    "0_TEXT_0\n[Run 1]\n1_TEXT_1\n"
    "! Tau\n5.000000000E-01 1.000000000E+00 -2.500000000+300\n"
    "! Tau\n1.500000000E+00 UNDEF 0.000000000E+00\n";

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
  ResultsFile rounded = kStandard;
  rounded.records[1][2] = 0.0;
  const struct {
    ResultsFile file;
    const char* text;
    ResultsFile again;
  } kCases[] = {{kStandard, kStandardText, rounded}, {extended(), kExtendedText, extended()}};
  for (const auto& c : kCases) {
    put("vnxres", sample::results_file_bytes(c.file));
    EXPECT_EQ(scmd2("TO_TEXT RESULTS").status, 0);
    EXPECT_EQ(get("restxt"), c.text);
    remove("vnxres");
    const Outcome outcome = scmd2("FROM_TEXT RESULTS");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.listing + outcome.console, "");
    EXPECT_EQ(get("vnxres"), sample::results_file_bytes(c.again));
    remove("restxt");
  }
}

TEST_F(ResultsFiles, NumbersFillLinesAndBlocks) {
  ResultsFile file{30, {}, {}, "", {std::vector<double>(30, -12.5)}};
  put("vnxres", sample::results_file_bytes(file));
  EXPECT_EQ(scmd2("TO_TEXT RESULTS").status, 0);
  std::string lines;
  for (int k = 1; k <= 30; ++k)
    lines += k % 4 == 0 || k == 30 ? "-1.250000000E+01\n" : "-1.250000000E+01 ";
  EXPECT_EQ(get("restxt"), message("30 0 0 0\n\n0_TEXT_0\n1_TEXT_1\n0_TEXT_0\n[]\n1_TEXT_1\n"
                                   "! Tau\n",
                                   lines));
  remove("restxt");

  for (const int rest : {2, 0}) {  // two blocks of 20000, and then 2 values or none
    file = extended();
    file.title.assign(98, 't');
    file.catalogue->blocks = 2;
    file.catalogue->rest = rest;
    file.records.resize(1);
    file.records[0].insert(file.records[0].begin(), 39998u + static_cast<unsigned>(rest), 1.0);
    put("vnxres", sample::results_file_bytes(file));
    EXPECT_EQ(scmd2("TO_TEXT RESULTS").status, 0);
    remove("vnxres");
    EXPECT_EQ(scmd2("FROM_TEXT RESULTS").status, 0);
    EXPECT_EQ(get("vnxres"), sample::results_file_bytes(file));
    remove("restxt");
  }
}

TEST_F(ResultsFiles, ATitleOf100IsWrittenAsTextButOnly98ComeBack) {
  ResultsFile file = kStandard;
  file.title.assign(100, 't');
  put("vnxres", sample::results_file_bytes(file));
  EXPECT_EQ(scmd2("TO_TEXT RESULTS").status, 0);
  remove("vnxres");
  expect_refusal(
      scmd2("FROM_TEXT RESULTS"),
      line(message("%fat- File <restxt>. Invalid string [", std::string(99, 't'), " Line 7")) +
          line("      Utility can not exec. command \"FROM_TEXT RESULTS\". Function SCMD2"));
}

TEST_F(ResultsFiles, CutsAreRefusedAsTextAndRepaired) {
  const std::string last = line(
      "      Utility can not execute command \"TO_TEXT RESULTS\". "
      "Function SCMD2");
  for (const ResultsFile& file : {kStandard, extended()}) {
    const std::string whole = sample::results_file_bytes(file);
    const std::size_t header = sample::results_header_bytes(file).size();
    const std::size_t record = file.records[0].size() * sizeof(double);
    // Every byte of the last record, every seventh one before it.
    const std::size_t last_record = whole.size() - record;
    const auto next_size = [&](std::size_t size) {
      return size < last_record ? std::min(size + 7, last_record) : size + 1;
    };
    for (std::size_t size = 0; size <= whole.size(); size = next_size(size)) {
      SCOPED_TRACE(size);
      const std::string cut = whole.substr(0, size);
      const std::size_t good = size < header ? size : size - (size - header) % record;
      put("vnxres", cut);
      const Outcome text = scmd2("TO_TEXT RESULTS");
      remove("restxt");
      const Outcome repaired = scmd2("REPAIR RESULTS");
      if (size < header) {
        expect_refusal(text, size < 16 ? last
                                       : line("%fat- Premature EOF detected during \"TO_TEXT "
                                              "RESULTS\" operation. File <vnxres>") +
                                             last);
        expect_refusal(repaired, line("%fat- Premature end of file detected during REPAIR "
                                      "operation. File <vnxres>") +
                                     line("      Utility can not repair this file"));
      } else if (good == size) {
        EXPECT_EQ(text.status, file.catalogue && size == header ? 1 : 0);
        EXPECT_EQ(repaired.listing,
                  line("%inf- File <vnxres> has a valid structure. File not changed"));
        EXPECT_EQ(repaired.status, 0);
      } else {
        expect_refusal(text, line("%fat- File <vnxres> is corrupted. Use SCMD2 to repair it"));
        if (good == header) {
          expect_refusal(repaired, line("%fat- File <vnxres> has not valid records except control "
                                        "structures") +
                                       line("      Utility can not repair this file"));
        } else {
          EXPECT_EQ(repaired.listing, line("%inf- File <vnxres> repaired"));
          EXPECT_EQ(repaired.status, 0);
        }
      }
      EXPECT_EQ(get("vnxres"), whole.substr(0, good > header ? good : size));
    }
  }
}

TEST_F(ResultsFiles, HeadersThatCannotBeAreRefused) {
  ResultsFile long_title = kStandard;
  long_title.title.assign(101, 't');
  std::string no_values = sample::results_file_bytes(kStandard);
  no_values[0] = 0;
  std::string many_entries = sample::results_file_bytes(kStandard);
  many_entries.replace(4, 8, std::string("\xA1\x0F\0\0\xC6\x5D\0\0", 8));  // NV 4001, NL 24006
  const struct {
    std::string bytes;
    const char *to_text, *repair;
  } kCases[] = {
      {sample::results_file_bytes(long_title),
       "%fat- Title is longer than 100 characters. File <vnxres>", nullptr},
      {no_values, "%fat- Invalid header. File <vnxres>", "%fat- Invalid header. File <vnxres>"},
      {many_entries, "%fat- Header is too large. File <vnxres>",
       "%fat- Header is too large. File <vnxres>"},
  };
  for (const auto& c : kCases) {
    put("vnxres", c.bytes);
    expect_refusal(scmd2("TO_TEXT RESULTS"),
                   line(c.to_text) + line("      Utility can not execute command \"TO_TEXT "
                                          "RESULTS\". Function SCMD2"));
    remove("restxt");
    if (c.repair == nullptr) continue;
    expect_refusal(scmd2("REPAIR RESULTS"),
                   line(c.repair) + line("      Utility can not repair this file"));
    EXPECT_EQ(get("vnxres"), c.bytes);
  }
}

TEST_F(ResultsFiles, AWrongTextIsRefusedWithItsLine) {
  const char* const kNumber = "1.500000000E+00 UNDEF";
  const char* const kLastRecord = "1.500000000E+00 UNDEF 0.000000000E+00\n";
  const struct {
    const char *from, *to, *message;
  } kCases[] = {
      {"3 1 6 5", "0 1 6 5", "%fat- Invalid header. File <restxt> Line 1"},
      {"3 1 6 5", "+3 1 - 5", "%fat- Invalid lexeme\"-\" File <restxt> Line 1"},
      {"3 1 6 5", "2147483648 1 6 5",
       "%err- Integer overflow in integer constant \"2147483648\" File <restxt> Line 1"},
      {"[X(1:2)                                  ]", "  X: \t",
       "%fat- File <restxt>. Invalid string X: Line 4"},
      {"[Run 1]", "[Run 12]", "%fat- File <restxt>. Invalid string [Run 12] Line 7"},
      {"0_TEXT_0\n[X", "1\n[X", "%fat- File <restxt>. String 0_TEXT_0 expected Line 3"},
      {"1_TEXT_1\n0", "0", "%fat- File <restxt>. String 1_TEXT_1 expected Line 5"},
      {kNumber, "1.5 -", "%fat- Invalid lexeme\"-\" File <restxt> Line 12"},
      {kNumber, "1.5#", "%err- Invalid character \"#\"  Code = 35 File <restxt> Line 12"},
      {kNumber, "1..5 1", "%err- Syntax error in real constant \"1..5\" File <restxt> Line 12"},
      {kLastRecord, "1.5 ! 1\n", "%fat- Premature end of file detected. File <restxt> Line 12"},
  };
  for (const auto& c : kCases) {
    std::string text(kStandardText);
    text.replace(text.find(c.from), std::string(c.from).size(), c.to);
    put("restxt", text);
    remove("vnxres");
    expect_refusal(scmd2("FROM_TEXT RESULTS"),
                   line(c.message) + line("      Utility can not exec. command \"FROM_TEXT "
                                          "RESULTS\". Function SCMD2"));
  }
  EXPECT_EQ(get("vnxres"), sample::results_file_bytes(kStandard).substr(0, 16 + 24 + 45 + 24));
}

TEST_F(ResultsFiles, RealsOfTheTextMayBeWrittenInManyWays) {
  std::string text(kStandardText);
  text.resize(text.find("! Tau"));
  put("restxt", text + "+.5 1d2 -1.5-300 ! a comment\nundef -1E+999 -0\n 5.e307 hallo 2");
  EXPECT_EQ(scmd2("FROM_TEXT RESULTS").status, 1);  // a word without an "E"
  put("restxt", text + "+.5 1d2 -1.5-300 ! a comment\nundef 1E+999 -0\n");
  remove("vnxres");
  EXPECT_EQ(scmd2("FROM_TEXT RESULTS").status, 0);
  ResultsFile file = kStandard;
  file.records = {{0.5, 100, -1.5e-300}, {8.9e307, 0.0, -0.0}};
  EXPECT_EQ(get("vnxres"), sample::results_file_bytes(file));
}

// ---- Joining

TEST_F(ResultsFiles, ARunCutInTwoIsJoinedAgain) {
  const std::vector<double> times = {0, 1, 2, 3, 4, 5};
  const auto part = [&](int first, int end) {
    return sample::results_file_bytes(at_times({times.begin() + first, times.begin() + end}));
  };
  const std::string whole = part(0, 6);
  const struct {
    int end_of_first, start_of_second;
    double mode;
    const char *base, *from;
  } kCases[] = {
      {3, 3, 0, "a: T2B,T2E,3.000000000E+00,T3E", "T2B,T2E from a,T3E from b"},
      {4, 2, 0, "a: T2B,T2E,4.000000000E+00,T3E", "T2B,T2E from a,T3E from b"},
      {3, 3, 1, "c: T2B,T2E,3.000000000E+00,T3E", "T2B,T2E from a,T3E from b"},
      {4, 3, 1, "c: T2B,T2E,4.000000000E+00,T3E", "T2B,T2E from a,T3E from b"},
      {3, 3, 2, "c: T2B,T2E,3.000000000E+00,T3E", "T2B,T2E from a,T3E from b"},
      {5, 3, 2, "c: T2B,2.000000000E+00,T3B,T3E", "T2B,2.000000000E+00 from a T3B,T3E from b"},
      {1, 1, 1, "c: T2B,T2E,1.000000000E+00,T3E", "T2B,T2E from a,T3E from b"},
  };
  for (const auto& c : kCases) {
    put("a", part(0, c.end_of_first));
    put("b", part(c.start_of_second, 6));
    const std::string output = c.mode == 0 ? "a" : "c";
    const Outcome outcome = scmd2(message(output, " = a\t+b"), {c.mode});
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

TEST_F(ResultsFiles, FilesThatDifferAreNotJoined) {
  const ResultsFile base = extended();
  put("a", sample::results_file_bytes(base));
  const auto changed = [&](auto change) {
    ResultsFile file = base;
    change(file);
    return sample::results_file_bytes(file);
  };
  const std::string wrong_link = [&] {
    std::string bytes = sample::results_file_bytes(base);
    bytes[16 + 32 + 56 + 8] = 1;  // behind the catalogue
    return bytes;
  }();
  const struct {
    std::string bytes;
    std::string listing;
  } kCases[] = {
      {changed([](ResultsFile& f) { f.title += "."; }),
       line("%fat- Length of inf. in a <> Length of inf. in b")},
      {changed([](ResultsFile& f) { f.catalogue->rest = 3; }),
       line("%fat- Mandatory parts of a and b are different")},
      {changed([](ResultsFile& f) { f.entries[0].hi1 = 1; }),
       line("%fat- Information in a and b is different")},
      {wrong_link, line("%fat- Information in a and b is different")},
      {changed([](ResultsFile& f) {
         f.title = "Run 2";
         f.entries[0].name = "Y";
       }),
       line("%fat- TITLE  in a is Run 1") + line("      TITLE  in b is Run 2")},
      {changed([](ResultsFile& f) { f.entries[0].name = "Y(1:2)"; }),
       line("%fat- a has X(1:2)") + line("      b has Y(1:2)") +
           line("%fat- SCMD2: files are different. You can convert files to text and see it")},
      {sample::results_file_bytes(base).substr(0, 50),
       line("%fat- Premature End_of_file detected. File b")},
  };
  for (const auto& c : kCases) {
    put("b", c.bytes);
    expect_refusal(scmd2("c=a+b", {1}), c.listing);
    EXPECT_FALSE(exists("c"));
  }
}

TEST_F(ResultsFiles, FailuresOfRecordsAreReportedOnTheConsole) {
  std::vector<double> times(400);
  for (std::size_t k = 0; k < times.size(); ++k) times[k] = static_cast<double>(k);
  const std::string a = sample::results_file_bytes(at_times({0}));
  const std::string b = sample::results_file_bytes(at_times(times));
  put("a", a);
  put("b", b);
  const char* const kFull = " %fat- Write error. 1st  file in SCMD2\n Fortran iostat = 27\n";
  for (const double mode : {0, 1}) {
    const Outcome full = scmd2(mode == 0 ? "a=a+b" : "c=a+b", {mode}, kScalar, 4000);
    EXPECT_EQ(full.console, kFull);
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(get("a"), a);  // as it was before
  }
  const std::vector<double> append{0};
  const Outcome refused = run([&] {  // a file that may only be read; nothing restrains the
                                     // superuser
    if (::chmod("a", 0444) != 0 || ::chmod(".", 0755) != 0) ::_exit(99);
    if (::geteuid() == 0 && ::seteuid(65534) != 0) ::_exit(99);
    run_service_command({"MAIN_procedure      ", kCharacter, "a=a+b", kInteger, kScalar, append});
  });
  EXPECT_EQ(refused.console, " %fat- Write error. 1st  file in SCMD2\n Fortran iostat = 13\n");
  EXPECT_EQ(refused.listing, "");
  remove("c");
  put("b", b.substr(0, b.size() - 1));
  const Outcome cut = scmd2("c=a+b", {1});
  EXPECT_EQ(cut.console, " %fat- Premature End_of_file detected.3rd file in SCMD2\n");
  EXPECT_EQ(cut.listing, "");
  EXPECT_EQ(cut.status, 1);
  EXPECT_FALSE(exists("c"));
}

}  // namespace
}  // namespace zorvik
