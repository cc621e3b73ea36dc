#include "base/dist.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr int kDecimals = 3;
// Sign, integer digits of the largest double, point, decimals.
constexpr int kLongestText = 1 + std::numeric_limits<double>::max_exponent10 + 1 + 1 + kDecimals;

// A unit as a ratio of whole numbers of metres, so that the conversion of round numbers is exact.
struct Unit {
    double dMetres, dUnits;
    const char* szName;
};

const Unit& UnitOf(DIST_UNIT eUnit)
{
    static constexpr Unit aUnit[] = {{1.0, 1.0, " m"}, {3048.0, 10000.0, " ft"}, {1200.0, 3937.0, " ftUS"}};
    return aUnit[eUnit == DIST_FOOT ? 1 : eUnit == DIST_US_FOOT ? 2 : 0];
}

bool IsShownByFixed(double dValue)
{
    const double d = std::fabs(dValue);
    return d == 0.0 || (d >= 0.001 && d < 1e9);
}

}   // namespace

CDist::CDist(double dValue, DIST_UNIT eUnit) : m_dValue(dValue), m_eUnit(eUnit) {}

CDist::~CDist() = default;

DIST_UNIT CDist::GetUnit() const
{
    return m_eUnit;
}

double CDist::GetValue() const
{
    return m_dValue;
}

double CDist::GetValue(DIST_UNIT eUnit) const
{
    const Unit &from = UnitOf(m_eUnit), &to = UnitOf(eUnit);
    if (&from == &to) {
        return m_dValue;
    }
    return m_dValue * from.dMetres / from.dUnits * to.dUnits / to.dMetres;
}

CString CDist::GetText(NUMBER_FORMAT eFormat) const
{
    CString strText = GetNumberText(m_dValue, eFormat);
    return strText += UnitOf(m_eUnit).szName;
}

CString CDist::GetNumberText(double dValue, NUMBER_FORMAT eFormat)
{
    const bool bFixed = eFormat == NUMBER_AUTO ? IsShownByFixed(dValue) : eFormat != NUMBER_EXPONENT;
    const double d = dValue == 0.0 || (bFixed && std::fabs(dValue) < 0.0005) ? 0.0 : dValue;
    // Not sprintf, whose decimal point is that of the host's locale.
    char aText[kLongestText];
    const auto result =
        std::to_chars(aText, aText + kLongestText, d,
                      bFixed ? std::chars_format::fixed : std::chars_format::scientific, kDecimals);
    return CString(aText, static_cast<int>(result.ptr - aText));
}
