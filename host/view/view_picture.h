#ifndef QSVTIN_VIEW_VIEW_PICTURE_H
#define QSVTIN_VIEW_VIEW_PICTURE_H

#include "host/output/safe_file.h"
#include "host/view/grid_sphere.h"
#include "host/view/scene.h"
#include "host/view/view_frame.h"

#include <optional>
#include <string>

namespace qsvtin {

/// What a picture of a scene is like.
struct PictureOptions {
    View view;
    int width = 1600;   ///< in pixels; a PDF page has as many points
    int height = 1000;
    bool edges = true;
    std::string title;
    std::optional<GridSphere> sphere;
};

/// The view of a scene that fills such a picture, beside the title and the legend.
/// @throws Failure (bad usage) when the grid sphere would be all that is seen
ViewFrame FrameOf(const Scene& scene, const PictureOptions& options);

/// The scene from a point of view, with title, legend and north arrow. The format follows the
/// extension of the file: .png, .svg or .pdf, as CheckPicturePath has found.
void WriteView(const Scene& scene, const PictureOptions& options, SafeFile& file);

/// @throws Failure (bad usage) when the extension is none of these
void CheckPicturePath(const std::string& path);

}   // namespace qsvtin

#endif
