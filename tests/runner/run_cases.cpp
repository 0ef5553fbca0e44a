// run_cases PROGRAM REPOSITORY CASE_FILE [PROGRAM]...: runs the cases of a file with each program
// and shows what is not as it must be. Status 0 when all is well, 1 when a case failed, 2 when the
// file is not understood.
#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "runner/case_file.h"
#include "runner/difference.h"

namespace zorvik::runner {
namespace {

using support::Files;
using support::Outcome;

constexpr char kListing[] = "zrvlis";

class Runner {
 public:
  explicit Runner(const std::filesystem::path& program) : program_(program) {}

  Outcome run(const Case& c, const Files& files) {
    const auto start = [&] {
      ::unsetenv("ZORVIK_NOTES");
      std::string variable = c.environment;
      if (!variable.empty()) ::putenv(variable.data());
      const char* word = c.argument.empty() ? nullptr : c.argument.c_str();
      ::execl(program_.c_str(), program_.c_str(), word, nullptr);
    };
    return directory_.run(files, start, c.room);
  }

 private:
  std::filesystem::path program_;
  support::RunDirectory directory_;
};

std::string paragraph(const std::string& title, const std::string& body) {
  return body.empty() ? "" : "  " + title + '\n' + body;
}

std::string check_content(const Expectation& e, const std::string& actual) {
  const bool has_lines = ('\n' + actual).find('\n' + e.content) != std::string::npos;
  switch (e.match) {
    case Match::kWhole:
      return difference(e.content, actual);
    case Match::kContains:
      return has_lines ? "" : difference(e.content, actual);
    case Match::kLacks:
      return has_lines ? difference("", e.content) : "";
    default:
      return {};
  }
}

std::string check_status(int actual, int expected) {
  if (actual == expected) return {};
  return "  status " + std::to_string(actual) + ", expected " + std::to_string(expected) + '\n';
}

// What the case says nothing of is silent, as it was, or not there.
std::vector<Expectation> all_expectations(const Case& c) {
  std::vector<Expectation> all = c.expectations;
  Files unsaid = c.inputs;
  unsaid.insert({{"console", ""}, {"errors", ""}});
  for (const Expectation& e : c.expectations) unsaid.erase(e.name);
  for (const auto& [name, content] : unsaid) all.push_back({name, Match::kWhole, content});
  return all;
}

std::string run_case(Runner& runner, const Case& c) {
  const Outcome outcome = runner.run(c, c.inputs);
  Files actual = outcome.files;
  actual.insert({{"console", outcome.console}, {"errors", outcome.errors}});
  Files unnamed = actual;
  unnamed.erase(kListing);
  std::string report = check_status(outcome.status, c.status);
  for (const Expectation& e : all_expectations(c)) {
    const auto found = actual.find(e.name);
    const bool exists = found != actual.end();
    if (exists == (e.match == Match::kAbsent)) {
      report += "  " + e.name + (exists ? " exists\n" : " is missing\n");
    } else if (exists) {
      report += paragraph(e.name, check_content(e, found->second));
    }
    unnamed.erase(e.name);
  }
  for (const auto& [name, content] : unnamed) {
    report += "  a file that the case does not name: " + name + '\n';
  }
  return report;
}

}  // namespace
}  // namespace zorvik::runner

int main(int count, char** arguments) {
  using namespace zorvik::runner;
  constexpr int kFixedArguments = 4;
  if (count < kFixedArguments) {
    std::cout << "usage: run_cases PROGRAM REPOSITORY CASE_FILE [PROGRAM]...\n";
    return 2;
  }
  std::vector<std::filesystem::path> programs{std::filesystem::absolute(arguments[1])};
  for (int k = kFixedArguments; k < count; ++k) {
    programs.push_back(std::filesystem::absolute(arguments[k]));
  }
  const std::string case_file = std::filesystem::absolute(arguments[3]);
  std::filesystem::current_path(arguments[2]);
  const std::vector<Case> cases = read_case_file(case_file);
  int failures = 0;
  for (const std::filesystem::path& program : programs) {
    Runner runner(program);
    for (const Case& c : cases) {
      const std::string report = run_case(runner, c);
      if (report.empty()) continue;
      ++failures;
      std::cout << case_file << ':' << c.line << ": " << c.rule << "\n  run by " << program.string()
                << '\n'
                << report << '\n';
    }
  }
  return failures == 0 ? 0 : 1;
}
