#ifndef QSVTIN_TERRAIN_SOUNDNESS_H
#define QSVTIN_TERRAIN_SOUNDNESS_H

#include "qsv_3dprocess.h"

#include <string>
#include <vector>

namespace qsvtin {

/// What a look at a whole TIN found.
struct Soundness {
    std::vector<CMeshFault> faults;   ///< the gravest kind first, then by place
    int walls = 0;         ///< triangles that stand upright: no fault, but without a height in plan
    int withoutArea = 0;   ///< triangles whose corners lie on one line: no fault either

    bool IsSound() const { return faults.empty(); }
};

/// Looks for everything that a TIN must not have.
Soundness CheckSoundness(const CTin& tin);

/// How many triangles run clockwise in plan, by more than rounding: the surface is folded there. CheckSoundness names
/// them; this only counts, in linear time.
int CountFolded(const CTin& tin);

/// A fault and its place in words, such as "triangle 7, slot 1, vertex 12".
std::string PlaceOf(const CMeshFault& fault);

}   // namespace qsvtin

#endif
