#ifndef QSVTIN_EXCHANGE_STL_H
#define QSVTIN_EXCHANGE_STL_H

#include "host/exchange/mesh_data.h"
#include "host/output/safe_file.h"
#include "host/output/write_options.h"

#include <string>

namespace qsvtin {

struct Terrain;

/// Reads an STL file, text or binary. Vertices of equal coordinates are one. A binary file that this
/// program wrote relative to an origin gives survey coordinates again.
/// @throws Failure when it cannot be read or is damaged
MeshData ReadStlMesh(const std::string& path);

/// Writes the triangles as STL. As text, coordinates are the survey's with every digit. Binary STL has room
/// for 7 digits only: where those would not hold a millimetre, coordinates are relative to the terrain's
/// origin, which stands in the header (see kStlOrigin) and is said on standard error.
void WriteStl(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

/// How the header of a binary STL file begins whose coordinates are relative; x and y of the origin follow.
constexpr char kStlOrigin[] = "qsvtin; coordinates are relative to ";

}   // namespace qsvtin

#endif
