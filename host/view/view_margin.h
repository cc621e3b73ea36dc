#ifndef QSVTIN_VIEW_VIEW_MARGIN_H
#define QSVTIN_VIEW_VIEW_MARGIN_H

#include "host/output/pen.h"
#include "host/view/view_picture.h"

namespace qsvtin {

/// Size of letters and lines: follows that of the picture, down to what can still be read.
double UnitOf(const PictureOptions& options);

/// The part of the picture between the margins.
Rect FramePart(const PictureOptions& options);

/// Title, description, legend and north arrow around the scene.
void DrawMargin(Pen& pen, const Scene& scene, const PictureOptions& options);

}   // namespace qsvtin

#endif
