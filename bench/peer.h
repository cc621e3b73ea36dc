#ifndef QSV_BENCH_PEER_H
#define QSV_BENCH_PEER_H

#include "bench/point_sets.h"

namespace bench {

// What is measured of CGAL, the general library for such triangulations, where it is installed: Delaunay
// triangulations with exact predicates and inexact constructions. Every function returns user seconds, and nothing
// but what it is named after is timed.
class Peer
{
public:
    // False when this program was built without it; then the others return 0.
    static bool IsHere();
    static const char* Name();

    static double SecondsToBuild(const Places& places);
    // Bytes a point that are in use at the peak of building beyond those that stay.
    static double BuildBytes(const Places& places);
    // The constrained triangulation of points and open polylines; none: of the points.
    static double SecondsToBuildConstrained(const Places& places, const std::vector<Places>& lines);
    // Location of every position, each starting from the face found before. Positions in random order are
    // sorted first, which is timed too.
    static double SecondsToLocate(const Places& vertices, const Places& asked, bool bSortFirst);
};

}   // namespace bench

#endif
