#ifndef QSVTIN_INPUT_OBJ_MESH_H
#define QSVTIN_INPUT_OBJ_MESH_H

#include "host/input/mesh_data.h"

#include <string>

namespace qsvtin {

/// Reads a Wavefront OBJ file: vertices (v) and faces (f). Faces with more than three corners are cut into
/// triangles; everything else is passed over.
/// @throws Failure when it cannot be read or is damaged
MeshData ReadObjMesh(const std::string& path);

}   // namespace qsvtin

#endif
