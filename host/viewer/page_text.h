#ifndef QSVTIN_VIEWER_PAGE_TEXT_H
#define QSVTIN_VIEWER_PAGE_TEXT_H

#include <string_view>

namespace qsvtin {

/// The page that shows a terrain, up to the data of the terrain and from there on. Both are empty in a program
/// that was built without the viewer.
extern const std::string_view kPageBeforeTerrain;
extern const std::string_view kPageAfterTerrain;

}   // namespace qsvtin

#endif
