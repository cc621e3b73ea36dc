#include "host/commands/convert.h"

#include "host/commands/options.h"
#include "host/exchange/landxml.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/output/tin.h"
#include "host/output/writers.h"
#include "host/report/json_text.h"
#include "host/report/text_report.h"
#include "host/say.h"
#include "host/terrain/loaded.h"
#include "host/terrain/mesh_to_tin.h"

#include <memory>

namespace qsvtin {

namespace {

struct ConvertOptions {
    TinChoice choice;
    std::string target;
    OutputChoice outputs;
    std::string units;
    bool relink = false;
    bool json = false;
};

bool IsLandXml(const std::string& path)
{
    return WriterFor(path).write == WriteLandXml;
}

// A collection goes over whole unless the target has room for one TIN only, or one was chosen.
bool TakesAll(const ConvertOptions& options)
{
    if (!options.choice.tin.empty()) return false;
    return IsLandXml(options.target) ||
           (ExtensionOf(options.target) == ".tin" && options.outputs.form.value_or(2) != 0);
}

// Converts from the unit that the file states. @return the unit of the result
LengthUnit ToUnit(LengthUnit wanted, LengthUnit stated, CArray<CTin, CTin&>& tins)
{
    if (wanted == LengthUnit::Unknown) return stated;
    for (int i = 0; i < tins.GetSize(); ++i) {
        CTin& tin = tins[i];
        for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
            CXYZ& vertex = tin.m_aVertex[v];
            vertex.x = Convert(vertex.x, stated, wanted);
            vertex.y = Convert(vertex.y, stated, wanted);
            vertex.z = Convert(vertex.z, stated, wanted);
        }
        tin.UpdateTinRange();
    }
    return wanted;
}

// A TIN with its breaklines. As points of a survey all vertices go with these, since those of the lines alone would
// make another terrain.
Terrain TerrainOf(const TinFile& file, int index)
{
    Terrain terrain = LocalTerrain(file.tins[index], true);
    if (!file.lines.empty()) terrain.lines = file.lines[static_cast<std::size_t>(index)];
    if (!terrain.lines.empty()) terrain.surveyVertices = terrain.tin.m_aVertex.GetSize();
    return terrain;
}

// All TINs as surfaces of one file.
void WriteSurfaces(TinFile& file, const WriteOptions& write, const std::string& target)
{
    for (int i = 0; i < file.tins.GetSize(); ++i) {
        RequireUsable(file, i);
    }
    WriteFiles({{target, [&](SafeFile& to) {
                     LandXmlWriter writer(write, to);
                     for (int i = 0; i < file.tins.GetSize(); ++i) {
                         writer.AddSurface(TerrainOf(file, i), file.tins[i].m_strName.GetString());
                     }
                     writer.Finish();
                 }}});
}

// Leaves nothing in the file but what goes over.
void TakeTins(TinFile& file, const ConvertOptions& options)
{
    if (TakesAll(options)) return;
    const int chosen = ChooseTin(file, options.choice.tin);
    CArray<CTin, CTin&> tins;
    tins.Add(file.tins[chosen]);
    file.tins = tins;
    if (!file.lines.empty()) file.lines = {file.lines[static_cast<std::size_t>(chosen)]};
}

void Relink(CArray<CTin, CTin&>& tins)
{
    for (int i = 0; i < tins.GetSize(); ++i) {
        tins[i].UpdateTopology();
        UpdateStoredParts(tins[i]);
    }
}

void Rename(CArray<CTin, CTin&>& tins, const std::string& name)
{
    if (tins.GetSize() > 1) {
        throw Failure("--name is for one TIN, and the file holds more; choose one with --tin",
                      Failure::BadUsage);
    }
    tins[0].m_strName = name.c_str();
}

void Report(const ConvertOptions& options, const CArray<CTin, CTin&>& tins)
{
    int triangles = 0;
    for (int i = 0; i < tins.GetSize(); ++i) {
        triangles += tins[i].m_aTri.GetSize();
    }
    if (options.json) {
        Print(TextOf({{"written", options.target}, {"tins", tins.GetSize()}, {"triangles", triangles}}));
        return;
    }
    TextReport text;
    text.Line("TINs", static_cast<std::size_t>(tins.GetSize()));
    text.Line("triangles", static_cast<std::size_t>(triangles));
    text.Line("written", options.target);
    Print(text.Text());
}

void Write(TinFile& file, const WriteOptions& write, const std::string& target)
{
    if (ExtensionOf(target) == ".tin") {
        WriteFiles({{target, [&](SafeFile& to) { WriteTins(file.tins, write.form, to); }}});
    } else if (IsLandXml(target)) {
        WriteSurfaces(file, write, target);
    } else {
        RequireUsable(file, 0);
        Terrain terrain = TerrainOf(file, 0);
        terrain.tin.UpdateNormal();
        WriteAll(terrain, write, {target});
    }
}

void RunConvert(ConvertOptions options)
{
    options.outputs.paths = {options.target};
    CheckOutputs(options.outputs);
    const LengthUnit wanted = UnitFromOption(options.units);
    TinFile file = ReadTins(options.choice.file);
    TakeTins(file, options);
    CArray<CTin, CTin&>& tins = file.tins;
    if (options.relink) Relink(tins);
    WriteOptions& write = options.outputs.options;
    write.form = options.outputs.form.value_or(2);
    write.unit = ToUnit(wanted, file.unit, tins);
    if (!write.name.empty()) Rename(tins, write.name);
    if (write.title.empty()) write.title = tins[0].m_strName.GetString();
    write.title = OnOneLine(write.title);
    TellLinesLeftOut(file, WriterFor(options.target).holdsLines);
    Write(file, write, options.target);
    Report(options, tins);
}

}   // namespace

void DeclareConvert(CommandLine command)
{
    const auto options = std::make_shared<ConvertOptions>();
    DeclareTin(command, options->choice);
    command.Argument("OUT", options->target, "file to write, by its extension: " + KnownExtensions());
    DeclareUnits(command, options->units);
    DeclareWriteOptions(command, options->outputs);
    command.Flag("--relink", options->relink, "rebuild the links between triangles and the outline");
    DeclareJson(command, options->json);
    command.SetExample(
        "  qsvtin convert site.tin site.stl --ascii\n  qsvtin convert old.tin new.tin --format 2");
    command.SetAction([options] { RunConvert(*options); });
}

}   // namespace qsvtin
