#ifndef QSVTIN_OUTPUT_PALETTE_H
#define QSVTIN_OUTPUT_PALETTE_H

namespace qsvtin {

/// A colour; each part is 0 .. 1.
struct Rgb {
    double r = 0.0;
    double g = 0.0;
    double b = 0.0;
};

/// The colour that lies this share of the way from one to the other.
Rgb Mix(const Rgb& from, const Rgb& to, double share);

/// Tint of a height: from green lowlands over straw and brown to pale summits.
/// @param t  0 for the lowest, 1 for the highest place; values beyond count as these
Rgb HeightTint(double t);

/// Factor by which light changes a tint: 1 for level ground.
/// @param gx, gy  rise of the surface for a step to the east and to the north, exaggerated as wanted; steep
///                slopes count as less steep, so that a cliff does not turn black
/// The light comes from the north-west, 45 degrees high, with some from all the sky.
double HillShade(double gx, double gy);

/// The tint under that light: darkened below 1, whitened above.
Rgb Shaded(const Rgb& tint, double shade);

}   // namespace qsvtin

#endif
