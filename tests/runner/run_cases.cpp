// run_cases REPOSITORY CASE_FILE PROGRAM...: runs the cases of a file with each program, sweeps
// with the first one alone, and shows what is not as it must be. Status 0 when all is well, 1 when
// a case failed, 2 when the file is not understood.
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "runner/case_file.h"
#include "runner/difference.h"
#include "runner/program_run.h"

namespace zorvik::runner {
namespace {

constexpr char kListing[] = "zrvlis";

std::string paragraph(const std::string& title, const std::string& body) {
  return body.empty() ? "" : "  " + title + '\n' + body;
}

bool has_lines(const std::string& text, const std::string& lines) {
  return ('\n' + text).find('\n' + lines) != std::string::npos;
}

std::string check_content(const Expectation& e, const std::string& actual) {
  switch (e.match) {
    case Match::kWhole:
      return e.binary ? binary_difference(e.content, actual) : text_difference(e.content, actual);
    case Match::kContains:
      return has_lines(actual, e.content) ? "" : text_difference(e.content, actual);
    case Match::kLacks:
      return has_lines(actual, e.content) ? text_difference("", e.content) : "";
    default:
      return {};
  }
}

bool names(const Case& c, const std::string& name) {
  for (const Expectation& e : c.expectations) {
    if (e.name == name) return true;
  }
  return false;
}

std::string check_expectations(const Case& c, const RunResult& result,
                               const std::filesystem::path& directory) {
  std::string report;
  for (const Expectation& e : c.expectations) {
    const auto path = directory / e.name;
    const bool console = e.name == "console", exists = std::filesystem::exists(path);
    if (e.match == Match::kAbsent) {
      if (exists) report += "  " + e.name + " exists\n";
    } else if (!console && !exists) {
      report += "  " + e.name + " is missing\n";
    } else {
      report += paragraph(e.name, check_content(e, console ? result.console : content_of(path)));
    }
  }
  if (!names(c, "console")) report += paragraph("console", text_difference("", result.console));
  return report;
}

// Inputs that the case expects nothing of are as they were; no other file has appeared.
std::string check_other_files(const Case& c, const std::filesystem::path& directory) {
  std::string report;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    const std::string name = entry.path().filename();
    if (names(c, name)) continue;
    if (const auto input = c.inputs.find(name); input != c.inputs.end()) {
      report += paragraph(name + " was changed",
                          binary_difference(input->second, content_of(entry.path())));
    } else if (name != kListing) {
      report += "  a file that the case does not name: " + name + '\n';
    }
  }
  return report;
}

std::string check_end(const RunResult& result, int status, const std::string& errors) {
  std::string report = paragraph("standard error", text_difference(errors, result.errors));
  if (result.status != status) {
    report +=
        "  status " + std::to_string(result.status) + ", expected " + std::to_string(status) + '\n';
  }
  return report;
}

// A hostile input must give a defined end: status 0 or 1 and nothing on standard error.
std::string check_hostile(ProgramRun& run, const Case& c, const std::string& name,
                          std::string content, const std::string& what) {
  auto inputs = c.inputs;
  inputs[name] = std::move(content);
  const RunResult result = run.run(c, inputs);
  const std::string report = check_end(result, result.status == 1 ? 1 : 0, "");
  return report.empty() ? "" : "  sweep, " + name + ' ' + what + '\n' + report;
}

std::string run_sweep(ProgramRun& run, const Case& c, const Sweep& sweep) {
  const std::string& good = c.inputs.at(sweep.name);
  const std::size_t variants = sweep.integers == 0 ? good.size() : 4 * sweep.integers;
  constexpr std::int32_t kHostile[] = {-1, 0, INT32_MAX, INT32_MIN};
  std::string report;
  for (std::size_t k = 0; k < variants && report.empty(); ++k) {
    std::string bytes = good, what = "variant " + std::to_string(k);
    if (sweep.integers == 0) {
      bytes.resize(k);  // and else integer k / 4 gets value k % 4
    } else {
      std::memcpy(bytes.data() + k / 4 * sizeof(std::int32_t), &kHostile[k % 4],
                  sizeof(std::int32_t));
    }
    report = check_hostile(run, c, sweep.name, std::move(bytes), what);
  }
  return report;
}

std::string run_case(ProgramRun& run, const Case& c) {
  const RunResult result = run.run(c, c.inputs);
  std::string report = check_end(result, c.status, c.errors);
  report += check_expectations(c, result, run.directory());
  return report + check_other_files(c, run.directory());
}

std::string run_sweeps(ProgramRun& run, const Case& c) {
  std::string report;
  for (const Sweep& sweep : c.sweeps) report += run_sweep(run, c, sweep);
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
  std::vector<std::string> programs(arguments + kFixedArguments, arguments + count);
  programs.insert(programs.begin(), arguments[1]);
  const std::vector<Case> cases = read_case_file(arguments[3], arguments[2]);
  int failures = 0;
  for (const std::string& program : programs) {
    ProgramRun run(program);
    for (const Case& c : cases) {
      std::string report = run_case(run, c);
      if (program == programs.front()) report += run_sweeps(run, c);
      if (report.empty()) continue;
      ++failures;
      std::cout << arguments[3] << ':' << c.line << ": " << c.rule << "\n  run by " << program
                << '\n'
                << report << '\n';
    }
  }
  return failures == 0 ? 0 : 1;
}
