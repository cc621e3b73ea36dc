#ifndef QSVTIN_EXCHANGE_PLY_H
#define QSVTIN_EXCHANGE_PLY_H

#include "host/exchange/mesh_data.h"
#include "host/output/safe_file.h"
#include "host/output/write_options.h"

#include <string>

namespace qsvtin {

struct Terrain;

/// Reads a PLY file, text or binary of either byte order: x, y and z of the vertices, the corners of the faces.
/// Faces with more than three corners are cut into triangles; everything else is passed over.
/// @throws Failure when it cannot be read or is damaged
MeshData ReadPlyMesh(const std::string& path);

/// Writes the mesh as a PLY file, text or little-endian binary: vertices as doubles in survey coordinates,
/// then triangles.
void WritePly(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

}   // namespace qsvtin

#endif
