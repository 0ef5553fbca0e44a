// The families are asked one after the other; the first that knows the name, or refuses it,
// decides. So a results variable hides a key of the same name, and any of them a variable of the
// user.
//   in OUTPUT T:   TURN_ON its own key   TURN_ON.U that of U   FORMAT a key of MAIN   P.CH5 a
//   results variable   X as a target a notkey, new or not, else only one that stands already
#include "lang/compile/name_lookup.h"

#include "driver/messages.h"
#include "driver/notes.h"
#include "driver/text.h"
#include "lang/code/procedure_table.h"
#include "lang/compile/nearest_name.h"
#include "results/results_variables.h"
#include "stores/keys.h"
#include "stores/notkeys.h"

namespace zorvik {
namespace {

constexpr std::string_view kLeftSide = " in the left side of \"=\"";

enum class Found { kNo, kYes, kError };

Found report(std::string_view text, const NameScope& scope) {
  count_error(text, scope.line);
  return Found::kError;
}

// TURN_ON.NAME. A name whose part before the "." is no key of OUTPUTs, as P.CH5, is for the others;
// one whose part is a key belongs here, even when there is no such OUTPUT.
Found find_key_of_output(const Lexeme& name, bool target, const NameScope& scope, Item& item) {
  if (name.dot == 0) return Found::kNo;
  const auto dot = static_cast<std::size_t>(name.dot);
  const int key = find_key(name.view().substr(0, dot - 1), kFirstOutputKey, kLastOutputKey);
  if (key == 0) return Found::kNo;
  const int output = find_output(name.view().substr(dot));
  if (output == 0) {
    return report(message("%err- Name of OUTPUT not found. Variable ", name.view()), scope);
  }
  item = make_variable(make_output_key_link(key, output), kResultsStore, 0, key_of(key).base_type,
                       target);
  return Found::kYes;
}

Found find_results_name(const Lexeme& name, bool target, const NameScope& scope, Item& item) {
  const int number = find_results_variable(name.view());
  if (number == 0) return Found::kNo;
  if (target) {
    return report(message("%err- Variable from <vnxres>", name.view(), kLeftSide), scope);
  }
  ResultsVariable& variable = results_variables.variable[number];
  // From now on its values are wanted of every record; what nobody names is not loaded.
  variable.named = true;
  item =
      make_variable(variable.descriptor, kResultsStore, variable.rank, variable.base_type, false);
  return Found::kYes;
}

// Only inside an OUTPUT, whose copies hide nothing of another family but a notkey of that name.
Found find_own_key(const Lexeme& name, bool target, const NameScope& scope, Item& item) {
  if (scope.first_key_descriptor == 0) return Found::kNo;
  const int key = find_key(name.view(), kFirstOutputKey, kLastOutputKey);
  if (key == 0) return Found::kNo;
  item = make_variable(scope.first_key_descriptor + key - kFirstOutputKey, kResultsStore, 0,
                       key_of(key).base_type, target);
  return Found::kYes;
}

// The keys of MAIN are known in every procedure.
Found find_main_key(const Lexeme& name, bool target, const NameScope& scope, Item& item) {
  const int number = find_key(name.view(), kFirstMainKey, kLastMainKey);
  if (number == 0) return Found::kNo;
  const Key& key = key_of(number);
  // A second value is told before the question whether the key may have one at all.
  if (target && key.defined_once && main_key_value(static_cast<KeyNumber>(number)) != kUndefined) {
    return report(message("%err- Multiple definition of key ", key.name), scope);
  }
  if (target && !key.assignable) {
    return report(message("%err- Key ", key.name, kLeftSide), scope);
  }
  if (number == kTau) results_variables.time_named = true;
  item = make_variable(number, kResultsStore, 0, key.base_type, target);
  return Found::kYes;
}

void note_near_name(std::string_view name, int line) {
  const std::string_view near = notes_wanted() ? nearest_known_name(name) : std::string_view{};
  if (near.empty()) return;
  note(Hazard::kUnknownName, [&] {
    return message("line ", line, ": ", name, " is not known; did you mean ", near, "?");
  });
}

Found find_notkey_name(const Lexeme& name, bool target, const NameScope& scope, Item& item) {
  int number = find_notkey(name.view());
  if (number == 0) {
    if (!target) {
      note_near_name(name.view(), scope.line);
      return report(message("%err- Undefined variable ", name.view()), scope);
    }
    // Its type and rank are those of its first value when the program runs: here they are unknown.
    number = enter_notkey(name.view(), scope.line);
  }
  item = make_variable(kNotkeyLink * number, kNotkeyStore, kUnknownRank, kInteger, target);
  return Found::kYes;
}

}  // namespace

bool lookup_name(const Lexeme& name, bool target, const NameScope& scope, Item& item) {
  for (const auto find :
       {find_key_of_output, find_results_name, find_own_key, find_main_key, find_notkey_name}) {
    const Found found = find(name, target, scope, item);
    if (found != Found::kNo) return found == Found::kYes;
  }
  return false;
}

}  // namespace zorvik
