#ifndef QSVTIN_OUTPUT_TIN_H
#define QSVTIN_OUTPUT_TIN_H

#include "host/output/safe_file.h"
#include "host/output/write_options.h"

#include "qsv_3dprocess.h"

namespace qsvtin {

struct Terrain;

/// Writes the terrain as a TIN file, in survey coordinates. Breaklines are not stored; the edges that they
/// made are.
void WriteTin(const Terrain& terrain, const WriteOptions& options, SafeFile& file);

/// Writes TINs, whose coordinates are the survey's, as one file.
/// @param form  0 for a single TIN; 1 or 2 for a collection of that version
void WriteTins(CArray<CTin, CTin&>& tins, int form, SafeFile& file);

}   // namespace qsvtin

#endif
