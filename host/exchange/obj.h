#ifndef QSVTIN_EXCHANGE_OBJ_H
#define QSVTIN_EXCHANGE_OBJ_H

#include "host/exchange/mesh_data.h"
#include "host/output/safe_file.h"
#include "host/output/write_options.h"

#include <string>

namespace qsvtin {

struct Terrain;

/// Reads a Wavefront OBJ file: vertices (v), faces (f) and polylines (l). Faces with more than three corners are
/// cut into triangles; everything else is passed over.
/// @throws Failure when it cannot be read or is damaged
MeshData ReadObjMesh(const std::string& path);

/// Writes the mesh as Wavefront OBJ: vertices in survey coordinates with every digit (v), triangles
/// counter-clockwise (f) and the breaklines as polylines (l).
void WriteObj(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

}   // namespace qsvtin

#endif
