#include <cmath>
#include <limits>

#include "grid3dsphere/grid_3d_sphere.h"
#include "grid3dsphere/grid_steps.h"

namespace {

constexpr int kColumnMask = 3;   // left, centre, right
constexpr int kRowShift = 2;     // top, middle, bottom stand above them

// An angle just below 360 that is written as 360 is 0.
CString AngleText(double dAngle, NUMBER_FORMAT eFormat)
{
    const CString strText = CDist::GetNumberText(dAngle, eFormat);
    const bool bFullTurn = strText == CDist::GetNumberText(360.0, eFormat);
    return bFullTurn ? CDist::GetNumberText(0.0, eFormat) : strText;
}

bool IsPixel(double d)
{
    return d >= std::numeric_limits<int>::min() && d <= std::numeric_limits<int>::max();
}

}   // namespace

ZENITH_MODE CGrid3DSphere::GetZenithMode() const
{
    return m_eZenithMode;
}

NUMBER_FORMAT CGrid3DSphere::GetNumberFormat() const
{
    return m_eNumberFormat;
}

int CGrid3DSphere::GetTextAlign() const
{
    return m_nTextAlign;
}

int CGrid3DSphere::SetZenithMode(ZENITH_MODE eMode)
{
    if (eMode < ZENITH_0_FULL || eMode > NADIR_0_SIGNED) {
        return 0;
    }
    m_eZenithMode = eMode;
    UpdateTexts();
    return 1;
}

int CGrid3DSphere::SetNumberFormat(NUMBER_FORMAT eFormat)
{
    if (eFormat < NUMBER_FIXED || eFormat > NUMBER_AUTO) {
        return 0;
    }
    m_eNumberFormat = eFormat;
    UpdateTexts();
    return 1;
}

int CGrid3DSphere::SetTextAlign(int nAlign)
{
    if (nAlign < 0 || (nAlign & kColumnMask) > GRID_TEXT_RIGHT ||
        nAlign > GRID_TEXT_BOTTOM + GRID_TEXT_RIGHT) {
        return 0;
    }
    m_nTextAlign = nAlign;
    return 1;
}

void CGrid3DSphere::MakeLabels(double dStepH, double dStepV)
{
    const double dAboveHorizon = qsv::MiddleOfGap(0.0, dStepV, 90.0);
    for (int i = 0; i < m_aLine.GetSize(); ++i) {
        const double dAngle = m_aLine[i].m_dAngle;
        if (m_aLine[i].m_eKind == GRID_LINE_H) {
            AddLabel(i, dAngle, dAboveHorizon);
            continue;
        }
        double dLast = -1.0;
        for (const double dSide : {0.0, 90.0, 180.0, 270.0}) {   // one is seen from wherever one looks
            const double dH = qsv::MiddleOfGap(dSide, dStepH, 360.0);
            if (dH > dLast) {
                AddLabel(i, dH, dAngle);
            }
            dLast = dH;
        }
    }
    AddLabel(-1, 0.0, 270.0);
    AddLabel(-1, 0.0, 90.0);
    UpdateTexts();
}

void CGrid3DSphere::AddLabel(int nLine, double dH, double dV)
{
    CGridLabel label;
    label.m_nLine = nLine;
    label.m_dH = dH;
    label.m_dV = dV;
    GetXYZ(dH, dV, label.m_pos);
    m_aLabel.Add(label);
}

void CGrid3DSphere::UpdateTexts()
{
    for (int i = 0; i < m_aLabel.GetSize(); ++i) {
        CGridLabel& label = m_aLabel[i];
        const bool bOnLine = label.m_nLine >= 0 && label.m_nLine < m_aLine.GetSize();
        const bool bNamesH = bOnLine && m_aLine[label.m_nLine].m_eKind == GRID_LINE_H;
        const double dAngle = bNamesH ? label.m_dH : GetReading(label.m_dV, m_eZenithMode);
        label.m_strText = AngleText(dAngle, m_eNumberFormat);
    }
}

int CGrid3DSphere::PlaceLabel(int nLabel, double dScrX, double dScrY, int nTextWidth, int nTextHeight)
{
    if (HideLabel(nLabel) == 0) {
        return 0;
    }
    // Halves of the text's size that lie before its place: none, one or both.
    const int nColumn = m_nTextAlign & kColumnMask, nRow = m_nTextAlign >> kRowShift;
    const double dLeft = std::floor(dScrX - 0.5 * nColumn * nTextWidth + 0.5);
    const double dTop = std::floor(dScrY - 0.5 * nRow * nTextHeight + 0.5);
    if (!IsPixel(dLeft) || !IsPixel(dTop)) {
        return 0;
    }
    CGridLabel& label = m_aLabel[nLabel];
    label.m_point = CPoint(static_cast<int>(dLeft), static_cast<int>(dTop));
    label.m_bPlaced = 1;
    return 1;
}

int CGrid3DSphere::HideLabel(int nLabel)
{
    if (nLabel < 0 || nLabel >= m_aLabel.GetSize()) {
        return 0;
    }
    m_aLabel[nLabel].m_bPlaced = 0;
    return 1;
}
