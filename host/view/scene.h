#ifndef QSVTIN_VIEW_SCENE_H
#define QSVTIN_VIEW_SCENE_H

#include "host/exchange/length_unit.h"
#include "host/position.h"
#include "host/view/texture.h"

#include "qsv_3dprocess.h"

#include <optional>
#include <vector>

namespace qsvtin {

/// A line in space.
using Path = std::vector<Position>;

/// What is drawn: a TIN near the origin, its heights stretched, and what hangs on it.
struct Scene {
    CTin tin;          ///< relative to the centre, heights multiplied by the exaggeration; with normals
    Position centre;   ///< of the survey's range
    double exaggeration = 1.0;
    LengthUnit unit = LengthUnit::Unknown;   ///< of the survey
    int groundTriangles = 0;                 ///< those before are the TIN's own, the others the skirt
    double low = 0.0;                        ///< range of the heights of the ground, as surveyed
    double high = 0.0;
    std::vector<Path> outline;        ///< the ends of the ground
    std::vector<Path> breaklines;     ///< lying on the ground, see Drape
    std::optional<Texture> texture;   ///< drawn on the ground in place of the tints of its heights

    Position ToScene(const Position& survey) const
    {
        return {survey.x - centre.x, survey.y - centre.y, (survey.z - centre.z) * exaggeration};
    }
    Position ToSurvey(const Position& at) const
    {
        return {at.x + centre.x, at.y + centre.y, at.z / exaggeration + centre.z};
    }
    /// Corner k (0, 1, 2) of a triangle.
    const CXYZ& Corner(int triangle, int k) const { return tin.m_aVertex[tin.m_aTri[triangle].m_nVertex[k]]; }
};

/// The vertices get the texture coordinates of CTin::UpdateTextureCoord unless the TIN brings its own.
/// @param tin    in survey coordinates; it has triangles and its indices are sound
/// @param skirt  height down to which walls hang on the outer edges
Scene MakeScene(const CTin& tin, double exaggeration, std::optional<double> skirt);

/// The places that triangles use.
std::vector<Position> GroundOf(const Scene& scene);

}   // namespace qsvtin

#endif
