#include "host/commands/area.h"

#include "host/commands/options.h"
#include "host/failure.h"
#include "host/query/level_volume.h"
#include "host/report/json_text.h"
#include "host/report/text_report.h"
#include "host/say.h"
#include "host/terrain/loaded.h"

#include <cmath>
#include <memory>
#include <optional>

namespace qsvtin {

namespace {

struct AreaOptions {
    TinChoice choice;
    std::optional<double> level;
    bool json = false;
};

void AddLevel(double level, const LevelVolume& found, TextReport& text)
{
    const auto share = [](const LevelShare& part) {
        return Measure(part.volume) + " over a plan area of " + Measure(part.planArea);
    };
    text.Line("above " + Coordinate(level), share(found.above));
    text.Line("below " + Coordinate(level), share(found.below));
}

Json JsonOf(double level, const LevelVolume& found)
{
    return {{"height", level},
            {"volume_above", found.above.volume},
            {"plan_area_above", found.above.planArea},
            {"volume_below", found.below.volume},
            {"plan_area_below", found.below.planArea}};
}

void RunArea(const AreaOptions& options)
{
    if (options.level && !IsCoordinate(*options.level)) {
        throw Failure("--level must be a height, such as 120.5", Failure::BadUsage);
    }
    const TinFile file = ReadTins(options.choice.file);
    const int chosen = ChooseTin(file, options.choice.tin);
    RequireUsable(file, chosen);
    Terrain terrain = LocalTerrain(file.tins[chosen], false);
    const double planArea = terrain.tin.CalAllAreaXY(), surfaceArea = terrain.tin.CalAllArea();
    Json json = {{"file", file.path},
                 {"number", chosen + 1},
                 {"name", file.tins[chosen].m_strName.GetString()},
                 {"plan_area", planArea},
                 {"surface_area", surfaceArea}};
    TextReport text;
    text.Line("plan area", Measure(planArea));
    text.Line("surface area", Measure(surfaceArea));
    if (options.level) {
        const LevelVolume found = MeasureAtLevel(terrain.tin, *options.level);
        AddLevel(*options.level, found, text);
        json["level"] = JsonOf(*options.level, found);
    }
    Print(options.json ? TextOf(json) : text.Text());
}

}   // namespace

void DeclareArea(CommandLine command)
{
    const auto options = std::make_shared<AreaOptions>();
    DeclareTin(command, options->choice);
    command.Option("--level", options->level, "Z",
                   "tell the volumes between the surface and this height too, above and below it");
    DeclareJson(command, options->json);
    command.SetExample("  qsvtin area site.tin\n  qsvtin area pond.tin --level 81.5");
    command.SetAction([options] { RunArea(*options); });
}

}   // namespace qsvtin
