#include "base/rotation.h"

#include <cmath>
#include <utility>

CRot::CRot()
{
    I();
}

void CRot::I()
{
    for (int r = 0; r < 3; ++r) {
        for (int c = 0; c < 3; ++c) {
            m_aRow[r][c] = r == c ? 1.0 : 0.0;
        }
    }
}

void CRot::T()
{
    std::swap(m_aRow[0][1], m_aRow[1][0]);
    std::swap(m_aRow[0][2], m_aRow[2][0]);
    std::swap(m_aRow[1][2], m_aRow[2][1]);
}

// An elementary rotation mixes two rows and leaves the third: with (a, b) the axes that the angle turns
// into each other, row a becomes c*a - s*b and row b becomes s*a + c*b.
int CRot::AddMatrix(ROT_SYSTEM eSystem, const CWPK& wpk)
{
    int a = 0, b = 0;
    double dAngle = 0.0;
    switch (eSystem) {
    case ROT_ABOUT_X: a = 1, b = 2, dAngle = wpk.k; break;
    case ROT_ABOUT_Y: a = 2, b = 0, dAngle = wpk.w; break;
    case ROT_ABOUT_Z: a = 0, b = 1, dAngle = wpk.p; break;
    default: return 0;
    }
    const double c = std::cos(dAngle), s = std::sin(dAngle);
    for (int i = 0; i < 3; ++i) {
        const double dA = m_aRow[a][i], dB = m_aRow[b][i];
        m_aRow[a][i] = c * dA - s * dB;
        m_aRow[b][i] = s * dA + c * dB;
    }
    return 1;
}

void CRot::Rotate(const CXYZ& in, CXYZ& out) const
{
    double aSum[3];
    for (int r = 0; r < 3; ++r) {
        aSum[r] = m_aRow[r][0] * in.x + m_aRow[r][1] * in.y + m_aRow[r][2] * in.z;
    }
    out.SetXYZ(aSum[0], aSum[1], aSum[2]);
}
