#include "host/output/plan_picture.h"

#include "host/output/cairo_file.h"
#include "host/output/map_content.h"
#include "host/output/map_margin.h"
#include "host/output/page_layout.h"
#include "host/output/pen.h"
#include "host/output/plan_view.h"

#include <cairo.h>

namespace qsvtin {

namespace {

void DrawPlan(cairo_surface_t* surface, const PlanView& view, const PageLayout& page,
              double reliefPixelsPerPoint)
{
    Pen pen(surface);
    pen.Colour(kWhite);
    cairo_paint(pen.Get());
    pen.Colour(kPaper);
    pen.Fill(page.map);

    const double exaggeration = HeightExaggeration(view);
    DrawSurface(pen, view, page, reliefPixelsPerPoint, exaggeration);
    DrawEdges(pen, view, page);
    DrawBreaklines(pen, view, page);

    DrawTitle(pen, view, page);
    DrawFrame(pen, view, page);
    DrawLegend(pen, view, page);
    DrawFooter(pen, page, exaggeration);
}

void WritePlan(const Terrain& terrain, const WriteOptions& options, bool wholePage, SafeFile& file)
{
    constexpr double kPixelsPerPoint = 3.0;   // of the relief too, where lines and text are vectors
    const PlanView view = MakePlanView(terrain, options.title);
    const PageLayout page = LayOutPage(view, wholePage);
    WriteDrawing(file, {page.width, page.height, Sheet::Point, kPixelsPerPoint},
                 [&](cairo_surface_t* surface) { DrawPlan(surface, view, page, kPixelsPerPoint); });
}

}   // namespace

void WritePlanPng(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    WritePlan(terrain, options, false, file);
}

void WritePlanSvg(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    WritePlan(terrain, options, false, file);
}

void WritePlanPdf(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    WritePlan(terrain, options, true, file);
}

void RequirePictures(const std::string&) {}

}   // namespace qsvtin
