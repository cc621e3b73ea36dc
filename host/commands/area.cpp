#include "host/commands/area.h"

#include "host/commands/options.h"
#include "host/report/json_text.h"
#include "host/report/text_report.h"
#include "host/say.h"
#include "host/terrain/loaded.h"

#include <memory>

namespace qsvtin {

namespace {

struct AreaOptions {
    TinChoice choice;
    bool json = false;
};

void RunArea(const AreaOptions& options)
{
    const TinFile file = ReadTins(options.choice.file);
    const int chosen = ChooseTin(file, options.choice.tin);
    RequireUsable(file, chosen);
    Terrain terrain = LocalTerrain(file.tins[chosen], false);
    const double planArea = terrain.tin.CalAllAreaXY(), surfaceArea = terrain.tin.CalAllArea();
    if (options.json) {
        Print(TextOf({{"file", file.path},
                      {"number", chosen + 1},
                      {"name", file.tins[chosen].m_strName.GetString()},
                      {"plan_area", planArea},
                      {"surface_area", surfaceArea}}));
        return;
    }
    TextReport text;
    text.Line("plan area", Coordinate(planArea));
    text.Line("surface area", Coordinate(surfaceArea));
    Print(text.Text());
}

}   // namespace

void DeclareArea(CommandLine command)
{
    const auto options = std::make_shared<AreaOptions>();
    DeclareTin(command, options->choice);
    DeclareJson(command, options->json);
    command.SetExample("  qsvtin area site.tin");
    command.SetAction([options] { RunArea(*options); });
}

}   // namespace qsvtin
