#include "host/output/plan_picture.h"

#include "host/failure.h"
#include "host/output/page_layout.h"
#include "host/output/palette.h"
#include "host/output/plan_view.h"
#include "host/output/relief.h"
#include "host/output/round_steps.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>

namespace qsvtin {

namespace {

constexpr Rgb kInk = {0.16, 0.17, 0.19};
constexpr Rgb kSoftInk = {0.42, 0.43, 0.46};
constexpr Rgb kPaper = {0.975, 0.972, 0.962};
constexpr Rgb kBreakline = {0.72, 0.05, 0.22};
constexpr Rgb kCrossing = {1.0, 0.86, 0.10};

struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy>;
using Context = std::unique_ptr<cairo_t, Destroy>;

enum class Align { Left, Centre, Right };

// The page with the few strokes and texts that a plan is made of.
class Pen
{
public:
    explicit Pen(cairo_surface_t* surface) : m_context(cairo_create(surface))
    {
        cairo_set_line_join(Get(), CAIRO_LINE_JOIN_ROUND);
        cairo_set_line_cap(Get(), CAIRO_LINE_CAP_ROUND);
    }

    cairo_t* Get() const { return m_context.get(); }

    void Colour(const Rgb& c, double alpha = 1.0) { cairo_set_source_rgba(Get(), c.r, c.g, c.b, alpha); }

    void Fill(const Rect& rect)
    {
        cairo_rectangle(Get(), rect.left, rect.top, rect.width, rect.height);
        cairo_fill(Get());
    }
    void Outline(const Rect& rect, double width)
    {
        cairo_rectangle(Get(), rect.left, rect.top, rect.width, rect.height);
        Stroke(width);
    }
    void Line(double x1, double y1, double x2, double y2)
    {
        cairo_move_to(Get(), x1, y1);
        cairo_line_to(Get(), x2, y2);
    }
    void Stroke(double width)
    {
        cairo_set_line_width(Get(), width);
        cairo_stroke(Get());
    }

