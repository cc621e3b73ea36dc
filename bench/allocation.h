#ifndef QSV_BENCH_ALLOCATION_H
#define QSV_BENCH_ALLOCATION_H

#include <cstddef>

namespace bench {

// Bytes that this program and the libraries in it hold of operator new, which bench/allocation.cpp replaces.
std::size_t HeldBytes();
// The most that was held at a time since this was last reset to what is held now.
std::size_t PeakBytes();
void ResetPeak();

}   // namespace bench

#endif
