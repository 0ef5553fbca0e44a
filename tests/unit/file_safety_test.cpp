// What failures and odd files may not do to the user's files.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include "driver/interruption.h"
#include "driver/text.h"
#include "sample/results_file.h"
#include "sample/save_file.h"
#include "unit/service_run.h"

namespace zorvik {
namespace {

class FileSafety : public ServiceRun {};

TEST_F(FileSafety, WhatIsNoRegularFileIsRefusedAtOnce) {
  put("a", "");
  for (const std::string row :
       {"vnxres: SHOW LIST", "vnxres: TO_TEXT RESULTS", "vnxres: REPAIR RESULTS",
        "vnxsav: SHOW SAVING", "vnxsav: TO_TEXT SAVING", "vnxsav: REPAIR SAVING", "vnxsav: KEEP",
        "restxt: FROM_TEXT RESULTS", "savtxt: FROM_TEXT SAVING", "b: c=a+b", "b: b=b+a"}) {
    SCOPED_TRACE(row);
    const std::string name = row.substr(0, row.find(':')), text = row.substr(name.size() + 2);
    for (const bool folder : {false, true}) {
      const RunOutcome outcome = run([&] {
        ::alarm(20);  // nothing may hang
        folder ? ::mkdir(name.c_str(), 0700) : ::mkfifo(name.c_str(), 0600);
        ServiceRun::command(text, {text[0] == 'b' ? 0.0 : 1.0});
      });
      EXPECT_EQ(outcome.console, message(" %fat- Open error. File ", name,
                                         "\n Fortran iostat = ", folder ? EISDIR : EINVAL, '\n'));
      EXPECT_EQ(outcome.status, 1);
      remove(name);
    }
  }
}

TEST_F(FileSafety, ANewFileIsWholeOrAbsent) {
  const auto write = [](std::int64_t kept, bool is_killed, bool is_abandoned) {
    File file;
    if (file.open_unnamed("f") != 0) ::_exit(EEXIST);
    file.write("whole", 5);
    file.flush();
    file.keep_on_failure(kept);
    if (is_killed) ::raise(SIGKILL);
    if ((is_abandoned ? file.abandon() : file.close()) != 0) ::_exit(1);
  };
  const struct {
    std::int64_t kept;
    bool is_killed, is_abandoned;
    const char* left;  // nullptr: no file
  } kCases[] = {{File::kNoFile, false, false, "whole"},
                {File::kAll, false, true, "whole"},
                {2, false, true, "wh"},
                {File::kNoFile, false, true, nullptr},
                {File::kAll, true, false, nullptr}};
  const mode_t before = ::umask(027);
  for (const auto& c : kCases) {
    const RunOutcome outcome = run([&] { write(c.kept, c.is_killed, c.is_abandoned); });
    EXPECT_EQ(outcome.status, c.is_killed ? -SIGKILL : 0);
    EXPECT_EQ(exists("f"), c.left != nullptr);
    if (c.left == nullptr) continue;
    for (const char* name : {"f", "zrvlis"}) {
      EXPECT_EQ(std::filesystem::status(folder() + name).permissions(),
                std::filesystem::perms(0640));
    }
    EXPECT_EQ(get("f"), c.left);
    EXPECT_EQ(run([&] { write(0, false, false); }).status, EEXIST);
    remove("f");
  }
  ::umask(before);
}

// The signal comes when the OUTPUT's file is there, which is while the loop runs.
TEST_F(FileSafety, ASignalEndsTheRunInOrder) {
  put("zrvdat",
      "L: PRINT 'ON THE CONSOLE'; OUT T;\n"
      "DO I = 1, 1000000000; X = 1.0*I; ENDDO END\n"
      "OUTPUT T; WRITE1 'IN THE FILE'; END\n");
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGXCPU}) {
    const RunOutcome outcome = run([signal] {
      heed_signals();
      if (::fork() == 0) {
        while (::access("t", F_OK) != 0 && ::getppid() != 1) ::usleep(1000);
        ::kill(::getppid(), signal);
        ::_exit(0);
      }
      run_program();
    });
    EXPECT_EQ(outcome.status, -signal);
    EXPECT_EQ(outcome.console, " ON THE CONSOLE\n");
    EXPECT_EQ(get("t"), "IN THE FILE\n");
    EXPECT_NE(outcome.listing.find("Used   space:"), std::string::npos);
    remove("t");
  }
}

TEST_F(FileSafety, EveryCommandLooksAtTheSignals) {
  const sample::ResultsFile results{2, {}, {{"X", 1, 1, 1, 1, 1001}}, "T", {{1, -1}, {2, -2}}};
  const std::string vnxres = sample::results_file_bytes(results);
  const sample::SaveFile saving{{7, "T", {}, {}, {}, {}, 0}, {{}, {}}};
  const std::string vnxsav = sample::save_file_bytes(saving);
  put("a", vnxres);
  put("b", sample::results_file_bytes({2, {}, results.entries, "T", {{3, -3}}}));
  put("vnxsav", vnxsav.substr(0, vnxsav.size() - 1));
  const auto interrupted = [&](const char* text, double number) {
    return run([&] {
      heed_signals();
      ::raise(SIGTERM);
      command(text, {number});
    });
  };
  const struct {
    const char* command;
    double number;
    const char* name;
    std::string left;  // of the file; empty: none
  } kCases[] = {{"KEEP", 1, "vnxsav", vnxsav.substr(0, vnxsav.size() - 1)},
                {"REPAIR SAVING", 1, "vnxsav", vnxsav.substr(0, vnxsav.size() - 1)},
                {"TO_TEXT SAVING", 1, "savtxt", ""},
                {"c=a+b", 1, "c", ""},
                {"a=a+b", 0, "a", vnxres}};
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.command);
    EXPECT_EQ(interrupted(c.command, c.number).status, -SIGTERM);
    EXPECT_EQ(get(c.name), c.left);
  }
  put("vnxres", vnxres);
  EXPECT_EQ(interrupted("TO_TEXT RESULTS", 0).status, -SIGTERM);
  remove("restxt");
  scmd2("TO_TEXT RESULTS");
  remove("vnxres");
  EXPECT_EQ(interrupted("FROM_TEXT RESULTS", 0).status, -SIGTERM);
  EXPECT_LT(get("vnxres").size(), vnxres.size());
}

