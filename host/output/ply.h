#ifndef QSVTIN_OUTPUT_PLY_H
#define QSVTIN_OUTPUT_PLY_H

#include "host/output/safe_file.h"
#include "host/output/write_options.h"

namespace qsvtin {

struct Terrain;

/// Writes the mesh as a PLY file, text or little-endian binary: vertices as doubles in survey coordinates,
/// then triangles.
void WritePly(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

}   // namespace qsvtin

#endif
