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

std::string bytes_of(const std::vector<std::string>& lines) {
  std::string bytes;
  EXPECT_EQ(sample::append_binary_text(lines, bytes), "");
  return bytes;
}

// One record that has something in every field, and one that has as little as possible.
const std::string kControls =
    bytes_of({"int32 7 7 2 2", "chars A title", "int32 3 3 2  1 2  3  4 5  -6"});
const std::string kFull = bytes_of(
    {"int32 3", "real 0.25 0.5", "int32 1  3 3 1 9 1  10  11  13 14  12  15 16",
     "real -1.5 undefined", "text 20 PUMP", "int32 105 116 39 115 32 91 49 93",
     "int32 2 2 2 2  17  99", "real -2.5e300", "text 20 TRIP", "text 20 SCRAM",
     "int32 18 19  3  -20 21  8 7 6  5 5 5", "real 3.5 -0.25", "int32 22  1 4", "text 20 L1",
     "int32 24 25 26  23", "real 1 -2", "int32 2 1  -27", "text 40 a line of output", "int32 3 1"});
const std::string kBare =
    bytes_of({"int32 3", "real 1.25 0.5", "int32 2  1 0 0 1 0  0 1 1 1  0", "byte 20", "int32 0",
              "byte 20", "int32 0  1  0  1 1 1  0 0 0  0 0 0  0 1", "real 3 4", "int32 1 0  0",
              "byte 20", "int32 3 1"});

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