// Records of more than a block and of a few bytes: the system copies the long ones.
TEST_F(FileSafety, KeepReplacesTheSaveFileOrRewritesItInPlace) {
  sample::SaveFile file{{7, "T", {}, {}, {}, {}, 10000}, {}};
  for (int k = 1; k <= 5; ++k) {
    sample::SaveRecord record;
    record.time = k;
    record.number = 10 * k;
    record.state.assign(10000, k);
    if (k == 3) record.output_texts.assign(150000, "six million bytes");
    file.records.push_back(record);
  }
  const std::string whole = sample::save_file_bytes(file);
  const auto kept = [&](std::initializer_list<std::size_t> numbers) {
    sample::SaveFile left{file.controls, {}};
    for (const std::size_t number : numbers) {
      left.records.push_back(file.records[number - 1]);
      left.records.back().number = static_cast<std::int32_t>(left.records.size());
    }
    return sample::save_file_bytes(left);
  };
  const auto inode = [&](const char* name) {
    struct stat info {};
    EXPECT_EQ(::stat((folder() + name).c_str(), &info), 0);
    return std::pair(info.st_ino, info.st_mode & 07777);
  };
  // Another user may read: entries of tag, rights and user, little-endian. Empty where the file
  // system knows no such lists.
  constexpr char kName[] = "system.posix_acl_access";
  constexpr char kList[] =
      "\2\0\0\0\1\0\6\0\xff\xff\xff\xff\2\0\4\0\xe8\3\0\0\4\0\0\0\xff\xff\xff\xff"
      "\x10\0\4\0\xff\xff\xff\xff\x20\0\0\0\xff\xff\xff\xff";
  const auto access_list = [&] {
    char list[sizeof kList] = {};
    const ssize_t bytes = ::getxattr((folder() + "stock").c_str(), kName, list, sizeof list);
    return std::string(list, bytes > 0 ? static_cast<std::size_t>(bytes) : 0);
  };
  for (const bool linked : {false, true}) {
    put("stock", whole);
    ::setxattr((folder() + "stock").c_str(), kName, kList, sizeof kList - 1, 0);
    const std::string rights = access_list();
    run([&] {
      ::chmod("stock", 0640);
      if (linked) ::link("stock", "second");
      ::symlink("stock", "vnxsav");
    });
    const auto before = inode("stock");
    EXPECT_EQ(scmd2("KEEP", {1, 2, 3, 5}, kArray).status, 0);
    EXPECT_EQ(get("vnxsav"), kept({1, 2, 3, 5}));
    EXPECT_EQ(inode("stock") == before, linked);  // later the old number may be given anew
    EXPECT_EQ(scmd2("KEEP", {3}).status, 0);
    EXPECT_EQ(get("stock"), kept({3}));
    EXPECT_EQ(inode("stock").second, 0640u);
    EXPECT_EQ(access_list(), rights);
    EXPECT_EQ(get("second"), linked ? kept({3}) : "");
    for (const char* name : {"stock", "second", "vnxsav"}) remove(name);
  }
}

TEST_F(FileSafety, RepairKeepsACopyOfMoreThanOneRecord) {
  const sample::SaveFile file{{7, "T", {}, {}, {}, {}, 0}, {{}, {}, {}, {}}};
  const std::string whole = sample::save_file_bytes(file);
  const std::size_t record = sample::save_record_bytes(file.records[0]).size();
  const std::size_t second = whole.size() - 3 * record;
  put("vnxsav", whole.substr(0, second + record - 1));  // a torn write
  EXPECT_EQ(scmd2("REPAIR SAVING").status, 0);
  EXPECT_EQ(get("vnxsav"), whole.substr(0, second));
  EXPECT_FALSE(exists("vnxsav.cut"));

  std::string damaged = whole;
  damaged.replace(second + 32, 4, "\xff\xff\xff\x7f");  // nx, with good records behind
  put("vnxsav", damaged);
  const RunOutcome full = scmd2("REPAIR SAVING", {0}, kScalar, 2 * record);
  EXPECT_NE(full.listing.find(" %fat- ENDFILE error detected during REPAIR operation. File "
                              "<vnxsav>\n       Utility can not repair this file\n"
                              " Fortran iostat = 27\n"),
            std::string::npos);
  EXPECT_EQ(get("vnxsav"), damaged);
  EXPECT_FALSE(exists("vnxsav.cut"));
  for (const char* name : {"vnxsav.cut", "vnxsav.cut2", "vnxsav.cut3"}) {
    put("vnxsav", damaged);
    EXPECT_EQ(scmd2("REPAIR SAVING").status, 0);
    EXPECT_EQ(get("vnxsav"), whole.substr(0, second));
    EXPECT_EQ(get(name), damaged.substr(second));
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
