#include "host/exchange/length_unit.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace qsvtin {

namespace {

// How many metres: a ratio of whole numbers, so that it is exact.
struct UnitFacts {
    LengthUnit unit;
    std::string_view name;
    double metres;
    double per;
    bool imperial;
    int drawingCode;
};

constexpr std::array kUnits = {
    UnitFacts{LengthUnit::Millimeter, "millimeter", 1.0, 1000.0, false, 4},
    UnitFacts{LengthUnit::Centimeter, "centimeter", 1.0, 100.0, false, 5},
    UnitFacts{LengthUnit::Meter, "meter", 1.0, 1.0, false, 6},
    UnitFacts{LengthUnit::Kilometer, "kilometer", 1000.0, 1.0, false, 7},
    UnitFacts{LengthUnit::Inch, "inch", 254.0, 10000.0, true, 1},
    UnitFacts{LengthUnit::Foot, "foot", 3048.0, 10000.0, true, 2},
    UnitFacts{LengthUnit::SurveyFoot, "USSurveyFoot", 1200.0, 3937.0, true, 21},
    UnitFacts{LengthUnit::Mile, "mile", 1609344.0, 1000.0, true, 3},
};

const UnitFacts* FactsOf(LengthUnit unit)
{
    const auto* const found =
        std::find_if(kUnits.begin(), kUnits.end(), [&](const UnitFacts& u) { return u.unit == unit; });
    return found == kUnits.end() ? nullptr : found;
}

bool SameName(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

// The foot that goes with coordinates in a unit.
LengthUnit FootOf(LengthUnit unit)
{
    return unit == LengthUnit::SurveyFoot ? LengthUnit::SurveyFoot : LengthUnit::Foot;
}

// A unit of area: how many squares of a unit of length.
struct AreaUnit {
    std::string_view name;
    double squares;
    LengthUnit side;
};

constexpr std::array kAreaUnits = {
    AreaUnit{"squareMillimeter", 1.0, LengthUnit::Millimeter},
    AreaUnit{"squareCentimeter", 1.0, LengthUnit::Centimeter},
    AreaUnit{"squareMeter", 1.0, LengthUnit::Meter},
    AreaUnit{"squareKilometer", 1.0, LengthUnit::Kilometer},
    AreaUnit{"hectare", 10000.0, LengthUnit::Meter},
    AreaUnit{"squareInch", 1.0, LengthUnit::Inch},
    AreaUnit{"squareFoot", 1.0, LengthUnit::Foot},
    AreaUnit{"squareMiles", 1.0, LengthUnit::Mile},
    AreaUnit{"acre", 43560.0, LengthUnit::Foot},
};

}   // namespace

LengthUnit UnitNamed(std::string_view name)
{
    const auto* const found = std::find_if(kUnits.begin(), kUnits.end(),
                                           [&](const UnitFacts& u) { return SameName(u.name, name); });
    return found == kUnits.end() ? LengthUnit::Unknown : found->unit;
}

LengthUnit HeightUnitNamed(std::string_view name, LengthUnit inPlan)
{
    if (name.empty()) return inPlan;
    if (SameName(name, "feet")) return FootOf(inPlan);
    return SameName(name, "miles") ? LengthUnit::Mile : UnitNamed(name);
}

std::string_view HeightNameOf(LengthUnit unit)
{
    switch (unit) {
    case LengthUnit::Meter: return "meter";
    case LengthUnit::Kilometer: return "kilometer";
    case LengthUnit::Foot:
    case LengthUnit::SurveyFoot: return "feet";
    case LengthUnit::Mile: return "miles";
    default: return "";
    }
}

std::string_view NameOf(LengthUnit unit)
{
    const UnitFacts* const facts = FactsOf(unit);
    return facts ? facts->name : "unknown";
}

std::string UnitNames()
{
    std::string names;
    for (const UnitFacts& facts : kUnits) {
        names.append(names.empty() ? "" : ", ").append(facts.name);
    }
    return names;
}

bool IsImperial(LengthUnit unit)
{
    const UnitFacts* const facts = FactsOf(unit);
    return facts && facts->imperial;
}

int DrawingCodeOf(LengthUnit unit)
{
    const UnitFacts* const facts = FactsOf(unit);
    return facts ? facts->drawingCode : 0;
}

LengthUnit UnitWithDrawingCode(int code)
{
    const auto* const found =
        std::find_if(kUnits.begin(), kUnits.end(), [&](const UnitFacts& u) { return u.drawingCode == code; });
    return found == kUnits.end() ? LengthUnit::Unknown : found->unit;
}

double Convert(double length, LengthUnit from, LengthUnit to)
{
    const UnitFacts *const given = FactsOf(from), *const wanted = FactsOf(to);
    if (!given || !wanted || given == wanted) return length;
    return length * (given->metres * wanted->per) / (given->per * wanted->metres);
}

std::optional<double> AreaInSquare(double area, std::string_view areaUnit, LengthUnit unit)
{
    const auto* const found = std::find_if(kAreaUnits.begin(), kAreaUnits.end(),
                                           [&](const AreaUnit& u) { return SameName(u.name, areaUnit); });
    if (found == kAreaUnits.end() || unit == LengthUnit::Unknown) return std::nullopt;
    const double side = Convert(1.0, found->side == LengthUnit::Foot ? FootOf(unit) : found->side, unit);
    return area * found->squares * (side * side);
}

}   // namespace qsvtin
