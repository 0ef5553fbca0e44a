// The results store: values and descriptors of results variables and keys, filled from position 1.
//
// Positions 1 to 3 hold the keys of MAIN (LOCAL_ERR, FORMAT, TAU) with descriptors 1 to 3, position
// 4 the state of the random generator; then come the results variables, then each OUTPUT's copies
// of its keys.
#ifndef ZORVIK_STORES_RESULTS_STORE_H_
#define ZORVIK_STORES_RESULTS_STORE_H_

#include "stores/value_types.h"

namespace zorvik {

constexpr int kResultsCapacity = 210000;
constexpr int kDescriptorCapacity = 4000;
constexpr int kRandomStatePosition = 4;
constexpr int kFirstFreeValue = 5;
constexpr int kFirstFreeDescriptor = 4;

// An OUTPUT's copies of its three keys need room for three, but take four places: the last OUTPUT
// that fits may pass the end by one.
constexpr int kKeyCopySlack = 4;

struct ResultsStore {
  double value[kResultsCapacity + 1 + kKeyCopySlack];              // from 1
  Descriptor descriptor[kDescriptorCapacity + 1 + kKeyCopySlack];  // from 1
  int next_value;
  int next_descriptor;
};
extern ResultsStore results_store;

// Keys of MAIN undefined, everything after them free.
void reset_results_store();

}  // namespace zorvik

#endif  // ZORVIK_STORES_RESULTS_STORE_H_
