#ifndef QSV_TIN_INTERNAL_SLOTS_H
#define QSV_TIN_INTERNAL_SLOTS_H

namespace qsv {

// The three slots of a triangle, counter-clockwise, counted modulo 3. Vertex slot k sits at a corner;
// neighbour slot k lies across the edge that ENDS at vertex slot k; -1 is the outside.
//
//                 v2
//                /  \              y
//          n0   /    \   n2        |
//              /      \            +-- x
//            v0 ------ v1
//                 n1
//
// Edges are counted by the slot they start from: edge k runs from vertex slot k to NextSlot(k).
constexpr int NextSlot(int k)
{
    return k == 2 ? 0 : k + 1;
}
constexpr int PrevSlot(int k)
{
    return k == 0 ? 2 : k - 1;
}
// Edge k ends at NextSlot(k), so its neighbour is stored there.
constexpr int NeighborSlotOfEdge(int k)
{
    return NextSlot(k);
}
// The edge facing vertex slot k runs from NextSlot(k) to PrevSlot(k).
constexpr int NeighborSlotOpposite(int k)
{
    return PrevSlot(k);
}
constexpr bool IsSlot(int k)
{
    return k >= 0 && k <= 2;
}

}   // namespace qsv

#endif
