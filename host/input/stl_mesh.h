#ifndef QSVTIN_INPUT_STL_MESH_H
#define QSVTIN_INPUT_STL_MESH_H

#include "host/input/mesh_data.h"

#include <string>

namespace qsvtin {

/// Reads an STL file, text or binary. Every triangle brings its own three vertices. A binary file that this
/// program wrote relative to an origin gives survey coordinates again.
/// @throws Failure when it cannot be read or is damaged
MeshData ReadStlMesh(const std::string& path);

}   // namespace qsvtin

#endif
