#include "host/output/cairo_file.h"

#include "host/extension.h"
#include "host/failure.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <cmath>
#include <exception>
#include <memory>

namespace qsvtin {

namespace {

struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy>;

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

}   // namespace

void WriteDrawing(SafeFile& file, const Sheet& sheet, const std::function<void(cairo_surface_t*)>& draw)
{
    const std::string extension = ExtensionOf(file.Target());
    Receiver receiver{file, nullptr};
    if (extension == ".png") {
        const Surface surface(cairo_image_surface_create(
            CAIRO_FORMAT_RGB24, static_cast<int>(std::lround(sheet.width * sheet.pngScale)),
            static_cast<int>(std::lround(sheet.height * sheet.pngScale))));
        cairo_surface_set_device_scale(surface.get(), sheet.pngScale, sheet.pngScale);
        draw(surface.get());
        Check(cairo_surface_write_to_png_stream(surface.get(), Receiver::Write, &receiver), receiver);
        return;
    }
    const bool isSvg = extension == ".svg";
    const auto create = isSvg ? cairo_svg_surface_create_for_stream : cairo_pdf_surface_create_for_stream;
    const Surface surface(create(Receiver::Write, &receiver, sheet.width, sheet.height));
    if (isSvg) {
        cairo_svg_surface_set_document_unit(surface.get(), sheet.unit == Sheet::Pixel ? CAIRO_SVG_UNIT_PX
                                                                                      : CAIRO_SVG_UNIT_PT);
    } else {
        // Without the time of its making: the same drawing gives the same bytes.
        cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, nullptr);
    }
    draw(surface.get());
    cairo_surface_finish(surface.get());
    Check(cairo_surface_status(surface.get()), receiver);
}

}   // namespace qsvtin
