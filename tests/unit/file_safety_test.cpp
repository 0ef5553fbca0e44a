// What failures and odd files may not do to the user's files.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "driver/text.h"
#include "unit/service_run.h"

namespace zorvik {
namespace {

class FileSafety : public ServiceRun {};

TEST_F(FileSafety, WhatIsNoRegularFileIsRefusedAtOnce) {
  put("a", "");
  const struct {
    const char *name, *command;
  } kCases[] = {
      {"vnxres", "SHOW LIST"},
      {"vnxres", "TO_TEXT RESULTS"},
      {"vnxres", "REPAIR RESULTS"},
      {"vnxsav", "SHOW SAVING"},
      {"vnxsav", "TO_TEXT SAVING"},
      {"vnxsav", "REPAIR SAVING"},
      {"restxt", "FROM_TEXT RESULTS"},
      {"savtxt", "FROM_TEXT SAVING"},
      {"b", "c=a+b"},
      {"b", "b=b+a"},
      {"vnxsav", "KEEP"},
  };
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.command);
    for (const bool folder : {false, true}) {
      const Outcome outcome = run([&] {
        ::alarm(20);  // nothing may hang
        folder ? ::mkdir(c.name, 0700) : ::mkfifo(c.name, 0600);
        run_service_command({"MAIN_procedure      ", kCharacter, c.command, kInteger, kScalar,
                             std::vector<double>{c.command[0] == 'b' ? 0.0 : 1.0}});
      });
      EXPECT_EQ(outcome.console, message(" %fat- Open error. File ", c.name,
                                         "\n Fortran iostat = ", folder ? EISDIR : EINVAL, '\n'));
      EXPECT_EQ(outcome.status, 1);
      remove(c.name);
    }
  }
}

TEST_F(FileSafety, ControlCharactersOfTextsDoNotReachATerminal) {
  const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
  ASSERT_EQ(::grantpt(terminal) | ::unlockpt(terminal), 0);
  run([&] {
    ::dup2(::open(::ptsname(terminal), O_RDWR | O_NOCTTY), STDOUT_FILENO);
    issue_message(-listing_unit, "T\x1b[2J\tit\x7f");
  });
  char shown[100] = {};
  EXPECT_GT(::read(terminal, shown, sizeof shown - 1), 0);
  EXPECT_STREQ(shown, " T.[2J\tit.\r\n");
  EXPECT_EQ(get("zrvlis"), " T\x1b[2J\tit\x7f\n");
  ::close(terminal);
}

}  // namespace
}  // namespace zorvik
