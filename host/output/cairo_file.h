#ifndef QSVTIN_OUTPUT_CAIRO_FILE_H
#define QSVTIN_OUTPUT_CAIRO_FILE_H

#include "host/output/safe_file.h"

#include <cairo.h>

#include <functional>

namespace qsvtin {

/// The sheet of a drawing. Its unit is a pixel of a screen or a point (1/72 inch) of paper: an SVG says which, a
/// PDF knows points only and takes a pixel for one.
struct Sheet {
    enum Unit { Pixel, Point };

    double width = 0.0;
    double height = 0.0;
    Unit unit = Pixel;
    double pngScale = 1.0;   ///< pixels of a PNG for a unit
};

/// Writes a drawing as .png, .svg or .pdf, by the extension of the file.
/// @param draw  draws on the surface it is given, in the unit of the sheet
/// @throws Failure when the file cannot be written
void WriteDrawing(SafeFile& file, const Sheet& sheet, const std::function<void(cairo_surface_t*)>& draw);

}   // namespace qsvtin

#endif
