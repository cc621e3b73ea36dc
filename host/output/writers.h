#ifndef QSVTIN_OUTPUT_WRITERS_H
#define QSVTIN_OUTPUT_WRITERS_H

#include "host/output/safe_file.h"
#include "host/output/write_options.h"
#include "host/terrain/terrain.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qsvtin {

/// A file format that a terrain can be written in. A new one is a line of the table in writers.cpp.
struct Writer {
    std::string_view extension;   ///< with its dot, lower case
    void (*write)(const Terrain& terrain, const WriteOptions& options, SafeFile& file);
    bool picture;      ///< needs ground to draw: a terrain that extends in x and in y
    bool holdsLines;   ///< shows breaklines too
};

/// The writer for a file, by its extension in upper or lower case.
/// @throws Failure (bad usage) when there is none
const Writer& WriterFor(const std::string& path);

/// The known extensions, for messages: ".tin, .png or .svg".
std::string KnownExtensions();

/// Files to write: where, and what writes them.
using FilesToWrite = std::vector<std::pair<std::string, std::function<void(SafeFile& file)>>>;

/// Writes files. All are complete before the first takes its target's place.
/// @throws Failure when one cannot be written; then no target has changed, unless the system refuses to
///         put one finished file in place after others
void WriteFiles(const FilesToWrite& files);

/// Writes the terrain to every path, as WriteFiles does.
void WriteAll(const Terrain& terrain, const WriteOptions& options, const std::vector<std::string>& paths);

/// What writes the terrain to a path; both must outlive it. @throws Failure when the format cannot show it
std::function<void(SafeFile& file)> WriterOf(const Terrain& terrain, const WriteOptions& options,
                                             const std::string& path);

}   // namespace qsvtin

#endif