SaveFile many(int records) {
  SaveFile file{{7, "T", {}, {}, {}, {}, 2}, {}};
  for (int k = 1; k <= records; ++k) {
    SaveRecord record;
    record.time = k;
    record.number = 10 * k;
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

TEST_F(SaveFiles, EventNamesArePackedIntoLinesOf78) {
  SaveFile file = many(1);
  for (int k = 11; k <= 20; ++k)
    file.records[0].events.push_back({std::string("EVENT_").append(std::to_string(k)), k});
  put("vnxsav", sample::save_file_bytes(file));
  EXPECT_EQ(scmd2("s  e").listing,
            " Title = T\n" + line_of(1, 10) +
                " EVENT_11 EVENT_12 EVENT_13 EVENT_14 EVENT_15 EVENT_16 EVENT_17 EVENT_18\n"
                " EVENT_19 EVENT_20\n");
}

TEST_F(SaveFiles, CutsAreShownAndRepaired) {
  const std::string whole = kControls + kFull + kBare;
  const std::size_t controls = kControls.size(), first = controls + kFull.size();
  const std::string title = " Title = A title\n", one = line_of(0.25, 1), two = line_of(1.25, 2);
  const std::string end =
      " %err- Premature End_of_File detected during reading from <vnxsav>\n"
      "       May be <vnxsav> is corrupted or not properly closed\n";
  const std::string none =
      " %fat- Number of records in <vnxsav> is 0. Only control structures are present\n"
      "       Utility can not execute command SHOW. Function SCMD2\n";
  const std::string cannot = "       Utility can not repair this file\n";
  const std::string invalid = " %fat- Control structures in <vnxsav> are invalid\n" + cannot;
  const std::string empty =
      " %fat- File <vnxsav> has not valid records except control structures\n" + cannot;
  const std::string valid = " %inf- File <vnxsav> has a valid structure. File not changed\n";
  const std::string repaired =
      " %inf- File <vnxsav> repaired\n %inf- New list of records in <vnxsav>\n" + title + one;
  const struct {
    std::size_t size;
    std::string shown, repaired;
  } kCases[] = {{0, end + none, end + invalid},
                {controls - 1, end + none, end + invalid},
                {controls, title + none, valid},
                {first - 1, title + one + end + none, end + empty},
                {first, title + one, valid},
                {first + 1, title + one + end, end + repaired},
                {first + 23, title + one + end, end + repaired},
                {first + 24, title + one + two + end, end + repaired},
                {whole.size() - 1, title + one + two + end, end + repaired},
                {whole.size(), title + one + two, valid}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.size);
    put("vnxsav", whole.substr(0, c.size));
    const RunOutcome shown = scmd2("SHOW SAVING");
    const bool good = c.shown.find('%') == std::string::npos;
    EXPECT_EQ(shown.listing, c.shown);
    EXPECT_EQ(shown.status, good ? 0 : 1);
    EXPECT_EQ(shown.console, good                      ? ""
                             : c.shown.ends_with(none) ? kErrorsNotice
                                                       : " %err- Errors detected. See listing\n");
    const RunOutcome repair = scmd2("REPAIR SAVING");
    EXPECT_EQ(repair.listing, c.repaired);
    EXPECT_EQ(repair.status, c.repaired.find(cannot) == std::string::npos ? 0 : 1);
    EXPECT_EQ(get("vnxsav"), whole.substr(0, c.repaired == end + repaired ? first : c.size));
  }
}

TEST_F(SaveFiles, AListTooLongForTheSystemCodeEndsTheRun) {
  SaveFile file = many(1);
  file.records[0].lists = {{"L1", 23}};
  file.records[0].list_items.assign(19999, 1);
  put("vnxsav", sample::save_file_bytes(file));
  EXPECT_EQ(scmd2("SHOW SAVING").status, 0);
  file.records[0].list_items.assign(20000, 1);
  const std::string bytes = sample::save_file_bytes(file);
  put("vnxsav", bytes);
  for (const char* command : {"SHOW SAVING", "REPAIR SAVING", "KEEP", "TO_TEXT SAVING"}) {
    const RunOutcome outcome = scmd2(command, {1});
    EXPECT_EQ(outcome.console, " %dbg- ZRV2:LIST: 5*MXelem>lpres\n");
    EXPECT_EQ(outcome.status, 1);
  }
  EXPECT_EQ(get("vnxsav"), bytes);
}

TEST_F(SaveFiles, KeepLeavesTheChosenRecordsNumberedAnew) {
  const SaveFile file = many(900);  // several buffers long
  const std::string whole = sample::save_file_bytes(file);
  const struct {
    std::vector<double> numbers;
    Shape shape;
    std::initializer_list<int> left;
  } kCases[] = {
      {{2}, kScalar, {2}},
      {{2, 4}, kRange, {2, 3, 4}},
      {{1, 3}, kRange, {1, 2, 3}},
      {{4, 1, 4, 2}, kArray, {1, 2, 4}},
      {{898, 900}, kRange, {898, 899, 900}},
  };
  for (const auto& c : kCases) {
    put("vnxsav", whole);
    const RunOutcome outcome = scmd2("keep", c.numbers, c.shape);
    std::string listing = " %inf- New list of records in <vnxsav>\n Title = T\n";
    int number = 0;
    for (const int old : c.left) listing += line_of(old, ++number);
    EXPECT_EQ(outcome.listing, listing);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(get("vnxsav"), kept(file, c.left));
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
  const std::string text(kSampleText), whole = kControls + kFull + kBare;
  for (const bool bare : {false, true}) {
    put("vnxsav", whole);
    EXPECT_EQ(scmd2("TO_TEXT SAVING", {bare ? 2.0 : 1.0}).status, 0);
    EXPECT_EQ(get("savtxt"), bare ? text.substr(0, text.find("! Nvar\n")) + kBareText : text);
    remove("vnxsav");
    EXPECT_EQ(scmd2("FROM_TEXT SAVING").status, 0);
    EXPECT_EQ(get("vnxsav"), kControls + (bare ? kBare : kFull));
    remove("savtxt");
  }
  put("vnxsav", whole);
  expect_refusal(scmd2("TO_TEXT SAVING", {3}),
                 " %fat- Number of records in <vnxsav> NR = 2\n"
                 "       2nd argument of SCMD2 > NR\n");
  remove("vnxsav");
  put("savtxt", std::string(text).replace(text.find("15 16"), 5, "15 X"));  // in R4
  scmd2("FROM_TEXT SAVING");  // whole groups are left: 60 bytes of the record
  EXPECT_EQ(get("vnxsav"), kControls + kFull.substr(0, 60));
}

TEST_F(SaveFiles, CodesStandHundredToALineAndLongGroupsInSlices) {
  SaveFile file = many(1);
  SaveRecord& record = file.records[0];
  record.number = 1;
  record.text = std::string(100, 'a') + std::string(100, 'b') + std::string(50, 'c');
  record.event_code.assign(20001, 7);
  put("vnxsav", sample::save_file_bytes(file));
  ASSERT_EQ(scmd2("TO_TEXT SAVING", {1}).status, 0);
  const std::string text = get("savtxt");
  EXPECT_NE(text.find("0_TEXT_0\n[" + std::string(100, 'a') + "]\n[" + std::string(100, 'b') +
                      "]\n[" + std::string(50, 'c') + "]\n1_TEXT_1\n"),
            std::string::npos);
  // 39 numbers a line; 20000 = 512 * 39 + 32, and the last one is a group of its own.
  EXPECT_NE(text.find("\n7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 "
                      "7 7 7 7 7 7 7 7 7 7 7 7 7 7 7 7\n7\n! j30ev"),
            std::string::npos);
  remove("vnxsav");
  EXPECT_EQ(scmd2("FROM_TEXT SAVING").status, 0);
  EXPECT_EQ(get("vnxsav"), sample::save_file_bytes({file.controls, {record}}));

  remove("vnxsav");  // a line that is shorter goes on with blanks
  const std::size_t codes = text.find("[ccc");
  put("savtxt", text.substr(0, codes) + "[cc" + text.substr(codes + 52));
  EXPECT_EQ(scmd2("FROM_TEXT SAVING").status, 0);
  record.text.replace(202, 48, 48, ' ');
  EXPECT_EQ(get("vnxsav"), sample::save_file_bytes({file.controls, {record}}));
}

}  // namespace
}  // namespace zorvik
