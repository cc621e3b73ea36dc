#include "support/compare.h"

#include "support/mesh_oracle.h"

plain::Tin PlainFed(const Sites& aSite)
{
    plain::Tin tin;
    for (const plain::Point& p : PlainPoints(aSite)) {
        tin.vertex.push_back(p);
    }
    return tin;
}

std::vector<plain::Point> PlainPoints(const Sites& aSite)
{
    std::vector<plain::Point> aPoint;
    for (const Site& s : aSite) {
        aPoint.push_back({s.x, s.y, s.z});
    }
    return aPoint;
}

CTin CopyOf(const plain::Tin& tin)
{
    CTin copy;
    for (const plain::Point& p : tin.vertex) {
        copy.m_aVertex.Add(CXYZ(p.x, p.y, p.z));
    }
    for (const plain::Tri& t : tin.tri) {
        copy.m_aTri.Add({{t.v[0], t.v[1], t.v[2]}, {t.n[0], t.n[1], t.n[2]}, t.sel});
    }
    for (const int nVt : tin.boundary) {
        copy.m_aBoundary.Add(nVt);
    }
    for (const plain::BreakLine& line : tin.breakLine) {
        CBreakLine bl;
        bl.m_bClose = line.closed;
        for (const int nVt : line.idx) {
            bl.m_aVertexIndex.Add(nVt);
        }
        copy.m_aBreakLine.Add(bl);
    }
    return copy;
}

std::string Dump(const plain::Tin& tin)
{
    return Dump(CopyOf(tin));
}
