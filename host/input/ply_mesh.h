#ifndef QSVTIN_INPUT_PLY_MESH_H
#define QSVTIN_INPUT_PLY_MESH_H

#include "host/input/mesh_data.h"

#include <string>

namespace qsvtin {

/// Reads a PLY file, text or binary of either byte order: x, y and z of the vertices, the corners of the faces.
/// Faces with more than three corners are cut into triangles; everything else is passed over.
/// @throws Failure when it cannot be read or is damaged
MeshData ReadPlyMesh(const std::string& path);

}   // namespace qsvtin

#endif
