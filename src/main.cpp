// The run: nine steps in a fixed order, nothing else.
#include <csignal>
#include <cstdio>
#include <string_view>

#include "driver/floating_point.h"
#include "driver/interruption.h"
#include "driver/messages.h"
#include "driver/number_format.h"
#include "driver/progress.h"
#include "driver/run_end.h"
#include "driver/text.h"
#include "driver/units.h"
#include "exec/executor.h"
#include "lang/check/pass_one.h"
#include "lang/compile/pass_two.h"
#include "lang/text/lexer.h"
#include "stores/notkeys.h"

namespace zorvik {
namespace {

// What only one of the passes fills is reset when that pass begins.
void set_up_tables() {
  reset_messages();
  reset_number_format();
  reset_source_line();
  reset_lexer();
}

void report_used_space() {
  write_blank_line(listing_unit);
  issue_message(
      listing_unit,
      message("Used space for variables ",
              format_percentage((notkeys.next_value - 1) * 100.0 / kNotkeyCapacity), "%"));
}

[[noreturn]] void run() {
  // A console that is gone, or a file that may not grow, is an error to report and no sudden death.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  // Before the first file is opened: it would be given the number of a standard stream that is
  // closed.
  occupy_standard_descriptors();
  heed_signals();
  watch_progress();
  flush_denormals_to_zero();
  set_up_tables();
  open_file(kProgramUnit, "DAT");
  open_file(kListingUnit, "LIS");
  parse_pass(kProgramUnit);
  u91ps2(kProgramUnit);
  // Execution may take long: the program's listing can be read meanwhile.
  flush_listing();
  S9XMA3();
  report_used_space();
  end_run(RunEnd::kNormal);
}

constexpr char kHelp[] =
    "zorvik: runs the program zrvdat of the current directory over the results file vnxres.\n"
    "\n"
    "Usage: zorvik                   no arguments: the names of the files are fixed\n"
    "       zorvik -h | --help       this text\n"
    "       zorvik -V | --version    version and build\n"
    "\n"
    "Files:\n"
    "  zrvdat            the program\n"
    "  zrvlis            the listing, with all messages; must not exist yet\n"
    "  vnxres, vnxsav    results and savings of the system code\n"
    "  nwsp_dat          tables of water and steam properties\n"
    "  restxt, savtxt    results and a saving as text\n"
    "  others            one for each OUTPUT that writes; must not exist yet\n"
    "\n"
    "Exit status: 0 the run ended without errors; 1 it did not: see the console and zrvlis;\n"
    "2 unknown arguments.\n"
    "\n"
    "Environment: ZORVIK_NOTES=1 tells of hazards on standard error, 0 does not; without it\n"
    "a terminal is told.\n"
    "\n"
    "Manual pages: zorvik(1), zorvik_language(7), zorvik_files(5), zorvik_messages(7)";

int answer(std::string_view argument) {
  if (argument == "-V" || argument == "--version") {
    std::puts("zorvik " ZORVIK_VERSION "\nbuild: " ZORVIK_BUILD);
  } else if (argument == "-h" || argument == "--help") {
    std::puts(kHelp);
  } else {
    std::fputs("usage: zorvik [-h | --help | -V | --version]\n", stderr);
    return 2;
  }
  return 0;
}

}  // namespace
}  // namespace zorvik

int main(int argc, char** argv) {
  if (argc == 2) return zorvik::answer(argv[1]);
  if (argc > 2) return zorvik::answer("");
  zorvik::run();
}
