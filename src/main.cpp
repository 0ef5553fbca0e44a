// The run, in its fixed order.
#include "driver/messages.h"
#include "driver/run_end.h"
#include "driver/units.h"
#include "lang/lexer.h"
#include "lang/pass_one.h"

using namespace zorvik;

int main() {
  reset_source_line();
  reset_lexer();
  open_file(kProgramUnit, "DAT");
  open_file(kListingUnit, "LIS");
  parse_pass(kProgramUnit);
  end_run(RunEnd::kNormal);
}
