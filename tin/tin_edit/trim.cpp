#include "tin/internal/mesh.h"
#include "tin/internal/slots.h"
#include "tin/tin.h"

using namespace qsv;

namespace {

// Whether the edge across neighbour slot k lies outside.
bool IsOuter(const CArray<CTriangle>& aTri, int nTri, int k)
{
    return NeighborAt(aTri, nTri, k) < 0;
}

int CountOuterEdges(const CArray<CTriangle>& aTri, int nTri)
{
    return IsOuter(aTri, nTri, 0) + IsOuter(aTri, nTri, 1) + IsOuter(aTri, nTri, 2);
}

void Deselect(CArray<CTriangle>& aTri)
{
    for (int t = 0; t < aTri.GetSize(); ++t) {
        aTri[t].m_bSelect = 0;
    }
}

// The plan angles at both ends of the outer edge that lies across neighbour slot k.
void BaseAngles(CTin& tin, int nTri, int k, double& dStart, double& dEnd)
{
    tin.GetAngleXY(nTri, PrevSlot(k), dStart);
    tin.GetAngleXY(nTri, k, dEnd);
}

}   // namespace

// After every deletion the search starts over at triangle 1; triangle 0 is examined on the first pass only.
int CTin::DelTriWithAngle(double dAngle, int bSingleOutside)
{
    if (dAngle == 0.0 || dAngle != dAngle) {
        return 1;
    }
    for (int t = 0; t < m_aTri.GetSize();) {
        const int nOuter = CountOuterEdges(m_aTri, t);
        bool bDeleted = false;
        for (int k = 0; k < 3 && !bDeleted && !(nOuter > 1 && bSingleOutside != 0); ++k) {
            if (IsOuter(m_aTri, t, k)) {
                double dStart = 0.0, dEnd = 0.0;
                BaseAngles(*this, t, k, dStart, dEnd);
                bDeleted = !(dStart > dAngle && dEnd > dAngle) && DelTri(t);
            }
        }
        t = bDeleted ? 1 : t + 1;
    }
    return 1;
}

int CTin::SelectTriWithAngle(double dAngle)
{
    Deselect(m_aTri);
    int nSelected = 0;
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3 && m_aTri[t].m_bSelect == 0; ++k) {
            if (IsOuter(m_aTri, t, k)) {
                double dStart = 0.0, dEnd = 0.0;
                BaseAngles(*this, t, k, dStart, dEnd);
                m_aTri[t].m_bSelect = dStart <= dAngle || dEnd <= dAngle ? 1 : 0;
            }
        }
        nSelected += m_aTri[t].m_bSelect;
    }
    return nSelected;
}

// Measured is edge k, the one after the outer edge, and triangle 0 measures 0: kept so, since hosts tuned
// their limits to it.
int CTin::SelectTriWithLength(double dLength)
{
    Deselect(m_aTri);
    int nSelected = 0;
    for (int t = 0; t < m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3 && m_aTri[t].m_bSelect == 0; ++k) {
            m_aTri[t].m_bSelect = IsOuter(m_aTri, t, k) && GetLength(t, k) > dLength ? 1 : 0;
        }
        nSelected += m_aTri[t].m_bSelect;
    }
    return nSelected;
}
