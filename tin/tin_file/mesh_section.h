#ifndef QSV_TIN_FILE_MESH_SECTION_H
#define QSV_TIN_FILE_MESH_SECTION_H

#include "tin/tin.h"
#include "tin/tin_file/byte_codec.h"

namespace qsv {

// What every form of file holds of a TIN: its vertices (x, y, z), its triangles (vertices, neighbours) and its
// boundary, each behind a count. docs/file_formats.md shows the bytes.
void WriteMesh(ByteWriter& writer, const CTin& tin);

// Replaces these three arrays of tin. Returns false when the file ends first or announces what it cannot hold;
// tin then has what arrived in full, and the arrays behind it are as they were. Indices are not checked.
bool ReadMesh(ByteReader& reader, CTin& tin);

// Three doubles without a meaning, 0 when written, that end a TIN in the older forms.
void WriteReserved(ByteWriter& writer);
bool ReadReserved(ByteReader& reader);

}   // namespace qsv

#endif
