#ifndef QSVTIN_OUTPUT_PEN_H
#define QSVTIN_OUTPUT_PEN_H

#include "host/output/page_layout.h"
#include "host/output/palette.h"

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace qsvtin {

// Colours of what is drawn over and beside the surface.
constexpr Rgb kInk = {0.16, 0.17, 0.19};
constexpr Rgb kSoftInk = {0.42, 0.43, 0.46};
constexpr Rgb kWhite = {1.0, 1.0, 1.0};
constexpr Rgb kPaper = {0.975, 0.972, 0.962};
constexpr Rgb kBreakline = {0.72, 0.05, 0.22};
constexpr Rgb kCrossing = {1.0, 0.86, 0.10};

enum class Align { Left, Centre, Right };

/// Draws on a cairo surface with the few strokes and texts that a plan is made of. Lengths are points.
class Pen
{
public:
    explicit Pen(cairo_surface_t* surface);

    /// The cairo context, for paths of one's own.
    cairo_t* Get() const { return m_context.get(); }

    void Colour(const Rgb& colour, double alpha = 1.0);
    void Fill(const Rect& rect);
    void Outline(const Rect& rect, double width);
    /// Adds a line to the path that the next Stroke draws.
    void Line(double x1, double y1, double x2, double y2);
    void Stroke(double width);
    /// Draws a picture into a rectangle, pixel beside pixel.
    /// @param pixels  width x height, rows from above, each 0xAARRGGBB with the colour multiplied by alpha
    void Pixels(std::vector<std::uint32_t>& pixels, int width, int height, const Rect& where);
    /// A small filled circle with a rim.
    void Mark(double x, double y, double radius, const Rgb& colour);

    void Font(double size, bool bold = false);
    /// How far digits of the font reach above the base line.
    double Ascent() const;
    double TextWidth(const std::string& text) const;
    /// Text with its base line at y.
    void Text(double x, double y, const std::string& text, Align align = Align::Left);
    /// Text with a light rim, to be read over anything.
    void TextWithHalo(double x, double y, const std::string& text, const Rgb& colour);
    /// Text that reads upwards, centred at y.
    void TextUpwards(double x, double y, const std::string& text);
    /// The text, cut at its end between characters until it fits.
    std::string Fitted(std::string text, double width) const;

private:
    struct Destroy {
        void operator()(cairo_t* context) const { cairo_destroy(context); }
    };
    std::unique_ptr<cairo_t, Destroy> m_context;
};

}   // namespace qsvtin

#endif
