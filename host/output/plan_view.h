#ifndef QSVTIN_OUTPUT_PLAN_VIEW_H
#define QSVTIN_OUTPUT_PLAN_VIEW_H

#include "host/position.h"
#include "host/terrain/local_origin.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace qsvtin {

struct Terrain;

/// Rise of the surface for a step to the east (x) and to the north (y).
struct Gradient {
    double x = 0.0;
    double y = 0.0;
};

/// What a plan picture shows, as plain arrays. Coordinates are relative to the origin.
struct PlanView {
    std::string title;
    std::string counts;   ///< the line below the title
    LocalOrigin origin;
    std::vector<Position> vertices;
    std::vector<std::array<int, 3>> triangles;   ///< counter-clockwise
    std::vector<std::array<int, 3>>
        neighbors;                     ///< entry k: across the edge from corner k to the next; -1 outside
    std::vector<Gradient> gradients;   ///< of the surface around each vertex
    std::vector<std::vector<Position>> lines;   ///< breaklines; closed ones end where they start
    std::vector<Position> crossings;            ///< where breaklines cross

    // Range of the vertices that triangles use.
    Position low;
    Position high;
};

/// The plan view of a terrain.
PlanView MakePlanView(const Terrain& terrain, const std::string& title);

/// Corner k (0, 1, 2) of a triangle.
const Position& CornerOf(const PlanView& view, std::size_t triangle, std::size_t k);

/// Plan area of a triangle.
double PlanArea(const PlanView& view, std::size_t triangle);

/// Of a triangle; level when it has no plan area.
Gradient GradientOf(const PlanView& view, std::size_t triangle);

/// Factor for heights that lets the hill shading show the relief: gentle ground is exaggerated, steep ground
/// is not. One of 1, 2, 5 and 10.
double HeightExaggeration(const PlanView& view);

}   // namespace qsvtin

#endif
