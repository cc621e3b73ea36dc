#ifndef QSVTIN_OUTPUT_OBJ_H
#define QSVTIN_OUTPUT_OBJ_H

#include "host/output/safe_file.h"
#include "host/output/write_options.h"
#include "host/terrain/terrain.h"

namespace qsvtin {

/// Writes the mesh as Wavefront OBJ: vertices in survey coordinates with every digit (v), triangles
/// counter-clockwise (f) and the breaklines as polylines (l).
void WriteObj(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

}   // namespace qsvtin

#endif
