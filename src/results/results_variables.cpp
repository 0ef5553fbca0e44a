// Entries find their variable through a hash of the base name: grouping thousands of them costs no
// more than reading their names.   Y(1:2,1:3) and Y(1:2,4:5) -> Y, rank 2, d1 = 2, d2 = 5
#include "results/results_variables.h"

#include <algorithm>

#include "driver/name_slots.h"
#include "driver/text.h"
#include "stores/results_store.h"

namespace zorvik {

ResultsVariables results_variables;

namespace {

NameSlots<8192> slots;                   // numbers of variables
static_assert(2 * kMaxEntries <= 8192);  // half of the slots stay free, so searches end soon

std::string_view name_of_number(int number) { return name_of(results_variables.variable[number]); }

int rank_of(const Entry& entry) {
  const std::string_view name = entry.full_name();
  const auto open = name.find('(');
  if (open == std::string_view::npos) return 0;
  return name.find(',', open) == std::string_view::npos ? 1 : 2;
}

BaseType base_type_of(const Entry& entry) {
  switch (entry.type_digit()) {
    case 1:
      return kReal;
    case 4:
      return kPointerVariable;
    default:
      return kInteger;
  }
}

// Extents of each variable while the chains are built, and the last entry of each chain.
Descriptor extents[kMaxEntries + 1];
int last_of_chain[kMaxEntries + 1];

void start_variable(int e, std::int16_t& slot) {
  const Entry& entry = entry_table.entry[e];
  const int number = ++results_variables.count;
  slot = static_cast<std::int16_t>(number);
  const int rank = rank_of(entry);
  results_variables.variable[number] = {e, rank, base_type_of(entry), 0, false};
  extents[number] = {0, rank == 0 ? 1 : entry.first_extent(), rank == 2 ? entry.hi2 : 1};
  last_of_chain[number] = e;
}

void join_variable(int e, int number) {
  results_variables.next_of_chain[last_of_chain[number]] = e;
  last_of_chain[number] = e;
  if (results_variables.variable[number].rank == 2) {
    extents[number].d2 = std::max(extents[number].d2, entry_table.entry[e].hi2);
  }
}

// An entry states its own subscripts and the first extent of its variable: of several entries the
// first one's counts, and the others may contradict it.
bool inside_block(const ResultsVariable& variable, const Descriptor& block) {
  for (int e = variable.first_entry; e != 0; e = results_variables.next_of_chain[e]) {
    const Entry& entry = entry_table.entry[e];
    if (entry.values() > 0 && (entry.hi1 > block.d1 || entry.hi2 > block.d2)) return false;
  }
  return true;
}

HeaderStatus allocate(int number) {
  ResultsVariable& variable = results_variables.variable[number];
  Descriptor block = extents[number];
  if (!inside_block(variable, block)) return HeaderStatus::kInvalid;
  const std::int64_t values = std::int64_t{block.d1} * block.d2;
  if (results_store.next_value + values > kResultsCapacity + 1 ||
      results_store.next_descriptor > kDescriptorCapacity) {
    return HeaderStatus::kTooLarge;
  }
  block.start = results_store.next_value;
  variable.descriptor = results_store.next_descriptor++;
  results_store.descriptor[variable.descriptor] = block;
  results_store.next_value += static_cast<int>(values);
  return HeaderStatus::kOk;
}

}  // namespace

void reset_results_variables() {
  results_variables.count = 0;
  results_variables.time_named = false;
  std::fill_n(results_variables.next_of_chain, kMaxEntries + 1, 0);
  slots.reset();
}

// All entries are grouped before any block gets its place: a later entry may widen it.
HeaderStatus form_results_variables() {
  reset_results_variables();
  for (int e = 1; e <= entry_table.count; ++e) {
    std::int16_t& slot = slots.slot(entry_table.entry[e].base_name(), name_of_number);
    if (slot == 0) {
      start_variable(e, slot);
    } else {
      join_variable(e, slot);
    }
  }
  for (int number = 1; number <= results_variables.count; ++number) {
    if (const HeaderStatus status = allocate(number); status != HeaderStatus::kOk) return status;
  }
  return HeaderStatus::kOk;
}

std::string_view name_of(const ResultsVariable& variable) {
  return entry_table.entry[variable.first_entry].base_name();
}

int find_results_variable(std::string_view name) {
  return slots.find(trim_right_char(name, ' '), name_of_number);
}

// Variables have their descriptors in a row, in the order of their numbers.
int variable_of_descriptor(int descriptor) {
  if (results_variables.count == 0) return 0;
  const int number = descriptor - results_variables.variable[1].descriptor + 1;
  return number >= 1 && number <= results_variables.count ? number : 0;
}

}  // namespace zorvik