    void Font(double size, bool bold = false)
    {
        cairo_select_font_face(Get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                               bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(Get(), size);
    }
    double TextWidth(const std::string& text) const
    {
        cairo_text_extents_t extents;
        cairo_text_extents(Get(), text.c_str(), &extents);
        return extents.x_advance;
    }
    // Text with its base line at y.
    void Text(double x, double y, const std::string& text, Align align = Align::Left)
    {
        const double width = align == Align::Left ? 0.0 : TextWidth(text);
        cairo_move_to(Get(), x - (align == Align::Right ? width : width / 2.0), y);
        cairo_show_text(Get(), text.c_str());
    }
    // Text that reads upwards, centred at y.
    void TextUpwards(double x, double y, const std::string& text)
    {
        cairo_save(Get());
        cairo_move_to(Get(), x, y + TextWidth(text) / 2.0);
        cairo_rotate(Get(), -std::acos(-1.0) / 2.0);
        cairo_show_text(Get(), text.c_str());
        cairo_restore(Get());
    }

private:
    Context m_context;
};

// Text cut at its end, between characters, until it fits.
std::string Fitted(const Pen& pen, std::string text, double width)
{
    if (pen.TextWidth(text) <= width) return text;
    while (!text.empty() && pen.TextWidth(text + "...") > width) {
        while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80) text.pop_back();
        if (!text.empty()) text.pop_back();
    }
    return text + "...";
}

void DrawTitle(Pen& pen, const PlanView& view, const PageLayout& page)
{
    pen.Colour(kInk);
    pen.Font(15.0, true);
    pen.Text(page.title.left, page.title.top + 13.0, Fitted(pen, view.title, page.title.width));
    pen.Colour(kSoftInk);
    pen.Font(8.5);
    pen.Text(page.title.left, page.title.top + 29.0, Fitted(pen, view.counts, page.title.width));
}

void DrawRelief(Pen& pen, const PlanView& view, const PageLayout& page, double pixelsPerPoint,
                double exaggeration)
{
    const int width = static_cast<int>(std::ceil(page.map.width * pixelsPerPoint));
    const int height = static_cast<int>(std::ceil(page.map.height * pixelsPerPoint));
    PlanToPicture toPixels = page.toPage;
    toPixels.west += page.map.left / page.toPage.scale;
    toPixels.north -= page.map.top / page.toPage.scale;
    toPixels.scale *= pixelsPerPoint;
    Relief relief = DrawRelief(view, toPixels, width, height, exaggeration);
    const Surface picture(
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(relief.pixels.data()),
                                            CAIRO_FORMAT_ARGB32, width, height, 4 * width));
    cairo_save(pen.Get());
    cairo_translate(pen.Get(), page.map.left, page.map.top);
    cairo_scale(pen.Get(), 1.0 / pixelsPerPoint, 1.0 / pixelsPerPoint);
    cairo_set_source_surface(pen.Get(), picture.get(), 0.0, 0.0);
    cairo_pattern_set_filter(cairo_get_source(pen.Get()), CAIRO_FILTER_NEAREST);
    cairo_paint(pen.Get());
    cairo_restore(pen.Get());
    cairo_surface_finish(picture.get());
}

// Draws the edges that answer, in strokes of limited length, which cairo handles fastest.
template <class Wanted>
void StrokeEdges(Pen& pen, const PlanView& view, const PlanToPicture& toPage, double width, Wanted wanted)
{
    constexpr int kEdgesAStroke = 200;
    int pending = 0;
    for (std::size_t t = 0; t < view.triangles.size(); ++t) {
        for (std::size_t k = 0; k < 3; ++k) {
            const int neighbor = view.neighbors[t][k];
            if (neighbor >= 0 && static_cast<std::size_t>(neighbor) < t)
                continue;   // drawn from the other side
            if (!wanted(t, neighbor)) continue;
            const Position& a = view.vertices[static_cast<std::size_t>(view.triangles[t][k])];
            const Position& b = view.vertices[static_cast<std::size_t>(view.triangles[t][(k + 1) % 3])];
            pen.Line(toPage.X(a.x), toPage.Y(a.y), toPage.X(b.x), toPage.Y(b.y));
            if (++pending % kEdgesAStroke == 0) pen.Stroke(width);
        }
    }
    pen.Stroke(width);
}

// Edges fade out as triangles become too small to tell apart, and are left out below that.
void DrawEdges(Pen& pen, const PlanView& view, const PageLayout& page)
{
    constexpr int kShades = 4;
    constexpr double kFirstArea = 7.0, kFullArea = 60.0, kFullAlpha = 0.34;   // square points
    std::vector<int> shades(view.triangles.size());
    for (std::size_t t = 0; t < shades.size(); ++t) {
        const double area = PlanArea(view, t) * page.toPage.scale * page.toPage.scale;
        const double share = std::sqrt(std::max(0.0, (area - kFirstArea) / (kFullArea - kFirstArea)));
        shades[t] = static_cast<int>(std::ceil(std::min(1.0, share) * kShades));
    }
    for (int shade = 1; shade <= kShades; ++shade) {
        pen.Colour(kInk, kFullAlpha * shade / kShades);
        StrokeEdges(pen, view, page.toPage, 0.35, [&](std::size_t t, int neighbor) {
            const int other = neighbor < 0 ? 0 : shades[static_cast<std::size_t>(neighbor)];
            return std::max(shades[t], other) == shade;
        });
    }
    pen.Colour(kInk, 0.8);
    StrokeEdges(pen, view, page.toPage, 0.5, [](std::size_t, int neighbor) { return neighbor < 0; });
}

// Width of a breakline: thinner where its segments are so short on the page that a bold line would hide them.
double BreaklineWidth(const PlanView& view, const PageLayout& page)
{
    std::vector<double> lengths;
    for (const std::vector<Position>& line : view.lines) {
        for (std::size_t i = 1; i < line.size(); ++i) {
            lengths.push_back(page.toPage.scale *
                              std::hypot(line[i].x - line[i - 1].x, line[i].y - line[i - 1].y));
        }
    }
    if (lengths.empty()) return 0.0;
    const auto middle = lengths.begin() + static_cast<std::ptrdiff_t>(lengths.size() / 2);
    std::nth_element(lengths.begin(), middle, lengths.end());
    return std::clamp(*middle / 9.0, 0.45, 1.1);
}

void DrawBreaklines(Pen& pen, const PlanView& view, const PageLayout& page, double lineWidth)
{
    const auto strokeAll = [&](double width) {
        for (const std::vector<Position>& line : view.lines) {
            for (const Position& p : line) {
                cairo_line_to(pen.Get(), page.toPage.X(p.x), page.toPage.Y(p.y));
            }
            pen.Stroke(width);
        }
    };
    pen.Colour({1.0, 1.0, 1.0}, 0.7);
    strokeAll(2.2 * lineWidth);
    pen.Colour(kBreakline);
    strokeAll(lineWidth);
}

void DrawCrossingMark(Pen& pen, double x, double y, double lineWidth)
{
    cairo_new_sub_path(pen.Get());
    cairo_arc(pen.Get(), x, y, 1.7 * lineWidth, 0.0, 2.0 * std::acos(-1.0));
    pen.Colour(kCrossing);
    cairo_fill_preserve(pen.Get());
    pen.Colour(kInk);
    pen.Stroke(0.5 * lineWidth);
}

void DrawFrame(Pen& pen, const PlanView& view, const PageLayout& page)
{
    constexpr double kTickSpacing = 85.0, kCross = 3.0, kTickLabelOverhang = 4.0;
    const double scale = page.toPage.scale;
    const double step = RoundStepAtLeast(kTickSpacing / scale);
    const LocalOrigin& origin = view.origin;
    const double west = page.toPage.west + page.map.left / scale + origin.x;
    const double north = page.toPage.north - page.map.top / scale + origin.y;
    const std::vector<double> eastings = MultiplesBetween(west, west + page.map.width / scale, step);
    const std::vector<double> northings = MultiplesBetween(north - page.map.height / scale, north, step);

    pen.Colour(kInk, 0.55);
    for (const double easting : eastings) {
        for (const double northing : northings) {
            const double x = page.toPage.X(easting - origin.x), y = page.toPage.Y(northing - origin.y);
            pen.Line(x - kCross, y, x + kCross, y);
            pen.Line(x, y - kCross, x, y + kCross);
        }
    }
    pen.Stroke(0.4);
    pen.Colour(kInk);
    pen.Font(7.0);
    for (const double easting : eastings) {
        const double x = page.toPage.X(easting - origin.x);
        pen.Line(x, page.map.Bottom(), x, page.map.Bottom() + 3.5);
        pen.Stroke(0.6);
        pen.Text(x, page.map.Bottom() + 11.5, WithDecimalsOf(step, easting), Align::Centre);
    }
    for (const double northing : northings) {
        const double y = page.toPage.Y(northing - origin.y);
        pen.Line(page.map.left - 3.5, y, page.map.left, y);
        pen.Stroke(0.6);
        const std::string label = WithDecimalsOf(step, northing);
        if (y - pen.TextWidth(label) / 2.0 > page.map.top - kTickLabelOverhang)
            pen.TextUpwards(page.map.left - 6.0, y, label);
    }
    pen.Outline(page.map, 0.9);
}

// A bar with a round length, about a fifth of the map long, in fields of a round length.
void DrawScaleBar(Pen& pen, const PageLayout& page)
{
    constexpr double kHeight = 4.5;
    const double scale = page.toPage.scale;
    const double length = RoundStepAtLeast(0.14 * page.map.width / scale);
    const double field = RoundStepAtLeast(length / 5.0);
    const double left = page.footer.left, top = page.footer.top + 8.0;
    const Rect bar{left, top, length * scale, kHeight};
    pen.Colour({1.0, 1.0, 1.0});
    pen.Fill(bar);
    pen.Colour(kInk);
    for (double from = 0.0; from < length * (1.0 - 1e-9); from += 2.0 * field) {
        pen.Fill({left + from * scale, top, std::min(field, length - from) * scale, kHeight});
    }
    pen.Outline(bar, 0.6);
    pen.Font(7.0);
    pen.Text(left, bar.Bottom() + 9.0, "0", Align::Centre);
    pen.Text(bar.Right(), bar.Bottom() + 9.0, WithDecimalsOf(length, length), Align::Centre);
}

void DrawNote(Pen& pen, const PageLayout& page, double exaggeration)
{
    std::string note = "lit from the north-west";
    if (exaggeration > 1.0) note += ", heights \u00D7 " + WithDecimalsOf(1.0, exaggeration);
    pen.Font(7.0);
    pen.Colour(kSoftInk);
    pen.Text(page.map.Right(), page.footer.top + 13.0, note, Align::Right);
}

// Colours of the heights, highest above, with round heights beside them.
double DrawHeightScale(Pen& pen, const PlanView& view, const PageLayout& page)
{
    constexpr double kWidth = 13.0, kLabelSpacing = 26.0;
    const double length = std::clamp(0.55 * page.map.height, 110.0, 260.0);
    const Rect bar{page.legend.left + 20.0, page.legend.top + 16.0, kWidth, length};
    pen.Colour(kInk);
    pen.Font(8.0, true);
    pen.Text(bar.left, page.legend.top + 8.0, "Height");

    cairo_pattern_t* const tints = cairo_pattern_create_linear(0.0, bar.Bottom(), 0.0, bar.top);
    for (int i = 0; i <= 64; ++i) {
        const Rgb tint = HeightTint(view.high.z > view.low.z ? i / 64.0 : 0.5);
        cairo_pattern_add_color_stop_rgb(tints, i / 64.0, tint.r, tint.g, tint.b);
    }
    cairo_set_source(pen.Get(), tints);
    pen.Fill(bar);
    cairo_pattern_destroy(tints);
    pen.Colour(kInk);
    pen.Outline(bar, 0.6);

    const double range = view.high.z - view.low.z;
    const double step = RoundStepAtLeast(range * kLabelSpacing / length);
    pen.Font(7.5);
    for (const double height : MultiplesBetween(view.low.z, view.high.z, step)) {
        const double y =
            range > 0.0 ? bar.Bottom() - (height - view.low.z) / range * length : bar.top + length / 2.0;
        pen.Line(bar.Right(), y, bar.Right() + 3.0, y);
        pen.Stroke(0.6);
        pen.Text(bar.Right() + 6.0, y + 2.7, WithDecimalsOf(step, height));
    }
    return bar.Bottom();
}

void DrawLegend(Pen& pen, const PlanView& view, const PageLayout& page)
{
    const double left = page.legend.left + 20.0;
    double y = DrawHeightScale(pen, view, page) + 24.0;
    pen.Font(8.0);
    if (!view.lines.empty()) {
        pen.Colour(kBreakline);
        pen.Line(left, y, left + 13.0, y);
        pen.Stroke(1.2);
        pen.Colour(kInk);
        pen.Text(left + 19.0, y + 2.8, "breakline");
        y += 15.0;
    }
    if (!view.crossings.empty()) {
        DrawCrossingMark(pen, left + 6.5, y, 1.1);
        pen.Colour(kInk);
        pen.Text(left + 19.0, y + 2.8, "crossing");
    }
}

// North is up: an arrow at the foot of the column beside the map.
void DrawNorthArrow(Pen& pen, const PageLayout& page)
{
    constexpr double kLength = 30.0, kHalfWidth = 5.5;
    const double x = page.legend.left + 26.5, foot = page.map.Bottom() - 2.0, tip = foot - kLength;
    pen.Colour(kInk);
    cairo_move_to(pen.Get(), x, tip);
    cairo_line_to(pen.Get(), x + kHalfWidth, foot);
    cairo_line_to(pen.Get(), x, foot - 7.0);
    cairo_close_path(pen.Get());
    cairo_fill_preserve(pen.Get());
    cairo_line_to(pen.Get(), x - kHalfWidth, foot);
    cairo_line_to(pen.Get(), x, foot - 7.0);
    pen.Stroke(0.6);
    pen.Font(8.5, true);
    pen.Text(x, tip - 4.0, "N", Align::Centre);
}

void DrawPlan(cairo_surface_t* surface, const PlanView& view, const PageLayout& page,
              double reliefPixelsPerPoint)
{
    Pen pen(surface);
    pen.Colour({1.0, 1.0, 1.0});
    cairo_paint(pen.Get());
    DrawTitle(pen, view, page);
    pen.Colour(kPaper);
    pen.Fill(page.map);

    const double exaggeration = HeightExaggeration(view);
    DrawRelief(pen, view, page, reliefPixelsPerPoint, exaggeration);
    DrawEdges(pen, view, page);
    const double lineWidth = BreaklineWidth(view, page);
    DrawBreaklines(pen, view, page, lineWidth);
    for (const Position& crossing : view.crossings) {
        DrawCrossingMark(pen, page.toPage.X(crossing.x), page.toPage.Y(crossing.y), lineWidth);
    }
    DrawFrame(pen, view, page);
    DrawLegend(pen, view, page);
    DrawNorthArrow(pen, page);
    DrawScaleBar(pen, page);
    DrawNote(pen, page, exaggeration);
}

// Receives what cairo writes. Exceptions must not pass through cairo: the first one waits in failure.
struct Receiver {
    SafeFile& file;
    std::exception_ptr failure;

