#include "bench/peer.h"

#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/spatial_sort.h>
#include <CGAL/version.h>

#include "bench/allocation.h"
#include "bench/measure.h"

namespace bench {

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Points = std::vector<Kernel::Point_2>;
using Delaunay = CGAL::Delaunay_triangulation_2<Kernel>;
using Constrained = CGAL::Constrained_Delaunay_triangulation_2<Kernel>;

Points PointsAt(const Places& places)
{
    Points points;
    for (const Place& p : places) {
        points.emplace_back(p.x, p.y);
    }
    return points;
}

}   // namespace

bool Peer::IsHere()
{
    return true;
}

const char* Peer::Name()
{
    return "CGAL " CGAL_VERSION_STR;
}

double Peer::SecondsToBuild(const Places& places)
{
    const Points points = PointsAt(places);
    const double dStart = UserSeconds();
    const Delaunay built(points.begin(), points.end());
    return UserSeconds() - dStart;
}

double Peer::BuildBytes(const Places& places)
{
    const Points points = PointsAt(places);
    ResetPeak();
    const Delaunay built(points.begin(), points.end());
    return static_cast<double>(PeakBytes() - HeldBytes()) / static_cast<double>(points.size());
}

double Peer::SecondsToBuildConstrained(const Places& places, const std::vector<Places>& lines)
{
    const Points points = PointsAt(places);
    std::vector<Points> constraints;
    for (const Places& line : lines) {
        constraints.push_back(PointsAt(line));
    }
    const double dStart = UserSeconds();
    Constrained built;
    built.insert(points.begin(), points.end());
    for (const Points& line : constraints) {
        built.insert_constraint(line.begin(), line.end());
    }
    return UserSeconds() - dStart;
}

double Peer::SecondsToLocate(const Places& vertices, const Places& asked, bool bSortFirst)
{
    static Points known;   // of the triangulation below, which is made once for all runs
    static Delaunay built;
    const Points points = PointsAt(vertices);
    if (known != points) {
        built = Delaunay(points.begin(), points.end());
        known = points;
    }
    Points positions = PointsAt(asked);
    const double dStart = UserSeconds();
    if (bSortFirst) CGAL::spatial_sort(positions.begin(), positions.end());
    Delaunay::Face_handle face;
    std::size_t nFound = 0;
    for (const Kernel::Point_2& p : positions) {
        face = built.locate(p, face);
        nFound += built.is_infinite(face) ? 0 : 1;
    }
    const double dSeconds = UserSeconds() - dStart;
    if (nFound == 0) std::printf("nothing located\n");
    return dSeconds;
}

}   // namespace bench
