#ifndef QSVTIN_TERRAIN_TIN_FACTS_H
#define QSVTIN_TERRAIN_TIN_FACTS_H

#include "host/position.h"
#include "host/terrain/soundness.h"
#include "host/terrain/terrain.h"

#include <string>

namespace qsvtin {

/// What there is to say about a TIN.
struct TinFacts {
    std::string name;
    int vertices = 0;
    int unused = 0;   ///< vertices that no triangle uses
    int triangles = 0;
    int pieces = 0;               ///< sets of triangles that hang together by their links
    int outlineEdges = 0;         ///< edges with a triangle on one side only
    double outlineLength = 0.0;   ///< in plan
    int boundaryEntries = 0;      ///< of the outline as it is stored, a ring or pairs
    Position low;                 ///< range of the vertices that triangles use
    Position high;
    double planArea = 0.0;
    double surfaceArea = 0.0;
    Soundness soundness;
};

/// Measures a TIN, whatever faults it has.
TinFacts MeasureTerrain(Terrain& terrain);

}   // namespace qsvtin

#endif
