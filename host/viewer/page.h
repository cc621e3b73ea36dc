#ifndef QSVTIN_VIEWER_PAGE_H
#define QSVTIN_VIEWER_PAGE_H

#include "host/input/survey_data.h"
#include "host/output/safe_file.h"
#include "host/terrain/terrain.h"

#include <string>
#include <vector>

namespace qsvtin {

/// What a page shows beside the surface.
struct PageOptions {
    std::string title;
    double exaggeration = 1.0;           ///< of the heights, when the page opens
    std::vector<Breakline> breaklines;   ///< in survey coordinates
};

/// Whether this program was built with the viewer.
bool HasViewer();

/// Writes one page of HTML that needs no other file: the viewer, and the terrain with every digit of its
/// coordinates, as base64 of little-endian numbers.
/// @throws Failure when the file cannot be written
void WritePage(const Terrain& terrain, const PageOptions& options, SafeFile& file);

}   // namespace qsvtin

#endif
