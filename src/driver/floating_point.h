// The floating-point environment of a run.
#ifndef ZORVIK_DRIVER_FLOATING_POINT_H_
#define ZORVIK_DRIVER_FLOATING_POINT_H_

#if defined(__SSE__)
#include <xmmintrin.h>
#endif

namespace zorvik {

// From here on a result too small to be normal is zero. Elsewhere than on x86 the default stands.
inline void flush_denormals_to_zero() {
#if defined(__SSE__)
  _MM_SET_FLUSH_ZERO_MODE(_MM_FLUSH_ZERO_ON);
#endif
}

}  // namespace zorvik

#endif  // ZORVIK_DRIVER_FLOATING_POINT_H_
