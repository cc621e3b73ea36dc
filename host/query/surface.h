#ifndef QSVTIN_QUERY_SURFACE_H
#define QSVTIN_QUERY_SURFACE_H

#include "host/position.h"
#include "host/query/box_tree.h"

#include "qsv_3dprocess.h"

#include <optional>
#include <utility>
#include <vector>

namespace qsvtin {

/// Answers where a place lies on a TIN, by walks through its triangles. A walk may end outside although a
/// triangle holds the place, where the mesh has notches, holes, walls or several pieces; then all triangles are
/// asked, through a tree of boxes.
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
    /// The walk starts from the triangle found last.
    std::optional<Place> Find(double x, double y);
    /// The same for many places, each from a start of its own: the answers do not depend on their order.
    std::vector<std::optional<Place>> FindAll(const std::vector<Position>& places);

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
    std::optional<CHeightFinder> m_finder;   // made when first needed, as are the next two
    std::optional<BoxTree> m_triangles;
    std::vector<std::pair<int, int>> m_outlineEdges;
    std::optional<BoxTree> m_outline;
};

}   // namespace qsvtin

#endif
