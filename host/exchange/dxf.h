#ifndef QSVTIN_EXCHANGE_DXF_H
#define QSVTIN_EXCHANGE_DXF_H

#include "host/exchange/exchange_file.h"
#include "host/output/safe_file.h"
#include "host/output/write_options.h"

#include <string>

namespace qsvtin {

struct Terrain;

/// Reads an ASCII DXF drawing: POINT as points, LINE, POLYLINE and LWPOLYLINE as breaklines, 3DFACE as triangles.
/// Each layer is a surface of its own, and vertices of equal coordinates are one. Other entities, and lines in
/// tilted planes, are passed over and counted in the remarks.
/// @throws Failure when it cannot be read or is damaged
ExchangeFile ReadDxf(const std::string& path);

/// Writes the triangles as 3DFACE on layer TIN and the breaklines as 3D POLYLINE on layer BREAKLINES, in survey
/// coordinates with every digit, in the oldest form of the format (R12), which every program reads.
void WriteDxf(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

}   // namespace qsvtin

#endif
