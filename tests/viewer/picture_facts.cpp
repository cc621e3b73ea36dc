// picture_facts FILE.png: how many colours a picture has, and which share of it, in percent, has the commonest one.
#include <cairo.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <map>

int main(int argc, char** argv)
{
    cairo_surface_t* const picture = cairo_image_surface_create_from_png(argc > 1 ? argv[1] : "");
    if (cairo_surface_status(picture) != CAIRO_STATUS_SUCCESS) return 1;
    const int width = cairo_image_surface_get_width(picture),
              height = cairo_image_surface_get_height(picture);
    const unsigned char* const bytes = cairo_image_surface_get_data(picture);
    std::map<std::uint32_t, int> count;
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            std::uint32_t colour = 0;
            std::memcpy(&colour, bytes + row * cairo_image_surface_get_stride(picture) + 4 * column,
                        sizeof colour);
            ++count[colour];
        }
    }
    cairo_surface_destroy(picture);
    const auto fewer = [](const auto& a, const auto& b) { return a.second < b.second; };
    const auto commonest = std::max_element(count.begin(), count.end(), fewer);
    if (commonest == count.end()) return 1;
    std::printf("%zu %d\n", count.size(),
                static_cast<int>(100LL * commonest->second / (1LL * width * height)));
    return 0;
}
