// measure ROUNDS [fresh=FILE | copy=FROM:TO]... COMMAND...: runs the commands in turn, ROUNDS times
// over, and prints for each its least user + system time in milliseconds and its peak memory in
// megabytes.
//
// A command is one argument: words between blanks, ">FILE" for its output (else it is dropped).
// Before each run the files of fresh= are removed and those of copy= are copied, which does not
// count.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

extern char** environ;  // NOLINT: name of the system

namespace {

struct Command {
  std::vector<std::string> words;
  std::string output = "/dev/null";
  double least_ms = std::numeric_limits<double>::max();
  long peak_kilobytes = 0;
};

struct Preparation {
  std::vector<std::string> fresh;
  std::vector<std::pair<std::string, std::string>> copies;
};

Command command_of(const std::string& text) {
  Command command;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (word.front() == '>') {
      command.output = word.substr(1);
    } else {
      command.words.push_back(word);
    }
  }
  return command;
}

void prepare(const Preparation& preparation) {
  for (const std::string& name : preparation.fresh) std::filesystem::remove(name);
  for (const auto& [from, to] : preparation.copies) {
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing);
  }
}

double milliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) * 1e-3;
}

// Runs the command once; false when it can't be started or fails.
bool run(Command& command) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, command.output.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0666);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  std::vector<char*> arguments;
  for (std::string& word : command.words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  pid_t child = 0;
  const int fault =
      ::posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (fault != 0) return false;
  int status = 0;
  rusage usage{};
  ::wait4(child, &status, 0, &usage);
  command.least_ms =
      std::min(command.least_ms, milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime));
  command.peak_kilobytes = std::max(command.peak_kilobytes, usage.ru_maxrss);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::fputs("usage: measure ROUNDS [fresh=FILE | copy=FROM:TO]... COMMAND...\n", stderr);
    return 2;
  }
  Preparation preparation;
  std::vector<Command> commands;
  for (int k = 2; k < argc; ++k) {
    const std::string word = argv[k];
    if (word.starts_with("fresh=")) {
      preparation.fresh.push_back(word.substr(6));
    } else if (word.starts_with("copy=")) {
      const std::size_t colon = word.find(':');
      preparation.copies.emplace_back(word.substr(5, colon - 5), word.substr(colon + 1));
    } else {
      commands.push_back(command_of(word));
    }
  }
  for (int round = std::atoi(argv[1]); round > 0; --round) {
    for (Command& command : commands) {
      prepare(preparation);
      if (run(command)) continue;
      std::fprintf(stderr, "measure: %s failed\n", command.words.front().c_str());
      return 1;
    }
  }
  for (const Command& command : commands) {
    std::printf("%.3f %.1f\n", command.least_ms,
                static_cast<double>(command.peak_kilobytes) / 1024.0);
  }
  return 0;
}
