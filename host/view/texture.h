#ifndef QSVTIN_VIEW_TEXTURE_H
#define QSVTIN_VIEW_TEXTURE_H

#include "host/output/palette.h"

#include <cstdint>
#include <string>
#include <vector>

namespace qsvtin {

/// A picture that is drawn on the ground, such as an aerial photograph.
class Texture
{
public:
    /// Reads a PNG. @throws Failure when it cannot be read or is none
    explicit Texture(const std::string& path);

    int Width() const { return m_levels.front().width; }   ///< in texels
    int Height() const { return m_levels.front().height; }

    /// The texture over a colour, which shows through where it is transparent.
    /// @param east, north  texture coordinates: 0 .. 1 from its left to its right and from its lower to its
    ///                     upper edge; values beyond count as these
    /// @param texels       how many of them lie along what is drawn: many are averaged
    Rgb Over(const Rgb& colour, double east, double north, double texels) const;

private:
    // Rows from above, each texel 0xAARRGGBB with the colour multiplied by alpha.
    struct Level {
        int width = 0;
        int height = 0;
        std::vector<std::uint32_t> texels;

        std::uint32_t At(int column, int row) const;
    };
    static Level Halved(const Level& level);

    std::vector<Level> m_levels;   // each with half as many texels a side as the one before (Williams 1983)
};

}   // namespace qsvtin

#endif
