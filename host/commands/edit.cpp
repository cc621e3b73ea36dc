#include "host/commands/edit.h"

#include "host/commands/options.h"
#include "host/extension.h"
#include "host/failure.h"
#include "host/input/fields.h"
#include "host/numbers.h"
#include "host/output/tin.h"
#include "host/output/writers.h"
#include "host/report/tin_report.h"
#include "host/say.h"
#include "host/terrain/edits.h"
#include "host/terrain/loaded.h"
#include "host/terrain/mesh_to_tin.h"

#include <charconv>
#include <map>
#include <memory>

namespace qsvtin {

namespace {

// One change, as given; what its value means was read beforehand.
struct Step {
    std::string option;
    std::string value;
    Position at;                   // --insert; --delete by place; z of --skirt; degrees of --trim-angle in z
    std::optional<int> vertex;     // --delete by number
    std::shared_ptr<CTin> other;   // --merge
};

struct EditOptions {
    TinChoice choice;
    OutputChoice outputs;
    std::map<std::string, std::vector<std::string>> given;   // of each option, its values
    std::vector<Step> steps;
    bool json = false;
};

[[noreturn]] void RefuseValue(const Step& step, const std::string& remedy)
{
    throw Failure(step.option + " " + step.value + ": " + remedy, Failure::BadUsage);
}

bool ParseCoordinates(const std::string& value, std::size_t count, Position& at)
{
    std::vector<std::string_view> fields;
    SplitFields(value, Separator::Comma, fields);
    double* const to[] = {&at.x, &at.y, &at.z};
    if (fields.size() != count) return false;
    for (std::size_t i = 0; i < count; ++i) {
        if (!ParseNumber(fields[i], *to[i]) || !IsCoordinate(*to[i])) return false;
    }
    return true;
}

std::optional<int> ParseVertex(const std::string& value)
{
    int vertex = 0;
    const char* const end = value.data() + value.size();
    const auto read = std::from_chars(value.data(), end, vertex);
    if (read.ec != std::errc() || read.ptr != end || vertex < 0) return std::nullopt;
    return vertex;
}

void ReadStep(Step& step)
{
    if (step.option == "--insert") {
        if (!ParseCoordinates(step.value, 3, step.at)) RefuseValue(step, "give x,y,z such as 12.5,40,3.2");
    } else if (step.option == "--delete") {
        step.vertex = ParseVertex(step.value);
        if (!step.vertex && !ParseCoordinates(step.value, 2, step.at)) {
            RefuseValue(step, "give the number of a vertex, or x,y of its place");
        }
    } else if (step.option == "--skirt") {
        if (!ParseNumber(step.value, step.at.z) || !IsCoordinate(step.at.z))
            RefuseValue(step, "give a height");
    } else if (step.option == "--trim-angle") {
        const bool read = ParseNumber(step.value, step.at.z);
        if (!read || !(step.at.z > 0.0 && step.at.z < 90.0)) {
            RefuseValue(step, "give degrees above 0 and below 90");
        }
    }
}

void LoadOther(Step& step)
{
    if (step.option != "--merge") return;
    const TinFile file = ReadTins(step.value);
    const int first = ChooseTin(file, "");
    RequireUsable(file, first);
    step.other = std::make_shared<CTin>(file.tins[first]);
}

// An origin that suits everything that takes part.
LocalOrigin CommonOrigin(const CTin& tin, const std::vector<Step>& steps)
{
    std::vector<Position> positions = UsedPositions(tin);
    for (const Step& step : steps) {
        if (step.option == "--insert") positions.push_back(step.at);
        if (!step.other) continue;
        const std::vector<Position> added = UsedPositions(*step.other);
        positions.insert(positions.end(), added.begin(), added.end());
    }
    LocalOrigin origin = WithoutLoss(ChooseOrigin(positions), tin);
    for (const Step& step : steps) {
        if (step.other) origin = WithoutLoss(origin, *step.other);
    }
    return origin;
}

// Makes the change. @return what was done, for the report
std::string Apply(const Step& step, Terrain& terrain)
{
    const auto number = [](int value) { return std::to_string(value); };
    const Position local = terrain.origin.ToLocal(step.at);
    if (step.option == "--insert") return "vertex " + number(InsertPoint(terrain, local));
    if (step.option == "--trim-angle") return number(TrimByAngle(terrain, step.at.z)) + " triangles";
    if (step.option == "--skirt") return number(HangSkirt(terrain, step.at.z)) + " triangles";
    if (step.option == "--delete") {
        const int vertex = step.vertex ? *step.vertex : NearestVertex(terrain, local);
        const CArray<CXYZ>& vertices = terrain.tin.m_aVertex;
        Position at;
        if (vertex >= 0 && vertex < vertices.GetSize()) {
            at = terrain.origin.ToSurvey({vertices[vertex].x, vertices[vertex].y, vertices[vertex].z});
        }
        DeleteVertex(terrain, vertex);
        return "vertex " + number(vertex) + " at " + Shortest(at.x) + " " + Shortest(at.y) + " " +
               Shortest(at.z);
    }
    Terrain other = MoveTo(terrain.origin, *step.other);
    Merge(terrain, other);
    return number(other.tin.GetTriSize()) + " triangles";
}

std::vector<std::string> ApplyAll(const std::vector<Step>& steps, Terrain& terrain)
{
    std::vector<std::string> done;
    for (const Step& step : steps) {
        try {
            done.push_back(Apply(step, terrain));
        } catch (const Failure& failure) {
            throw Failure(step.option + " " + step.value + ": " + failure.what());
        }
    }
    return done;
}

// A TIN file keeps the other TINs of a collection; other formats show the edited one.
void Write(TinFile& file, int edited, const Terrain& terrain, const OutputChoice& outputs)
{
    CTin moved(terrain.tin);
    for (int v = 0; v < moved.m_aVertex.GetSize(); ++v) {
        CXYZ& vertex = moved.m_aVertex[v];
        const Position at = terrain.origin.ToSurvey({vertex.x, vertex.y, vertex.z});
        vertex.x = at.x;
        vertex.y = at.y;
    }
    if (!outputs.options.name.empty()) moved.m_strName = outputs.options.name.c_str();
    file.tins[edited] = moved;
    FilesToWrite files;
    for (const std::string& path : outputs.paths) {
        if (ExtensionOf(path) == ".tin") {
            files.emplace_back(path, [&](SafeFile& to) { WriteTins(file.tins, outputs.options.form, to); });
        } else {
            files.emplace_back(path, WriterOf(terrain, outputs.options, path));
        }
    }
    WriteFiles(files);
}

void Report(const EditOptions& options, const std::vector<std::string>& done, const TinFacts& facts)
{
    TextReport text;
    Json json;
    json["steps"] = Json::array();
    for (std::size_t i = 0; i < done.size(); ++i) {
        text.Line(options.steps[i].option.substr(2), done[i]);
        json["steps"].push_back(
            {{"option", options.steps[i].option}, {"value", options.steps[i].value}, {"done", done[i]}});
    }
    AddFacts(facts, text);
    json.update(JsonOf(facts));
    json["written"] = options.outputs.paths;
    for (const std::string& path : options.outputs.paths) {
        text.Line("written", path);
    }
    Print(options.json ? TextOf(json) : text.Text());
}

void RunEdit(EditOptions options)
{
    CheckOutputs(options.outputs);
    if (options.steps.empty()) {
        throw Failure("nothing to do; give --insert, --delete, --trim-angle, --skirt or --merge",
                      Failure::BadUsage);
    }
    for (Step& step : options.steps) {
        ReadStep(step);
    }
    TinFile file = ReadTins(options.choice.file);
    const int edited = ChooseTin(file, options.choice.tin);
    RequireUsable(file, edited);
    TellLinesLeftOut(file, false);
    for (Step& step : options.steps) {
        LoadOther(step);
    }
    Terrain terrain = MoveTo(CommonOrigin(file.tins[edited], options.steps), file.tins[edited]);
    const std::vector<std::string> done = ApplyAll(options.steps, terrain);
    UpdateStoredParts(terrain.tin);
    terrain.tin.UpdateDepth();
    terrain.tin.UpdateNormal();
    WriteOptions& write = options.outputs.options;
    write.form = options.outputs.form.value_or(file.form == TinFile::kOtherForm ? 2 : file.form);
    write.unit = file.unit;
    if (write.title.empty()) write.title = terrain.tin.m_strName.GetString();
    write.title = OnOneLine(write.title);
    Write(file, edited, terrain, options.outputs);
    Report(options, done, MeasureTerrain(terrain));
}

// The changes in the order of the command line.
std::vector<Step> StepsInOrder(CommandLine command, const EditOptions& options)
{
    std::vector<Step> steps;
    std::map<std::string, std::size_t> next;
    for (const std::string& name : command.Given()) {
        const auto given = options.given.find(name);
        if (given == options.given.end()) continue;
        steps.push_back({name, given->second[next[name]++], {}, std::nullopt, nullptr});
    }
    return steps;
}

void DeclareStep(CommandLine command, EditOptions& options, const std::string& name, const std::string& type,
                 const std::string& what)
{
    command.Option(name, options.given[name], type, what);
}

}   // namespace

void DeclareEdit(CommandLine command)
{
    const auto options = std::make_shared<EditOptions>();
    DeclareTin(command, options->choice);
    DeclareStep(command, *options, "--insert", "X,Y,Z", "insert a point on the surface");
    DeclareStep(
        command, *options, "--delete", "VERTEX|X,Y",
        "delete a vertex by its number, from 0 and as it is at that step, or the one nearest to a place");
    DeclareStep(command, *options, "--trim-angle", "DEG",
                "cut off outer triangles with an angle of at most this at the outer edge");
    DeclareStep(command, *options, "--skirt", "Z", "hang walls on the outline, down or up to this height");
    DeclareStep(command, *options, "--merge", "FILE",
                "add the first TIN of a file; the pieces are not joined");
    DeclareOutputs(command, options->outputs);
    DeclareJson(command, options->json);
    command.SetExample("  qsvtin edit site.tin --delete 17 --insert 12.5,40,3.2 --trim-angle 5 -o site.tin");
    command.SetAction([options, command] {
        options->steps = StepsInOrder(command, *options);
        RunEdit(*options);
    });
}

}   // namespace qsvtin
