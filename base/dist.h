#ifndef QSV_BASE_DIST_H
#define QSV_BASE_DIST_H

#include "platform/afx_string.h"
#include "platform/export.h"

/// Units of a distance.
enum DIST_UNIT : int {
    DIST_METRE = 0,   ///< m
    DIST_FOOT,        ///< international foot, 0.3048 m exactly; ft
    DIST_US_FOOT      ///< survey foot of the United States, 1200/3937 m exactly; ftUS
};

/// How a number is written: three digits after the point, which is a point in every locale.
enum NUMBER_FORMAT : int {
    NUMBER_FIXED = 0,   ///< 1234.500, as "%.3lf" gives
    NUMBER_EXPONENT,    ///< 1.234e+03, as "%.3le" gives
    /// As NUMBER_FIXED while that shows the number: from 0.001 up to below 1e9, and 0. Else as "%.3e" gives.
    NUMBER_AUTO
};

/// A distance together with its unit. A unit that is none of DIST_UNIT counts as metre.
class QSV_API CDist
{
public:
    /// A number of units.
    CDist(double dValue = 0.0, DIST_UNIT eUnit = DIST_METRE);
    CDist(const CDist&) = default;              ///< a copy, unit included
    CDist& operator=(const CDist&) = default;   ///< a copy, unit included
    ~CDist();

    /// The distance's own unit.
    DIST_UNIT GetUnit() const;
    /// The number in the distance's own unit, as given.
    double GetValue() const;
    /// The number in another unit; in its own unit it comes back unchanged.
    double GetValue(DIST_UNIT eUnit) const;

    /// The number and its unit, such as "12.500 m".
    CString GetText(NUMBER_FORMAT eFormat = NUMBER_FIXED) const;

    /// A number alone. What rounds to zero is written without a sign. A format that is none of NUMBER_FORMAT
    /// counts as NUMBER_FIXED.
    static CString GetNumberText(double dValue, NUMBER_FORMAT eFormat = NUMBER_FIXED);

private:
    double m_dValue;
    DIST_UNIT m_eUnit;
};

#endif
