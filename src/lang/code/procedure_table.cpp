// Names are few and short, and each is looked up while a program is compiled only: they are
// compared one after the other.
#include "lang/code/procedure_table.h"

#include "driver/text.h"

namespace zorvik {

ProcedureTable procedure_table;

void reset_procedure_table() {
  // MAIN is there from the beginning, without a name.
  procedure_table.count = kMainProcedure;
  procedure_table.has_block = false;
  procedure_table.out_count = 0;
}

std::string_view procedure_name(int number) {
  return trim_right_char({procedure_table.procedure[number].name, kProcedureNameWidth}, ' ');
}

int find_procedure(std::string_view name) {
  for (int number = kMainProcedure + 1; number <= procedure_table.count; ++number) {
    if (equal_padded(name, procedure_name(number))) return number;
  }
  return 0;
}

int find_output(std::string_view name) {
  const int number = find_procedure(name);
  return procedure_table.has_block && number == kBlockProcedure ? 0 : number;
}

void add_procedure(std::string_view name, Position head) {
  Procedure& procedure = procedure_table.procedure[++procedure_table.count];
  copy_padded(procedure.name, kProcedureNameWidth, name);
  procedure.head = head;
}

void add_out(std::string_view target) {
  OutStatement& out = procedure_table.out[++procedure_table.out_count];
  copy_padded(out.target, kProcedureNameWidth, target);
}

}  // namespace zorvik
