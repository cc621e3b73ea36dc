#include "host/commands/check.h"

#include "host/commands/options.h"
#include "host/failure.h"
#include "host/input/text_file.h"
#include "host/report/json_text.h"
#include "host/report/text_report.h"
#include "host/say.h"
#include "host/terrain/loaded.h"
#include "host/terrain/soundness.h"

#include <map>
#include <memory>

namespace qsvtin {

namespace {

struct CheckOptions {
    TinChoice choice;
    bool json = false;
};

using FaultsByKind = std::map<MESH_FAULT, std::vector<CMeshFault>>;

FaultsByKind ByKind(const Soundness& found)
{
    FaultsByKind kinds;
    for (const CMeshFault& fault : found.faults) {
        kinds[fault.m_eKind].push_back(fault);
    }
    return kinds;
}

std::string DescribeUpright(const Soundness& found)
{
    std::string text;
    if (found.walls > 0) text += ", " + std::to_string(found.walls) + " upright triangles";
    if (found.withoutArea > 0) text += ", " + std::to_string(found.withoutArea) + " triangles without area";
    return text;
}

void AddAsText(const Soundness& found, const std::string& name, TextReport& text)
{
    constexpr std::size_t kShown = 10;
    text.Line(name, (found.IsSound() ? "sound" : "broken") + DescribeUpright(found));
    for (const auto& [kind, faults] : ByKind(found)) {
        text.Detail(std::string(GetMeshFaultText(kind)) + ": " + std::to_string(faults.size()));
        for (std::size_t i = 0; i < faults.size() && i < kShown; ++i) {
            text.Detail("    " + PlaceOf(faults[i]));
        }
        if (faults.size() > kShown) text.Detail("    and more; --json lists all");
    }
}

Json AsJson(const Soundness& found)
{
    Json json = {{"sound", found.IsSound()},
                 {"faults", found.faults.size()},
                 {"upright", found.walls},
                 {"without_area", found.withoutArea},
                 {"kinds", Json::array()}};
    for (const auto& [kind, faults] : ByKind(found)) {
        Json places = Json::array();
        for (const CMeshFault& fault : faults) {
            places.push_back(
                {{"triangle", fault.m_nTri}, {"slot", fault.m_nSlot}, {"vertex", fault.m_nVertex}});
        }
        json["kinds"].push_back(
            {{"kind", GetMeshFaultText(kind)}, {"count", faults.size()}, {"places", places}});
    }
    return json;
}

void RunCheck(const CheckOptions& options)
{
    const TinFile file = ReadTins(options.choice.file);
    const int only = options.choice.tin.empty() ? -1 : ChooseTin(file, options.choice.tin);
    std::size_t faults = 0;
    TextReport text;
    Json json = {{"file", file.path}, {"sound", true}, {"tins", Json::array()}};
    for (int i = 0; i < file.tins.GetSize(); ++i) {
        if (only >= 0 && i != only) continue;
        const std::string name = file.tins[i].m_strName.GetString();
        const Soundness found = CheckSoundness(LocalTerrain(file.tins[i], false).tin);
        faults += found.faults.size();
        AddAsText(found, "TIN " + std::to_string(i + 1) + " " + Quoted(name), text);
        Json tin = {{"number", i + 1}, {"name", name}};
        tin.update(AsJson(found));
        json["tins"].push_back(tin);
    }
    json["sound"] = faults == 0;
    Print(options.json ? TextOf(json) : text.Text());
    if (faults > 0) {
        throw Failure(file.path + " is broken: " + std::to_string(faults) +
                      (faults == 1 ? " fault" : " faults"));
    }
}

}   // namespace

void DeclareCheck(CommandLine command)
{
    const auto options = std::make_shared<CheckOptions>();
    DeclareTin(command, options->choice, "only this TIN, by its number or name (all)");
    DeclareJson(command, options->json);
    command.SetExample("  qsvtin check site.tin && echo sound");
    command.SetAction([options] { RunCheck(*options); });
}

}   // namespace qsvtin
