// Keys: the predefined variables of MAIN and of every OUTPUT, with their attributes and defaults.
#ifndef ZORVIK_STORES_KEYS_H_
#define ZORVIK_STORES_KEYS_H_

#include <string_view>

#include "stores/results_store.h"

namespace zorvik {

enum KeyNumber : int {
  kLocalErr = 1,
  kFormat = 2,
  kTau = 3,
  kTurnOn = 4,
  kDtOut = 5,
  kFirst = 6,
};

constexpr int kFirstMainKey = kLocalErr, kLastMainKey = kTau, kLastUserMainKey = kFormat;
constexpr int kFirstOutputKey = kTurnOn, kLastOutputKey = kFirst;
constexpr int kOutputKeyCount = kLastOutputKey - kFirstOutputKey + 1;

struct Key {
  std::string_view name;
  bool defined_once;  // may be given a value only once
  bool assignable;    // may stand on the left side of an assignment
  BaseType base_type;
  bool has_default;
  double default_value;
};

const Key& key_of(int number);  // 1 .. kLastOutputKey

// The number of the key of just that name, blanks behind it or not, among `first` .. `last`, or 0.
int find_key(std::string_view name, int first, int last);

// The value of a key of MAIN.
inline double& main_key_value(KeyNumber key) {
  return results_store.value[results_store.descriptor[key].start];
}

// Gives every user key of MAIN that has no value its default, with an "%inf- MAIN proc. Initial
// value of " line in the listing; a key without a default is an error, "%err- MAIN proc. Undefined
// key ".
void set_initial_values_of_main();

}  // namespace zorvik

#endif  // ZORVIK_STORES_KEYS_H_
