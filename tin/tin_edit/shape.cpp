#include "tin/internal/mesh.h"
#include "tin/internal/plan.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

constexpr double kFullTurn = 6.283185307179586;   // larger than any angle of a triangle

const CXYZ& Corner(const CTin& tin, int nTri, int nSlot)
{
    return VertexAt(tin.m_aVertex, tin.m_aTri[nTri].m_nVertex[nSlot]);
}

double AngleAtSlot(const CTin& tin, int nTri, int nSlot)
{
    return AngleAt(Corner(tin, nTri, nSlot), Corner(tin, nTri, NextSlot(nSlot)),
                   Corner(tin, nTri, PrevSlot(nSlot)));
}

double EdgeLength(const CTin& tin, int nTri, int nEdge)
{
    return Corner(tin, nTri, nEdge).Len(Corner(tin, nTri, NextSlot(nEdge)));
}

double EdgeLengthXY(const CTin& tin, int nTri, int nEdge)
{
    const CXYZ &a = Corner(tin, nTri, nEdge), &b = Corner(tin, nTri, NextSlot(nEdge));
    return CXYZ(a.x, a.y, 0.0).Len(CXYZ(b.x, b.y, 0.0));
}

// The longest edge by fnLength, the first of equal ones; edge 0 when all lengths are 0.
template <class LENGTH>
int LongestEdge(const CTin& tin, int nTri, double& dLength, LENGTH fnLength)
{
    int nLongest = 0;
    dLength = 0.0;
    for (int k = 0; k < 3; ++k) {
        const double d = fnLength(tin, nTri, k);
        if (d > dLength) {
            dLength = d;
            nLongest = k;
        }
    }
    return nLongest;
}

}   // namespace

double CTin::GetLength(int nTri, int nEdge)
{
    return nTri > 0 && nTri < m_aTri.GetSize() && IsSlot(nEdge) ? EdgeLength(*this, nTri, nEdge) : 0.0;
}

int CTin::GetAngleXY(int nTri, int nSlot, double& dAngle)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nSlot)) {
        dAngle = 0.0;
        return 0;
    }
    dAngle = AngleAtSlot(*this, nTri, nSlot);
    return 1;
}

double CTin::GetMinAngle(int nTri)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return 0.0;
    }
    const CTriangle& tri = m_aTri[nTri];
    return GetMinAngle(tri.m_nVertex[0], tri.m_nVertex[1], tri.m_nVertex[2]);
}

double CTin::GetMinAngle(int nVtA, int nVtB, int nVtC)
{
    const CXYZ &a = VertexAt(m_aVertex, nVtA), &b = VertexAt(m_aVertex, nVtB), &c = VertexAt(m_aVertex, nVtC);
    double dMin = AngleAt(a, b, c);
    const double dAtB = AngleAt(b, a, c), dAtC = AngleAt(c, a, b);
    if (dAtB < dMin) {
        dMin = dAtB;
    }
    if (dAtC < dMin) {
        dMin = dAtC;
    }
    return dMin;
}

int CTin::GetMinAngle2(int nTri, double& dAngle)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return -1;
    }
    int nSmallest = 0;
    dAngle = kFullTurn;
    for (int k = 0; k < 3; ++k) {
        const double d = AngleAtSlot(*this, nTri, k);
        if (d < dAngle) {
            dAngle = d;
            nSmallest = k;
        }
    }
    return nSmallest;
}

int CTin::Get2ndAngle(int nTri, double& dAngle)
{
    if (!IsIndexOf(m_aTri, nTri)) {
        return -1;
    }
    const double aAngle[] = {AngleAtSlot(*this, nTri, 0), AngleAtSlot(*this, nTri, 1),
                             AngleAtSlot(*this, nTri, 2)};
    const int nMiddle = MiddleOfThree(aAngle);
    dAngle = aAngle[nMiddle];
    return nMiddle;
}

int CTin::GetMaxLengthXY(int nTri, double& dLength)
{
    dLength = 0.0;
    return IsIndexOf(m_aTri, nTri) ? LongestEdge(*this, nTri, dLength, EdgeLengthXY) : -1;
}

int CTin::GetMaxLength(int nTri, double& dLength)
{
    dLength = 0.0;
    return IsIndexOf(m_aTri, nTri) ? LongestEdge(*this, nTri, dLength, EdgeLength) : -1;
}

int CTin::GetTriSedeLengthXY(int nTri, int nEdge, double& dLength)
{
    if (!IsIndexOf(m_aTri, nTri) || !IsSlot(nEdge)) {
        return 0;
    }
    dLength = EdgeLengthXY(*this, nTri, nEdge);
    return 1;
}
