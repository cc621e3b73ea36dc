#ifndef QSVTIN_TERRAIN_PLAN_RING_H
#define QSVTIN_TERRAIN_PLAN_RING_H

#include "host/position.h"

#include <cstddef>
#include <vector>

namespace qsvtin {

/// A ring in plan that tells what lies in it, its edges in level strips so that a look at a place sees a few of
/// them only.
class PlanRing
{
public:
    /// @param corners  at least one; the last is joined to the first
    explicit PlanRing(const std::vector<Position>& corners);

    /// Counts the edges that a ray to the east crosses. Within rounding of an edge the answer may be either.
    bool Encloses(double x, double y) const;

private:
    struct Edge {
        Position from;
        Position to;
    };

    std::size_t StripAt(double y) const;

    double m_low = 0.0;
    double m_high = 0.0;
    std::vector<std::vector<Edge>> m_strips;
};

/// The area in plan that a ring of corners encloses.
double EnclosedArea(const std::vector<Position>& corners);

}   // namespace qsvtin

#endif
