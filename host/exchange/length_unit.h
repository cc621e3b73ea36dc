#ifndef QSVTIN_EXCHANGE_LENGTH_UNIT_H
#define QSVTIN_EXCHANGE_LENGTH_UNIT_H

#include <optional>
#include <string>
#include <string_view>

namespace qsvtin {

/// The unit of the coordinates of a file.
enum class LengthUnit { Unknown, Millimeter, Centimeter, Meter, Kilometer, Inch, Foot, SurveyFoot, Mile };

/// A unit by the name that LandXML has for it, such as meter or USSurveyFoot; upper and lower case are one.
/// @return Unknown for any other name
LengthUnit UnitNamed(std::string_view name);

/// The unit of heights by the name that LandXML has for it: meter, kilometer, feet or miles, or as UnitNamed. Feet
/// are of the kind that the coordinates in plan are in, or else international. Nothing: the same unit as in plan.
/// @return Unknown for any other name
LengthUnit HeightUnitNamed(std::string_view name, LengthUnit inPlan);
/// That name; empty where LandXML has none.
std::string_view HeightNameOf(LengthUnit unit);

/// The name that LandXML has for a unit; "unknown" for Unknown.
std::string_view NameOf(LengthUnit unit);

/// The names of all units, for messages.
std::string UnitNames();

/// True for the units that LandXML counts as imperial.
bool IsImperial(LengthUnit unit);

/// The number that drawings in DXF have for a unit ($INSUNITS); 0 for Unknown.
int DrawingCodeOf(LengthUnit unit);
/// @return Unknown for any other number
LengthUnit UnitWithDrawingCode(int code);

/// A length in another unit. Rounds twice at most, the same on every machine; no digit changes between equal
/// units, or where one is unknown.
double Convert(double length, LengthUnit from, LengthUnit to);

/// An area whose unit is named as LandXML does (squareMeter, hectare, squareFoot, acre, ...), in the square of a
/// unit of length. A squareFoot is that of the foot of the file, and so is that of an acre.
/// @return nothing when one of the units is not known
std::optional<double> AreaInSquare(double area, std::string_view areaUnit, LengthUnit unit);

}   // namespace qsvtin

#endif