    static cairo_status_t Write(void* closure, const unsigned char* data, unsigned int length)
    {
        Receiver& self = *static_cast<Receiver*>(closure);
        try {
            self.file.Write({reinterpret_cast<const char*>(data), length});
            return CAIRO_STATUS_SUCCESS;
        } catch (...) {
            self.failure = std::current_exception();
            return CAIRO_STATUS_WRITE_ERROR;
        }
    }
};

void Check(cairo_status_t status, const Receiver& receiver)
{
    if (receiver.failure) std::rethrow_exception(receiver.failure);
    if (status != CAIRO_STATUS_SUCCESS) {
        throw Failure("cannot draw " + receiver.file.Target() + ": " + cairo_status_to_string(status));
    }
}

using CreateVectorSurface = cairo_surface_t* (*)(cairo_write_func_t, void*, double, double);

void WriteVector(CreateVectorSurface create, const PlanView& view, const PageLayout& page, SafeFile& file)
{
    constexpr double kReliefPixelsPerPoint = 3.0;
    Receiver receiver{file, nullptr};
    const Surface surface(create(Receiver::Write, &receiver, page.width, page.height));
    DrawPlan(surface.get(), view, page, kReliefPixelsPerPoint);
    cairo_surface_finish(surface.get());
    Check(cairo_surface_status(surface.get()), receiver);
}

}   // namespace

