// SHOW, KEEP, REPAIR and the text form of the save file.
#include "sample/save_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>

#include "driver/text.h"
#include "sample/binary_text.h"
#include "sample/bytes.h"
#include "unit/service_run.h"

namespace zorvik {
namespace {

using sample::SaveFile;
using sample::SaveRecord;

class SaveFiles : public ServiceRun {};

SaveRecord plain_record(double time, std::int32_t number) {
  SaveRecord record;
  record.variables = 3;
  record.time = time;
  record.largest_step = 0.5;
  record.number = number;
  return record;
}

// One record that has something in every field, one that has as little as possible.
SaveFile sample() {
  SaveFile file;
  file.controls = {7, "A title", {1, 2}, {3}, {4, 5}, {-6}, 2};
  SaveRecord full = plain_record(0.25, 1);
  full.names = {"PUMP"};
  full.pointers = {10};
  full.more_pointers = {11};
  full.lengths = {12};
  full.extents = {13, 14};
  full.first_extent = 1;
  full.value_pointers = {15, 16};
  full.values = {-1.5, 8.9e307};
  full.text = "it's [1]";
  full.constant_extents = {17};
  full.constant_text = "c";
  full.constant_values = {-2.5e300};
  full.events = {{"TRIP", 18}, {"SCRAM", 19}};
  full.event_code = {-20, 21};
  full.rest = {5, {3.5, -0.25}, {22}, {}};
  full.lists = {{"L1", 23}};
  full.list_items = {24, 25, 26};
  full.state = {1.0, -2.0};
  full.output_words = {-27};
  full.output_texts = {"a line of output"};
  full.last_number = 1;
  SaveRecord bare = plain_record(1.25, 2);
  bare.state = {3.0, 4.0};
  file.records = {full, bare};
  return file;
}

const char* const kSampleText =
    "! Ncons,lentit,lefle1,Nels\n7 7 2 2\n"
    "! title\n0_TEXT_0\n[A title]\n1_TEXT_1\n"
    "! j30,j10,j2,(iE(j),j=1,Nels)\n3 3 2 1 2\n"
    "! (lbufer(j),j=1,leflen-1)\n3\n"
    "! (iE1(j),j=1,j10-1)\n4 5\n"
    "! (iexE(j),j=1,j2-1)\n-6\n"
    "! Nvar\n3\n"
    "! TAU,DT_MAX,Nsaves\n2.500000000E-01 5.000000000E-01\n1\n"
    "! j3x,j2x,nx,j3xt,j2x00,(iX(j),j=1,nx),(iX1(j),j=1,nx),(iexX(j),j=j2x000,j2x-1)\n"
    "3 3 1 9 1\n10\n11\n13 14\n"
    "! (lcx(j),j=1,nx),(iXp(j),j=1,j3x-1),(X(j),j=1,j3x-1)\n12\n15 16\n-1.500000000E+00 UNDEF\n"
    "! (Cx(j),j=1,nx)\n0_TEXT_0\n[PUMP                ]\n1_TEXT_1\n"
    "! iXt(1:j3xt-1)\n0_TEXT_0\n[it's [1]]\n1_TEXT_1\n"
    "! nev,j3ce,j2ce,j3cte\n2 2 2 2\n"
    "! (iexCe(j),j=1,j2ce-1) OR 0\n17\n"
    "! iCte(1:j3cte-1) OR SP\n0_TEXT_0\n[c]\n1_TEXT_1\n"
    "! (Cev(j),j=1,j3ce-1) OR 0\n-2.500000000+300\n"
    "! (cnEV(j),j=1,nev) OR SP\n0_TEXT_0\n[TRIP                ]\n[SCRAM               "
    "]\n1_TEXT_1\n"
    "! (iadev(j),j=1,nev) OR 0\n18 19\n"
    "! j0ev\n3\n"
    "! (ievent(j),j=1,j0ev-1) OR 0\n-20 21\n"
    "! j30ev,j10ev,j2ev\n8 7 6\n"
    "! ls1p,lE1,lexE\n5 5 5\n"
    "! (S1(j),j=ls1p + 1,j30ev - 1) OR 0\n3.500000000E+00 -2.500000000E-01\n"
    "! (iE1(j),j=lE1 + 1,j10ev - 1) OR 0\n22\n"
    "! (iexE(j),j=lexE + 1,j2ev - 1) OR 0\n\n"
    "! nnlist,j0li\n1 4\n"
    "! (cnLIS(j),j=1,nnlist)\n0_TEXT_0\n[L1                  ]\n1_TEXT_1\n"
    "! (ialist(j),j=1,j0li-1)\n24 25 26\n"
    "! (iadlis(j),j=1,nnlist)\n23\n"
    "! (S1(j),j=1,j30-1)\n1.000000000E+00 -2.000000000E+00\n"
    "! nWRo,lWRb\n2 1\n"
    "! (iWRo(j),j=1,nWRo-1) OR 0\n-27\n"
    "! (b1(j),j=1,lWRb) OR SP\n0_TEXT_0\n[a line of output                        ]\n1_TEXT_1\n"
    "! Nvar,i2\n3 1\n";

// From "! Nvar" on, of the record without anything.
const char* const kBareText =
    "! Nvar\n3\n"
    "! TAU,DT_MAX,Nsaves\n1.250000000E+00 5.000000000E-01\n2\n"
    "! j3x,j2x,nx,j3xt,j2x00,(iX(j),j=1,nx),(iX1(j),j=1,nx),(iexX(j),j=j2x000,j2x-1)\n"
    "1 0 0 1 0\n\n\n\n"
    "! (lcx(j),j=1,nx),(iXp(j),j=1,j3x-1),(X(j),j=1,j3x-1)\n\n\n\n"
    "! (Cx(j),j=1,nx)\n0_TEXT_0\n1_TEXT_1\n"
    "! iXt(1:j3xt-1)\n0_TEXT_0\n1_TEXT_1\n"
    "! nev,j3ce,j2ce,j3cte\n0 1 1 1\n"
    "! (iexCe(j),j=1,j2ce-1) OR 0\n0\n"
    "! iCte(1:j3cte-1) OR SP\n0_TEXT_0\n[ ]\n1_TEXT_1\n"
    "! (Cev(j),j=1,j3ce-1) OR 0\n0\n"
    "0_TEXT_0\n[ ]\n1_TEXT_1\n0\n"
    "! j0ev\n1\n"
    "! (ievent(j),j=1,j0ev-1) OR 0\n0\n"
    "! j30ev,j10ev,j2ev\n1 1 1\n"
    "! ls1p,lE1,lexE\n0 0 0\n0\n0\n0\n"
    "! nnlist,j0li\n0 1\n"
    "! (S1(j),j=1,j30-1)\n3.000000000E+00 4.000000000E+00\n"
    "! nWRo,lWRb\n1 0\n"
    "! (iWRo(j),j=1,nWRo-1) OR 0\n0\n"
    "! (b1(j),j=1,lWRb) OR SP\n0_TEXT_0\n[ ]\n1_TEXT_1\n"
    "! Nvar,i2\n3 1\n";

std::string line_of(double time, int number) {
  return " Record = " + std::to_string(number) +
         "     Problem time = " + std::string(format_real(time)) + "\n";
}

const char* const kPrematureEnd =
    " %err- Premature End_of_File detected during reading from <vnxsav>\n"
    "       May be <vnxsav> is corrupted or not properly closed\n";

SaveFile many(int records) {
  SaveFile file;
  file.controls = {7, "T", {}, {}, {}, {}, 2};
  for (int k = 1; k <= records; ++k) {
    SaveRecord record = plain_record(k, 10 * k);
    record.state = {1.0 * k, 2.0 * k};
    record.names.assign(static_cast<std::size_t>(k % 3), "N");  // of different lengths
    record.pointers = record.more_pointers = record.lengths =
        sample::Integers(record.names.size(), k);
    file.records.push_back(record);
  }
  return file;
}

std::string kept(const SaveFile& file, std::initializer_list<int> numbers) {
  SaveFile result{file.controls, {}};
  for (const int number : numbers) {
    result.records.push_back(file.records[static_cast<std::size_t>(number) - 1]);
    result.records.back().number = static_cast<std::int32_t>(result.records.size());
  }
  return sample::save_file_bytes(result);
}

TEST_F(SaveFiles, BytesWrittenByHandAreListed) {
  std::string bytes;
  const std::string fault = sample::append_binary_text(
      {"int32 7 2 2 1",   "chars AB",     "int32 2 1 1  9", "int32 5",  // C1 to C4, no C5 and C6
       "int32 3",         "real 1.5 0.5", "int32 4",                    // R1, R2
       "int32 1 0 0 1 0",                                               // R3; R4 to R6 are empty
       "int32 1 1 1 1",   "int32 0",      "byte 20",        "int32 0",  // R7 to R10
       "text 20 SCRAM",   "int32 6",      "int32 1",        "int32 0",  // R11 to R14
       "int32 3 9 5",     "int32 2 0 0",  "int32 0 0 0",  // R15; R16: R17 to R19 are empty
       "int32 0 30000",   "real 2.5",     "int32 1 0",      "int32 0", "byte 20", "int32 3 1"},
      bytes);
  ASSERT_EQ(fault, "");
  put("vnxsav", bytes);
  const Outcome outcome = scmd2("SHOW EVENTS");
  EXPECT_EQ(outcome.listing,
            " Title = AB\n Record = 4     Problem time = 1.500000000E+00\n SCRAM\n");
  EXPECT_EQ(outcome.console, "");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(get("vnxsav"), bytes);
}

TEST_F(SaveFiles, EventNamesArePackedIntoLinesOf78) {
  SaveFile file = many(1);
  for (int k = 11; k <= 30; ++k)
    file.records[0].events.push_back({std::string("EVENT_").append(std::to_string(k)), k});
  put("vnxsav", sample::save_file_bytes(file));
  EXPECT_EQ(scmd2("s  e").listing,
            " Title = T\n" + line_of(1, 10) +
                " EVENT_11 EVENT_12 EVENT_13 EVENT_14 EVENT_15 EVENT_16 EVENT_17 EVENT_18\n"
                " EVENT_19 EVENT_20 EVENT_21 EVENT_22 EVENT_23 EVENT_24 EVENT_25 EVENT_26\n"
                " EVENT_27 EVENT_28 EVENT_29 EVENT_30\n");
}

TEST_F(SaveFiles, CutsAreShownAndRepaired) {
  const SaveFile file = sample();
  const std::string whole = sample::save_file_bytes(file);
  const std::size_t controls = sample::control_structures_bytes(file.controls).size();
  const std::size_t first = controls + sample::save_record_bytes(file.records[0]).size();
  const std::string title = " Title = A title\n";
  const std::string none =
      " %fat- Number of records in <vnxsav> is 0. Only control structures are "
      "present\n       Utility can not execute command SHOW. Function SCMD2\n";
  // Every byte of the last record, every seventh one before it.
  const auto next_size = [&](std::size_t size) {
    return size < first ? std::min(size + 7, first) : size + 1;
  };
  for (std::size_t size = 0; size <= whole.size(); size = next_size(size)) {
    SCOPED_TRACE(size);
    const bool clean = size == controls || size == first || size == whole.size();
    put("vnxsav", whole.substr(0, size));
    const Outcome shown = scmd2("SHOW SAVING");
    EXPECT_EQ(shown.status, clean && size > controls ? 0 : 1);
    if (size < controls) {
      expect_refusal(shown, kPrematureEnd + none);
    } else if (size >= first) {
      const std::string second = size >= first + 24 ? line_of(1.25, 2) : "";
      EXPECT_EQ(shown.listing, title + line_of(0.25, 1) + second + (clean ? "" : kPrematureEnd));
      EXPECT_EQ(shown.console, clean ? "" : " %err- Errors detected. See listing\n");
    }

    const Outcome repaired = scmd2("REPAIR SAVING");
    const std::string cannot = "       Utility can not repair this file\n";
    if (clean) {
      EXPECT_EQ(repaired.listing, " %inf- File <vnxsav> has a valid structure. File not changed\n");
      EXPECT_EQ(repaired.status, 0);
    } else if (size < controls) {
      expect_refusal(repaired, std::string(kPrematureEnd) +
                                   " %fat- Control structures in <vnxsav> are invalid\n" + cannot);
    } else if (size < first) {
      expect_refusal(repaired, std::string(kPrematureEnd) +
                                   " %fat- File <vnxsav> has not valid records "
                                   "except control structures\n" +
                                   cannot);
    } else {
      EXPECT_EQ(repaired.listing, std::string(kPrematureEnd) +
                                      " %inf- File <vnxsav> repaired\n"
                                      " %inf- New list of records in <vnxsav>\n" +
                                      title + line_of(0.25, 1));
      EXPECT_EQ(repaired.console, "");
      EXPECT_EQ(repaired.status, 0);
    }
    EXPECT_EQ(get("vnxsav"), whole.substr(0, size > first && !clean ? first : size));
  }
}

// Each integer of the file in turn holds what no file should hold.
TEST_F(SaveFiles, HostileIntegersComeToADefinedEnd) {
  const SaveFile file = sample();
  const std::string whole = sample::save_file_bytes(file);
  const char* const kCommands[] = {"SHOW EVENTS", "TO_TEXT SAVING", "KEEP"};
  for (std::size_t place = 0; place + 4 <= whole.size(); place += 4) {
    const std::int32_t hostile = place % 3 == 0 ? -1 : place % 3 == 1 ? 2147483647 : -2147483648;
    std::string bytes = whole, replacement;
    sample::append_int32(replacement, hostile);
    put("vnxsav", bytes.replace(place, 4, replacement));
    const char* const command = kCommands[place / 3 % 3];
    const Outcome outcome = scmd2(command, {1});
    EXPECT_TRUE(outcome.status == 0 || outcome.status == 1) << place << command;
    remove("savtxt");
  }
}

TEST_F(SaveFiles, AListTooLongForTheSystemCodeEndsTheRun) {
  SaveFile file = sample();
  file.records[0].list_items.assign(19999, 1);
  put("vnxsav", sample::save_file_bytes(file));
  EXPECT_EQ(scmd2("SHOW SAVING").status, 0);
  file.records[0].list_items.assign(20000, 1);
  const std::string bytes = sample::save_file_bytes(file);
  put("vnxsav", bytes);
  for (const char* command : {"SHOW SAVING", "REPAIR SAVING", "KEEP", "TO_TEXT SAVING"}) {
    const Outcome outcome = scmd2(command, {1});
    EXPECT_EQ(outcome.console, " %dbg- ZRV2:LIST: 5*MXelem>lpres\n");
    EXPECT_EQ(outcome.status, 1);
  }
  EXPECT_EQ(get("vnxsav"), bytes);
}

TEST_F(SaveFiles, KeepLeavesTheChosenRecordsNumberedAnew) {
  const SaveFile file = many(5);
  const std::string whole = sample::save_file_bytes(file);
  const struct {
    std::vector<double> numbers;
    Shape shape;
    std::initializer_list<int> left;
  } kCases[] = {
      {{2}, kScalar, {2}},
      {{2, 4}, kRange, {2, 3, 4}},
      {{1, 5}, kRange, {1, 2, 3, 4, 5}},
      {{4, 1, 4, 2}, kArray, {1, 2, 4}},
      {{5}, kScalar, {5}},
      {{1, 2}, kRange, {1, 2}},
  };
  for (const auto& c : kCases) {
    put("vnxsav", whole);
    const Outcome outcome = scmd2("keep", c.numbers, c.shape);
    std::string listing = " %inf- New list of records in <vnxsav>\n Title = T\n";
    int number = 0;
    for (const int old : c.left) listing += line_of(old, ++number);
    EXPECT_EQ(outcome.listing, listing);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(get("vnxsav"), kept(file, c.left));
  }
  SaveFile large = many(3);  // arrays longer than any buffer
  large.controls.state_values = 20001;
  for (SaveRecord& record : large.records) record.state.assign(20001, record.time);
  put("vnxsav", sample::save_file_bytes(large));
  EXPECT_EQ(scmd2("k", {2, 3}, kRange).status, 0);
  EXPECT_EQ(get("vnxsav"), kept(large, {2, 3}));
}

TEST_F(SaveFiles, KeepThatIsRefusedChangesNothing) {
  const std::string whole = sample::save_file_bytes(many(3));
  const std::string controls = sample::control_structures_bytes(many(0).controls);
  const std::string last = "       Utility can not execute command KEEP. Function SCMD2\n";
  const struct {
    std::string bytes;
    double number;
    std::string listing;
  } kCases[] = {
      {whole, 4,
       " %fat- Number of records in <vnxsav> NR = 3\n"
       "       2nd argument of SCMD2 contains values > NR\n"},
      {whole.substr(0, whole.size() - 1), 1,
       kPrematureEnd + (" %fat- I/O error detected during KEEP operation. File <vnxsav>\n" + last)},
      {controls, 1,
       " %fat- Number of records in <vnxsav> is 0. Only control structures are present\n" + last},
      {controls.substr(0, 3), 1,
       kPrematureEnd + (" %fat- Control structures in <vnxsav> are invalid\n" + last)},
  };
  for (const auto& c : kCases) {
    put("vnxsav", c.bytes);
    expect_refusal(scmd2("KEEP", {c.number}), c.listing);
    EXPECT_EQ(get("vnxsav"), c.bytes);
  }
}

TEST_F(SaveFiles, AFullDiskLeavesTheSaveFileAsItIs) {
  SaveFile file = many(3);
  file.controls.state_values = 1000;
  for (SaveRecord& record : file.records) record.state.assign(1000, 1.5);
  const std::string whole = sample::save_file_bytes(file);
  put("vnxsav", whole);
  expect_refusal(scmd2("KEEP", {1, 2}, kRange, 9000),
                 " %fat- Write error during KEEP operation. Scratch file\n"
                 " Fortran iostat = 27\n");
  EXPECT_EQ(get("vnxsav"), whole);
  expect_refusal(scmd2("TO_TEXT SAVING", {1}, kScalar, 9000),
                 " %err- Write error. File <savtxt>\n Fortran iostat = 27\n"
                 "       Utility can not execute command \"TO_TEXT SAVING\". Function SCMD2\n");
}

TEST_F(SaveFiles, ARecordBecomesTextAndAFileAgain) {
  const SaveFile file = sample();
  const std::string text(kSampleText);
  const std::string controls_text = text.substr(0, text.find("! Nvar\n"));
  for (std::size_t k : {0u, 1u}) {
    put("vnxsav", sample::save_file_bytes(file));
    const Outcome written = scmd2("TO_TEXT SAVING", {static_cast<double>(k + 1)});
    EXPECT_EQ(written.listing, "");
    EXPECT_EQ(written.status, 0);
    EXPECT_EQ(get("savtxt"), k == 0 ? text : controls_text + kBareText);
    remove("vnxsav");
    EXPECT_EQ(scmd2("FROM_TEXT SAVING").status, 0);
    EXPECT_EQ(get("vnxsav"), sample::save_file_bytes({file.controls, {file.records[k]}}));
    remove("savtxt");
  }
  put("vnxsav", sample::save_file_bytes(file));
  expect_refusal(scmd2("TO_TEXT SAVING", {3}),
                 " %fat- Number of records in <vnxsav> NR = 2\n"
                 "       2nd argument of SCMD2 > NR\n");
  EXPECT_FALSE(exists("savtxt"));
}

TEST_F(SaveFiles, CodesStandHundredToALineAndLongGroupsInSlices) {
  SaveFile file = sample();
  SaveRecord& record = file.records[0];
  record.text = std::string(100, 'a') + std::string(100, 'b') + std::string(50, 'c');
  record.event_code.assign(20001, 7);
  put("vnxsav", sample::save_file_bytes(file));
  ASSERT_EQ(scmd2("TO_TEXT SAVING", {1}).status, 0);
  const std::string text = get("savtxt");
  EXPECT_NE(text.find("0_TEXT_0\n[" + std::string(100, 'a') + "]\n[" + std::string(100, 'b') +
                      "]\n[" + std::string(50, 'c') + "]\n1_TEXT_1\n"),
            std::string::npos);
  // 39 numbers a line; 20000 = 512 * 39 + 32, and the last one is a group of its own.
  EXPECT_NE(text.find("\n" + std::string("7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 ") +
                      "7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7\n7\n! j30ev"),
            std::string::npos);
  remove("vnxsav");
  EXPECT_EQ(scmd2("FROM_TEXT SAVING").status, 0);
  EXPECT_EQ(get("vnxsav"), sample::save_file_bytes({file.controls, {record}}));
}

TEST_F(SaveFiles, AWrongTextIsRefusedWithItsLine) {
  const std::string last = "    Utility can not execute command FROM_TEXT SAVING Function SCMD2\n";
  const struct {
    const char *from, *to, *message;
  } kCases[] = {
      {"\n7 7 2 2\n", "\n7 7 2 -2\n",
       "%err- Syntax error in integer constant \"-2\" File <savtxt> Line 2"},
      {"[A title]", "[A title] ]", "%fat- File <savtxt>. Invalid string [A title] ] Line 5"},
      {"0_TEXT_0\n[A title]", "[A title]",
       "%err- Invalid \"[\" or \"]\" at the beginning of "
       "variable File <savtxt> Line 4"},
      {"0_TEXT_0\n[A title]", "A_title", "%fat- File <savtxt>. String 0_TEXT_0 expected Line 4"},
      {"2.500000000E-01", "-2.500000000E-01",
       "%err- Syntax error in real constant \"-2.500000000E-01\" File <savtxt> Line 18"},
      {"2.500000000E-01", "1E+307",
       "%err- Floating overflow in real constant \"1E+307\" File <savtxt> Line 18"},
      {"2.500000000E-01", "1.5X-3",
       "%err- Syntax error in real constant \"1.5XE-3\" File <savtxt> Line 18"},
      {"13 14\n", "13 -14\n",
       "%err- Syntax error in integer constant \"-14\" File <savtxt> Line 24"},
      {"[PUMP                ]", "[]", "%fat- File <savtxt>. Invalid string [] Line 31"},
      {"[it's [1]]", "[it's [1]", "%fat- File <savtxt>. Invalid string [it's [1] Line 35"},
      {"! Nvar,i2\n3 1\n", "4 1\n", "%fat- File <savtxt>. Invalid value 3 Line 88"},
      {"! Nvar,i2\n3 1\n", "3 1\n2\n", "%fat- File <savtxt>. Extra information detected Line 89"},
      {"! Nvar,i2\n3 1\n", "3 ! no more",
       "%fat- Premature end of file detected. File <savtxt> "
       "Line 88"},
  };
  for (const auto& c : kCases) {
    std::string text(kSampleText);
    text.replace(text.find(c.from), std::string(c.from).size(), c.to);
    put("savtxt", text);
    remove("vnxsav");
    expect_refusal(scmd2("FROM_TEXT SAVING"),
                   std::string(" ").append(c.message).append("\n").append(last));
  }
}

TEST_F(SaveFiles, AFailedConversionLeavesWholeGroups) {
  const SaveFile file = sample();
  std::string text(kSampleText);
  put("savtxt", text.replace(text.find("15 16"), 5, "15 X"));  // in R4
  scmd2("FROM_TEXT SAVING");
  // C1 to C6 and R1 to R3: 4 + 20 + 20 + 4 + 4 + 8 bytes of the record.
  EXPECT_EQ(get("vnxsav"), sample::save_file_bytes(file).substr(
                               0, sample::control_structures_bytes(file.controls).size() + 60));
}

}  // namespace
}  // namespace zorvik
