#ifndef QSVTIN_OUTPUT_CAIRO_FILE_H
#define QSVTIN_OUTPUT_CAIRO_FILE_H

#include "host/output/safe_file.h"

#include <cairo.h>

#include <functional>

namespace qsvtin {

/// Writes a drawing as .png, .svg or .pdf, by the extension of the file.
/// @param width, height   of the drawing, in points
/// @param pixelsPerPoint  resolution of a PNG
/// @param draw            draws on the surface it is given, in points
/// @throws Failure when the file cannot be written
void WriteDrawing(SafeFile& file, double width, double height, double pixelsPerPoint,
                  const std::function<void(cairo_surface_t*)>& draw);

}   // namespace qsvtin

#endif
