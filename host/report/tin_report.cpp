#include "host/report/tin_report.h"

namespace qsvtin {

void AddFacts(const TinFacts& facts, TextReport& text)
{
    const auto number = [](int value) { return std::to_string(value); };
    const auto range = [](double low, double high) { return Coordinate(low) + " to " + Coordinate(high); };
    const Soundness& found = facts.soundness;
    text.Line("vertices",
              number(facts.vertices) +
                  (facts.unused > 0 ? " (" + number(facts.unused) + " that no triangle uses)" : ""));
    text.Line("triangles",
              number(facts.triangles) + (found.walls > 0 ? " (" + number(found.walls) + " upright)" : ""));
    text.Line("pieces", number(facts.pieces));
    text.Line("outline", number(facts.outlineEdges) + " edges, " + Measure(facts.outlineLength) + " long");
    text.Line("x", range(facts.low.x, facts.high.x));
    text.Line("y", range(facts.low.y, facts.high.y));
    text.Line("z", range(facts.low.z, facts.high.z));
    text.Line("plan area", Measure(facts.planArea));
    text.Line("surface area", Measure(facts.surfaceArea));
    text.Line("sound", DescribeSoundness(found));
}

Json JsonOf(const TinFacts& facts)
{
    const Soundness& found = facts.soundness;
    return {{"vertices", facts.vertices},
            {"unused", facts.unused},
            {"triangles", facts.triangles},
            {"upright", found.walls},
            {"without_area", found.withoutArea},
            {"pieces", facts.pieces},
            {"outline_edges", facts.outlineEdges},
            {"outline_length", facts.outlineLength},
            {"boundary_entries", facts.boundaryEntries},
            {"range", JsonOfRange(facts.low, facts.high)},
            {"plan_area", facts.planArea},
            {"surface_area", facts.surfaceArea},
            {"sound", found.IsSound()},
            {"faults", found.faults.size()}};
}

void AddStated(const StatedAreas& stated, const TinFacts& facts, TextReport& text)
{
    const auto add = [&](const char* name, std::optional<double> area, double measured) {
        if (!area) return;
        text.Line(name,
                  Measure(*area) + ", that of the triangles differs by " + Coordinate(measured - *area));
    };
    add("stated plan area", stated.plan, facts.planArea);
    add("stated surface area", stated.surface, facts.surfaceArea);
}

Json JsonOf(const StatedAreas& stated)
{
    Json json = Json::object();
    if (stated.plan) json["stated_plan_area"] = *stated.plan;
    if (stated.surface) json["stated_surface_area"] = *stated.surface;
    return json;
}

std::string DescribeSoundness(const Soundness& soundness)
{
    const std::size_t count = soundness.faults.size();
    if (count == 0) return "yes";
    return "no: " + std::to_string(count) + (count == 1 ? " fault" : " faults") + ", see qsvtin check";
}

}   // namespace qsvtin
