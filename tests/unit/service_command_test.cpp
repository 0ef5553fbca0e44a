// Arguments of SCMD2: what is refused, in which order, before any file is touched.
#include "service/service_command.h"

#include <gtest/gtest.h>

#include "unit/service_run.h"

namespace zorvik {
namespace {

class ServiceCommand : public ServiceRun {};

TEST_F(ServiceCommand, ArgumentsAreCheckedInTheirOrder) {
  const std::string blanks(81, ' ');
  const struct {
    const char* procedure;
    BaseType command_type;
    std::string command;
    BaseType number_type;
    const char* message;
  } kCases[] = {
      {"BEGIN-END block", kInteger, "", kReal,
       "%fat- Function SCMD2 can be called from MAIN procedure only"},
      {"MAIN_procedure", kInteger, "", kReal, "%fat- 2nd argument of SCMD2 is not integer"},
      {"MAIN_procedure", kInteger, "", kInteger, "%fat- 1st argument of SCMD2 is not character"},
      {"MAIN_procedure", kCharacter, blanks, kInteger,
       "%fat- 1st argument of SCMD2 is longer than 80 characters"},
      {"MAIN_procedure", kCharacter, blanks.substr(1), kInteger,
       "%fat- 1st argument of SCMD2 consists of spaces only"},
  };
  for (const auto& c : kCases) {
    const double number = 1;
    const ServiceArguments arguments{c.procedure,   c.command_type, c.command,
                                     c.number_type, kScalar,        {&number, 1}};
    expect_refusal(run([&] { run_service_command(arguments); }),
                   std::string(" ").append(c.message).append("\n"));
  }
}

TEST_F(ServiceCommand, CommandsAndNumbersThatMeanNothingAreRefused) {
  const char* const kOneWord = "%fat- Invalid 1st argument of SCMD2. KEEP command expected";
  const char* const kTwoWords =
      "%fat- Invalid 1st argument of SCMD2. SHOW or REPAIR or\n"
      "       TO_TEXT or FROM_TEXT command expected";
  const char* const kTooLong = "%fat- 2nd argument (array) of SCMD2 is too long";
  const char* const kNotPositive = "%fat- Invalid 2nd argument of SCMD2. Values <= 0 detected.";
  const std::vector<double> too_many(10001, 1.0);
  const struct {
    const char* command;
    std::vector<double> numbers;
    Shape shape;
    const char* message;
  } kCases[] = {
      {"SHOW", {1}, kScalar, kOneWord},
      {"KEEPS", {1}, kScalar, kOneWord},
      {"SHOWING SAVING", {1}, kScalar, kTwoWords},
      {"KEEP SAVING", {1}, kScalar, kTwoWords},
      {"SHOW\tLIST S", {1}, kScalar, kTwoWords},  // the first blank divides it
      {" \tshow lists ", {1}, kScalar, "%fat- Invalid argument of SHOW command in SCMD2"},
      {"R X", {1}, kScalar, "%fat- Invalid argument of REPAIR command in SCMD2"},
      {"T RESULTS now", {1}, kScalar, "%fat- Invalid argument of TO_TEXT command in SCMD2"},
      {"F LIST", {1}, kScalar, "%fat- Invalid argument of FROM_TEXT command in SCMD2"},
      {"TO_TEXT S", {1, 2}, kRange, "%fat- Invalid 2nd argument of SCMD2. Integer scalar expected"},
      {"TO_TEXT S", {0}, kScalar, "%fat- 2nd argument of SCMD2 <= 0"},
      {"K", {1, 10001}, kRange, kTooLong},
      {"K", too_many, kArray, kTooLong},
      {"K", {3, 0, 1}, kArray, kNotPositive},
      {"K", {-2147483649.0}, kScalar, kNotPositive},
  };
  for (const auto& c : kCases) {
    expect_refusal(scmd2(c.command, c.numbers, c.shape),
                   std::string(" ").append(c.message).append("\n"));
  }
}

TEST_F(ServiceCommand, ShortenedWordsMeanTheFirstKeyword) {
  const struct {
    const char *command, *file;
  } kCases[] = {{"S S", "vnxsav"},
                {"sh\tev", "vnxsav"},
                {"S L", "vnxres"},
                {"RE R", "vnxres"},
                {"Repair sav", "vnxsav"},
                {"t r", "vnxres"},
                {"TO_TEXT SAVING", "vnxsav"},
                {"from_t s", "savtxt"},
                {"k", "vnxsav"}};
  for (const auto& c : kCases) {  // none of the files is there
    const Outcome outcome = scmd2(c.command, {1});
    EXPECT_EQ(
        outcome.console,
        std::string(" %fat- Open error. File ").append(c.file).append("\n Fortran iostat = 2\n"))
        << c.command;
    EXPECT_EQ(outcome.status, 1);
  }
}

}  // namespace
}  // namespace zorvik
