#include "host/output/plan_picture.h"

#include "host/failure.h"
#include "host/output/map_content.h"
#include "host/output/map_margin.h"
#include "host/output/page_layout.h"
#include "host/output/pen.h"
#include "host/output/plan_view.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>
#include <cairo.h>

#include <cmath>
#include <exception>
#include <memory>

namespace qsvtin {

namespace {

struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy>;

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

void WritePlanPng(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    constexpr double kPixelsPerPoint = 3.0;
    const PlanView view = MakePlanView(terrain, options.title);
    const PageLayout page = LayOutPage(view, false);
    const Surface surface(cairo_image_surface_create(
        CAIRO_FORMAT_RGB24, static_cast<int>(std::lround(page.width * kPixelsPerPoint)),
        static_cast<int>(std::lround(page.height * kPixelsPerPoint))));
    cairo_surface_set_device_scale(surface.get(), kPixelsPerPoint, kPixelsPerPoint);
    DrawPlan(surface.get(), view, page, kPixelsPerPoint);
    Receiver receiver{file, nullptr};
    Check(cairo_surface_write_to_png_stream(surface.get(), Receiver::Write, &receiver), receiver);
}

void WritePlanSvg(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    const PlanView view = MakePlanView(terrain, options.title);
    WriteVector(cairo_svg_surface_create_for_stream, view, LayOutPage(view, false), file);
}

void WritePlanPdf(const Terrain& terrain, const WriteOptions& options, SafeFile& file)
{
    const PlanView view = MakePlanView(terrain, options.title);
    WriteVector(cairo_pdf_surface_create_for_stream, view, LayOutPage(view, true), file);
}

}   // namespace qsvtin
