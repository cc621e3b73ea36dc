#include "host/commands/info.h"

#include "host/commands/options.h"
#include "host/input/text_file.h"
#include "host/report/tin_report.h"
#include "host/say.h"
#include "host/terrain/loaded.h"

#include <memory>

namespace qsvtin {

namespace {

struct InfoOptions {
    TinChoice choice;
    bool json = false;
};

void RunInfo(const InfoOptions& options)
{
    const TinFile file = ReadTins(options.choice.file);
    const int only = options.choice.tin.empty() ? -1 : ChooseTin(file, options.choice.tin);
    TextReport text;
    text.Line("file", file.path);
    text.Line("form", DescribeForm(file));
    if (file.unit != LengthUnit::Unknown) text.Line("unit", std::string(NameOf(file.unit)));
    Json json = {
        {"file", file.path}, {"form", file.form}, {"unit", NameOf(file.unit)}, {"tins", Json::array()}};
    for (int i = 0; i < file.tins.GetSize(); ++i) {
        if (only >= 0 && i != only) continue;
        Terrain terrain = LocalTerrain(file.tins[i], false);
        const TinFacts facts = MeasureTerrain(terrain);
        text.Line("TIN " + std::to_string(i + 1), QuotedName(facts.name));
        AddFacts(facts, text);
        if (!file.stated.empty()) AddStated(file.stated[static_cast<std::size_t>(i)], facts, text);
        Json tin = {{"number", i + 1}, {"name", facts.name}};
        tin.update(JsonOf(facts));
        if (!file.stated.empty()) tin.update(JsonOf(file.stated[static_cast<std::size_t>(i)]));
        json["tins"].push_back(tin);
    }
    Print(options.json ? TextOf(json) : text.Text());
}

}   // namespace

void DeclareInfo(CommandLine command)
{
    const auto options = std::make_shared<InfoOptions>();
    DeclareTin(command, options->choice, "only this TIN, by its number or name (all)");
    DeclareJson(command, options->json);
    command.SetExample("  qsvtin info site.tin\n  qsvtin info site.tin --tin ditch --json");
    command.SetAction([options] { RunInfo(*options); });
}

}   // namespace qsvtin
