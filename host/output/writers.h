#ifndef QSVTIN_OUTPUT_WRITERS_H
#define QSVTIN_OUTPUT_WRITERS_H

#include "host/output/safe_file.h"
#include "host/terrain/terrain.h"

#include <string>
#include <string_view>
#include <vector>

namespace qsvtin {

/// A file format that a terrain can be written in. A new one is a line of the table in writers.cpp.
struct Writer {
    std::string_view extension;   ///< with its dot, lower case
    void (*write)(const Terrain& terrain, const std::string& title, SafeFile& file);
};

/// The writer for a file, by its extension in upper or lower case.
/// @throws Failure (bad usage) when there is none
const Writer& WriterFor(const std::string& path);

/// The known extensions, for messages: "png, svg, pdf or obj".
std::string KnownExtensions();

/// Writes the terrain to every path. All files are complete before the first takes its target's place.
/// @param title  stands over pictures and in the comments of text formats
/// @throws Failure when one cannot be written; then no target has changed, unless the system refuses to
///         put one finished file in place after others
void WriteAll(const Terrain& terrain, const std::string& title, const std::vector<std::string>& paths);

}   // namespace qsvtin

#endif
