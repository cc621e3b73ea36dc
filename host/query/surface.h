#ifndef QSVTIN_QUERY_SURFACE_H
#define QSVTIN_QUERY_SURFACE_H

#include "host/position.h"
#include "host/query/box_tree.h"

#include "qsv_3dprocess.h"

#include <optional>
#include <utility>
#include <vector>

namespace qsvtin {

/// Answers where a place lies on a TIN. Every search walks from the triangle found last, which is short
/// for places that follow each other. A walk may end outside although a triangle holds the place, where
/// the mesh has notches, holes, walls or several pieces; then all triangles are asked, through a tree of boxes.
class Surface
{
public:
    /// @param tin  with sound indices; it must neither move nor change while this object is used
    explicit Surface(CTin& tin);

    struct Place {
        int triangle = -1;
        double z = 0.0;
    };
    /// The triangle that holds a place, and the height there, never beyond the heights of its corners.
    /// Where several do, any of them; triangles that stand upright have no height in plan and do not count.
    std::optional<Place> Find(double x, double y);

    struct OutlinePlace {
        Position at;
        double distance = 0.0;   ///< in plan
    };
    /// The place of the outline that is nearest in plan, with its height there. Edges at which walls hang count
    /// as outline.
    OutlinePlace FindOnOutline(double x, double y);

private:
    bool IsNear(int triangle, double x, double y) const;
    std::optional<Place> PlaceOn(int triangle, double x, double y) const;
    std::optional<Place> Search(double x, double y);

    CTin& m_tin;
    int m_last = 0;
    std::optional<BoxTree> m_triangles;   // made when first needed, as is the outline
    std::vector<std::pair<int, int>> m_outlineEdges;
    std::optional<BoxTree> m_outline;
};

}   // namespace qsvtin

#endif
