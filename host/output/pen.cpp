#include "host/output/pen.h"

#include <cmath>

namespace qsvtin {

namespace {

const double kPi = std::acos(-1.0);

}   // namespace

Pen::Pen(cairo_surface_t* surface) : m_context(cairo_create(surface))
{
    cairo_set_line_join(Get(), CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(Get(), CAIRO_LINE_CAP_ROUND);
}

void Pen::Colour(const Rgb& colour, double alpha)
{
    cairo_set_source_rgba(Get(), colour.r, colour.g, colour.b, alpha);
}

void Pen::Fill(const Rect& rect)
{
    cairo_rectangle(Get(), rect.left, rect.top, rect.width, rect.height);
    cairo_fill(Get());
}

void Pen::Outline(const Rect& rect, double width)
{
    cairo_rectangle(Get(), rect.left, rect.top, rect.width, rect.height);
    Stroke(width);
}

void Pen::Line(double x1, double y1, double x2, double y2)
{
    cairo_move_to(Get(), x1, y1);
    cairo_line_to(Get(), x2, y2);
}

void Pen::Stroke(double width)
{
    cairo_set_line_width(Get(), width);
    cairo_stroke(Get());
}

void Pen::Pixels(std::vector<std::uint32_t>& pixels, int width, int height, const Rect& where)
{
    cairo_surface_t* const picture = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(pixels.data()), CAIRO_FORMAT_ARGB32, width, height, 4 * width);
    cairo_save(Get());
    cairo_translate(Get(), where.left, where.top);
    cairo_scale(Get(), where.width / width, where.height / height);
    cairo_set_source_surface(Get(), picture, 0.0, 0.0);
    cairo_pattern_set_filter(cairo_get_source(Get()), CAIRO_FILTER_NEAREST);
    cairo_paint(Get());
    cairo_restore(Get());
    cairo_surface_finish(picture);   // the pixels may go now; cairo copies what it still needs
    cairo_surface_destroy(picture);
}

void Pen::Mark(double x, double y, double radius, const Rgb& colour)
{
    cairo_new_sub_path(Get());
    cairo_arc(Get(), x, y, radius, 0.0, 2.0 * kPi);
    Colour(colour);
    cairo_fill_preserve(Get());
    Colour(kInk);
    Stroke(0.3 * radius);
}

void Pen::Font(double size, bool bold)
{
    cairo_select_font_face(Get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(Get(), size);
}

double Pen::Ascent() const
{
    cairo_text_extents_t extents;
    cairo_text_extents(Get(), "0", &extents);
    return extents.height;
}

double Pen::TextWidth(const std::string& text) const
{
    cairo_text_extents_t extents;
    cairo_text_extents(Get(), text.c_str(), &extents);
    return extents.x_advance;
}

void Pen::Text(double x, double y, const std::string& text, Align align)
{
    const double share = align == Align::Left ? 0.0 : align == Align::Right ? 1.0 : 0.5;
    cairo_move_to(Get(), x - share * TextWidth(text), y);
    cairo_show_text(Get(), text.c_str());
}

void Pen::TextWithHalo(double x, double y, const std::string& text, const Rgb& colour)
{
    cairo_new_path(Get());
    cairo_move_to(Get(), x, y);
    cairo_text_path(Get(), text.c_str());
    Colour(kWhite, 0.85);
    cairo_set_line_width(Get(), 0.45 * Ascent());
    cairo_stroke_preserve(Get());
    Colour(colour);
    cairo_fill(Get());
}

void Pen::TextUpwards(double x, double y, const std::string& text)
{
    cairo_save(Get());
    cairo_move_to(Get(), x, y + TextWidth(text) / 2.0);
    cairo_rotate(Get(), -kPi / 2.0);
    cairo_show_text(Get(), text.c_str());
    cairo_restore(Get());
}

std::string Pen::Fitted(std::string text, double width) const
{
    if (TextWidth(text) <= width) return text;
    const auto isInsideCharacter = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
    };
    while (!text.empty() && TextWidth(text + "...") > width) {
        while (text.size() > 1 && isInsideCharacter(text.back())) text.pop_back();
        text.pop_back();
    }
    return text + "...";
}

}   // namespace qsvtin
