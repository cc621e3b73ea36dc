#ifndef QSV_BENCH_POINT_SETS_H
#define QSV_BENCH_POINT_SETS_H

#include <vector>

namespace bench {

struct Place {
    double x, y;
};
using Places = std::vector<Place>;

// n places each, over a range of 1000 by 1000 or near it, the same on every machine.

// All over the range, in random order.
Places Uniform(int n, unsigned nSeed = 1);
// In heaps of 1000 (normal distribution, standard deviation a thousandth of the range), one after the other.
Places Clustered(int n);
// To and fro in lines, as an aircraft or a vehicle measures.
Places ScanLines(int n, unsigned nSeed = 1);
// A square grid, row by row; n is rounded down to a square.
Places Grid(int n);
Places Shuffled(Places places);

}   // namespace bench

#endif
