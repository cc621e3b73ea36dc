#include <cmath>

#include "tin/tin.h"

namespace {

CXYZ Centroid(const CArray<CXYZ>& aVertex)
{
    CXYZ sum;
    for (int i = 0; i < aVertex.GetSize(); ++i) {
        sum += aVertex[i];
    }
    const double dShare = 1.0 / aVertex.GetSize();
    return CXYZ(sum.x * dShare, sum.y * dShare, sum.z * dShare);
}

// Puts the direction in which each vertex is seen from the centroid in place of its plan position: x becomes
// the horizontal angle, y the vertical one. Straight along the y axis the horizontal angle counts as 0.
void TurnIntoDirections(CArray<CXYZ>& aVertex)
{
    const CXYZ centre = Centroid(aVertex);
    for (int i = 0; i < aVertex.GetSize(); ++i) {
        CXYZ u = aVertex[i] - centre;
        const double r = u.Len();
        if (r != 0.0) {
            u /= r;
        } else {
            u.SetXYZ(0.0, 0.0, 0.0);
        }
        aVertex[i].x = u.x == 0.0 ? 0.0 : std::atan2(u.y, u.x);
        aVertex[i].y = std::asin(u.z);
    }
}

// Keeps vertices and breaklines, and gives them back, without a mesh, when memory runs out.
class PutAside
{
public:
    explicit PutAside(CTin& tin) : aInSpace(tin.m_aVertex), aLine(tin.m_aBreakLine), m_tin(tin) {}
    ~PutAside()
    {
        if (!m_bTakenUp) {
            qsv::MoveInto(m_tin.m_aVertex, aInSpace);
            qsv::MoveInto(m_tin.m_aBreakLine, aLine);
            m_tin.m_aTri.SetSize(0, -1);
            m_tin.m_aBoundary.SetSize(0, -1);
        }
    }
    PutAside(const PutAside&) = delete;
    PutAside& operator=(const PutAside&) = delete;

    void TakeUp() { m_bTakenUp = true; }

    qsv::Array<CXYZ> aInSpace;
    qsv::Array<CBreakLine> aLine;

private:
    CTin& m_tin;
    bool m_bTakenUp = false;
};

}   // namespace

int CTin::CreateTinObal()
{
    PutAside putAside(*this);
    const CArray<CXYZ>& aInSpace = putAside.aInSpace;
    const CArray<CBreakLine>& aLine = putAside.aLine;
    const int n = aInSpace.GetSize();
    m_aBreakLine.SetSize(0, -1);
    TurnIntoDirections(m_aVertex);
    const int nDone = CreateTin(0.0);
    if (nDone && !aLine.IsEmpty()) {
        m_aBreakLine.Copy(aLine);
        // Enforcement never looks at heights, but interpolates them along the line for every vertex it adds.
        // Repeated with x, then y, in place of the height, it yields the added vertices' place in space.
        const auto interpolate = [&](double CXYZ::*pCoordinate) {
            CTin tin = *this;
            tin.m_dEPS = m_dEPS;
            tin.m_dEPS2 = m_dEPS2;
            for (int i = 0; i < n; ++i) {
                tin.m_aVertex[i].z = aInSpace[i].*pCoordinate;
            }
            tin.BreakLine();
            return qsv::Array<CXYZ>(tin.m_aVertex);
        };
        const qsv::Array<CXYZ> aX = interpolate(&CXYZ::x), aY = interpolate(&CXYZ::y);
        BreakLine();
        for (int i = n; i < m_aVertex.GetSize(); ++i) {
            m_aVertex[i].SetXYZ(aX[i].z, aY[i].z, m_aVertex[i].z);
        }
    }
    m_aVertex.SetSize(nDone ? m_aVertex.GetSize() : n, -1);
    for (int i = 0; i < n; ++i) {
        m_aVertex[i] = aInSpace[i];
    }
    putAside.TakeUp();
    UpdatePtRange();
    return nDone;
}
