// The loop record belongs to the five words that a DO reserves behind its bounds: the body begins
// just after them, so an ENDDO, which knows the body, finds the record.
#include "exec/values/loop_record.h"

#include "lang/code/code_store.h"

namespace zorvik {
namespace {

// By position of the first reserved word divided by their number: no two DOs share an entry. The
// code's own words are 32 bits wide, and counts may be larger.
LoopRecord loop_records[kCodeCapacity / kLoopRecordWords + 1];

}  // namespace

LoopRecord& loop_record_before(int body) {
  return loop_records[(body - kLoopRecordWords) / kLoopRecordWords];
}

}  // namespace zorvik
