// Descriptors 1 to 3 and positions 1 to 3 are those of MAIN's keys, so that key k has descriptor k.
// Position 4 has no descriptor: the next free descriptor is one less than the next free position.
#include "stores/results_store.h"

#include "stores/value_types.h"

namespace zorvik {

ResultsStore results_store;

void reset_results_store() {
  for (int key = 1; key < kFirstFreeDescriptor; ++key) {
    results_store.value[key] = kUndefined;
    results_store.descriptor[key] = {key, 1, 1};
  }
  results_store.value[kRandomStatePosition] = 0.0;
  results_store.next_value = kFirstFreeValue;
  results_store.next_descriptor = kFirstFreeDescriptor;
}

}  // namespace zorvik