void WritePlanPng(const Terrain& terrain, const std::string& title, SafeFile& file)
{
    constexpr double kPixelsPerPoint = 3.0;
    const PlanView view = MakePlanView(terrain, title);
    const PageLayout page = LayOutPage(view, false);
    const Surface surface(cairo_image_surface_create(
        CAIRO_FORMAT_RGB24, static_cast<int>(std::lround(page.width * kPixelsPerPoint)),
        static_cast<int>(std::lround(page.height * kPixelsPerPoint))));
    cairo_surface_set_device_scale(surface.get(), kPixelsPerPoint, kPixelsPerPoint);
    DrawPlan(surface.get(), view, page, kPixelsPerPoint);
    Receiver receiver{file, nullptr};
    Check(cairo_surface_write_to_png_stream(surface.get(), Receiver::Write, &receiver), receiver);
}

void WritePlanSvg(const Terrain& terrain, const std::string& title, SafeFile& file)
{
    const PlanView view = MakePlanView(terrain, title);
    WriteVector(cairo_svg_surface_create_for_stream, view, LayOutPage(view, false), file);
}

void WritePlanPdf(const Terrain& terrain, const std::string& title, SafeFile& file)
{
    const PlanView view = MakePlanView(terrain, title);
    WriteVector(cairo_pdf_surface_create_for_stream, view, LayOutPage(view, true), file);
}

}   // namespace qsvtin
