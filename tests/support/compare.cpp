#include "support/compare.h"

#include "support/mesh_oracle.h"

plain::Tin PlainFed(const Sites& aSite)
{
    plain::Tin tin;
    tin.BeginAddPoint(static_cast<int>(aSite.size()));
    for (const Site& s : aSite) {
        tin.AddPoint2(s.x, s.y, s.z);
    }
    tin.EndAddPoint();
    return tin;
}

void AddPlainLine(plain::Tin& tin, const Sites& aSite, bool bClose)
{
    std::vector<plain::Point> aPoint;
    for (const Site& s : aSite) {
        aPoint.push_back({s.x, s.y, s.z});
    }
    tin.AddBreakLine(aPoint, bClose ? 1 : 0);
}

std::string Dump(const plain::Tin& tin)
{
    CTin copy;   // the records only, so that one function writes both
    copy.BeginAddPoint(tin.vertex.Size());
    for (const plain::Point& p : tin.vertex) {
        copy.AddPoint2(p.x, p.y, p.z);
    }
    for (const plain::Tri& t : tin.tri) {
        CTriangle tri;
        for (int k = 0; k < 3; ++k) {
            tri.m_nVertex[k] = t.v[k];
            tri.m_nNeighbor[k] = t.n[k];
        }
        tri.m_bSelect = t.sel;
        copy.m_aTri.Add(tri);
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
    return Dump(copy);
}
