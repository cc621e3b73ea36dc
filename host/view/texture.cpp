#include "host/view/texture.h"

#include "host/failure.h"
#include "host/input/whole_file.h"

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>

namespace qsvtin {

namespace {

constexpr int kLongestSide = 16384;   // of a texture; it takes up five bytes a texel

struct Destroy {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, Destroy>;

[[noreturn]] void Refuse(const std::string& path)
{
    throw Failure(path + " is no PNG picture, or damaged; save it again as PNG");
}

std::uint32_t BigEndian(const std::string& bytes, std::size_t at)
{
    std::uint32_t number = 0;
    for (std::size_t i = at; i < at + 4; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return number;
}

// The size stands in front, so that a picture too large is refused before there is room made for it.
void CheckSize(const std::string& path, const std::string& bytes)
{
    if (bytes.size() < 24 || bytes.compare(0, 8, "\x89PNG\r\n\x1a\n") != 0) Refuse(path);
    const std::uint32_t width = BigEndian(bytes, 16), height = BigEndian(bytes, 20);
    if (width > kLongestSide || height > kLongestSide) {
        throw Failure(path + " has " + std::to_string(width) + " x " + std::to_string(height) +
                      " pixels; scale it down to " + std::to_string(kLongestSide) + " a side");
    }
}

struct Source {
    const std::string& bytes;
    std::size_t position;

    static cairo_status_t Read(void* closure, unsigned char* data, unsigned int length)
    {
        Source& self = *static_cast<Source*>(closure);
        if (length > self.bytes.size() - self.position) return CAIRO_STATUS_READ_ERROR;
        std::memcpy(data, self.bytes.data() + self.position, length);
        self.position += length;
        return CAIRO_STATUS_SUCCESS;
    }
};

double Limited(double coordinate)
{
    return coordinate > 0.0 ? std::min(coordinate, 1.0) : 0.0;   // 0 when it is not a number
}

}   // namespace

std::uint32_t Texture::Level::At(int column, int row) const
{
    const auto x = static_cast<std::size_t>(std::clamp(column, 0, width - 1));
    const auto y = static_cast<std::size_t>(std::clamp(row, 0, height - 1));
    return texels[y * static_cast<std::size_t>(width) + x];
}

// The mean of each square of four.
Texture::Level Texture::Halved(const Level& level)
{
    Level half;
    half.width = (level.width + 1) / 2;
    half.height = (level.height + 1) / 2;
    for (int row = 0; row < half.height; ++row) {
        for (int column = 0; column < half.width; ++column) {
            std::uint32_t mean = 0;
            for (const int shift : {0, 8, 16, 24}) {
                std::uint32_t sum = 2;   // rounds
                for (const int i : {0, 1, 2, 3}) {
                    sum += level.At(2 * column + i % 2, 2 * row + i / 2) >> shift & 255u;
                }
                mean |= sum / 4 << shift;
            }
            half.texels.push_back(mean);
        }
    }
    return half;
}

Texture::Texture(const std::string& path)
{
    const std::string bytes = ReadRegularFile(path);
    CheckSize(path, bytes);
    Source source{bytes, 0};
    const Surface read(cairo_image_surface_create_from_png_stream(Source::Read, &source));
    if (cairo_surface_status(read.get()) != CAIRO_STATUS_SUCCESS) Refuse(path);
    Level whole;
    whole.width = cairo_image_surface_get_width(read.get());
    whole.height = cairo_image_surface_get_height(read.get());
    if (whole.width <= 0 || whole.height <= 0) Refuse(path);
    whole.texels.resize(static_cast<std::size_t>(whole.width) * static_cast<std::size_t>(whole.height));
    // Painted once, so that every kind of PNG arrives in the same form.
    const Surface form(
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(whole.texels.data()),
                                            CAIRO_FORMAT_ARGB32, whole.width, whole.height, 4 * whole.width));
    cairo_t* const context = cairo_create(form.get());
    cairo_set_source_surface(context, read.get(), 0.0, 0.0);
    cairo_paint(context);
    cairo_destroy(context);
    cairo_surface_finish(form.get());
    m_levels.push_back(std::move(whole));
    while (m_levels.back().texels.size() > 1) {
        m_levels.push_back(Halved(m_levels.back()));
    }
}

// Between the four texels around the place, on the level where texels are about as large as what is drawn.
Rgb Texture::Over(const Rgb& colour, double east, double north, double texels) const
{
    const double wanted = texels > 1.0 ? std::log2(texels) : 0.0;
    const Level& level =
        m_levels[static_cast<std::size_t>(std::min(wanted, static_cast<double>(m_levels.size() - 1)))];
    const double x = Limited(east) * level.width - 0.5, y = (1.0 - Limited(north)) * level.height - 0.5;
    const int column = static_cast<int>(std::floor(x)), row = static_cast<int>(std::floor(y));
    const double right = x - column, below = y - row;
    const std::array<double, 4> weights = {(1.0 - right) * (1.0 - below), right * (1.0 - below),
                                           (1.0 - right) * below, right * below};
    double alpha = 0.0;
    Rgb sum;
    for (int i = 0; i < 4; ++i) {
        const std::uint32_t texel = level.At(column + i % 2, row + i / 2);
        const double weight = weights[static_cast<std::size_t>(i)] / 255.0;
        alpha += weight * (texel >> 24);
        sum = {sum.r + weight * (texel >> 16 & 255u), sum.g + weight * (texel >> 8 & 255u),
               sum.b + weight * (texel & 255u)};
    }
    const double through = 1.0 - alpha;
    return {sum.r + through * colour.r, sum.g + through * colour.g, sum.b + through * colour.b};
}

}   // namespace qsvtin
