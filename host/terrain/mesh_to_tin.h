#ifndef QSVTIN_TERRAIN_MESH_TO_TIN_H
#define QSVTIN_TERRAIN_MESH_TO_TIN_H

#include "host/exchange/mesh_data.h"

#include "qsv_3dprocess.h"

#include <vector>

namespace qsvtin {

/// What had to be changed to make a TIN of a mesh.
struct MeshRepairs {
    int dropped = 0;           ///< triangles that use one vertex twice
    bool turnedOver = false;   ///< all triangles ran clockwise and were turned over
};

/// Makes a TIN of a mesh: links the triangles and finds the outline. Vertices and triangles keep their order.
CTin TinFromMesh(const MeshData& mesh, MeshRepairs& repairs);

/// Brings up to date what a TIN file holds beside vertices and triangles: the outline as pairs of vertices,
/// and texture coordinates that run from 0 to 1 over the plan range.
void UpdateStoredParts(CTin& tin);

}   // namespace qsvtin

#endif
