#include "host/input/survey.h"

#include "host/exchange/exchange_file.h"
#include "host/failure.h"
#include "host/input/breakline_text.h"
#include "host/input/survey_text.h"
#include "host/input/text_file.h"
#include "host/say.h"

#include <algorithm>
#include <utility>

namespace qsvtin {

namespace {

// Why a survey is read. To build, one surface has to be chosen, and the user has options to set things right.
enum class Use { Build, LinesAlone };

template <class Item>
void Append(std::vector<Item>& all, const std::vector<Item>& more)
{
    all.insert(all.end(), more.begin(), more.end());
}

std::string NamesOfSurfaces(const ExchangeFile& file)
{
    constexpr std::size_t kShown = 20;
    std::string names;
    for (std::size_t i = 0; i < file.surfaces.size() && i < kShown; ++i) {
        names += (i > 0 ? ", " : "") + QuotedName(file.surfaces[i].name);
    }
    return names + AndMore(file.surfaces.size(), kShown);
}

class SurveyReader
{
public:
    SurveyReader(const SurveySources& sources, Use use) : m_sources(sources), m_use(use)
    {
        m_survey.unit = sources.unit;
    }

    SurveyData Read()
    {
        for (const std::string& path : m_sources.points) {
            IsExchangeFile(path) ? ReadExchange(path, true) : ReadPoints(path);
        }
        for (const std::string& path : m_sources.breaklines) {
            IsExchangeFile(path) ? ReadExchange(path, false) : ReadBlocks(path);
        }
        return std::move(m_survey);
    }

private:
    // Ends the command for the bad lines of one file, unless they may be passed over and others were good.
    void JudgeBadLines(const std::vector<BadLine>& bad, bool nothingElse) const
    {
        if (bad.empty() || (m_sources.skipBad && !nothingElse)) return;
        const BadLine& first = bad.front();
        const std::string place = first.file + ":" + std::to_string(first.line) + ": " + first.reason;
        if (nothingElse && bad.size() > 1)
            throw Failure(place + "; no line could be read, give one point a line: x y z");
        const std::string more =
            bad.size() > 1 ? " (" + std::to_string(bad.size()) + " such lines in all)" : "";
        throw Failure(place + "; fix the line" + (m_use == Use::Build ? " or pass --skip-bad" : "") + more);
    }

    void ReadPoints(const std::string& path)
    {
        TextFile text(path);
        std::vector<BadLine> bad;
        PointStrings strings(m_sources.codes);
        PointFile file = ReadSurveyPoints(text, m_sources.order, bad, m_sources.strings ? &strings : nullptr);
        const std::vector<Breakline> lines = strings.Take();
        JudgeBadLines(bad, file.points.empty() && lines.empty());
        if (m_sources.strings) TellStrings(path, lines.empty(), strings.StrayEnds());
        m_survey.columns.emplace_back(path, file.columns);
        m_survey.pointFiles.push_back(std::move(file));
        Append(m_survey.badLines, bad);
        Append(m_survey.breaklines, lines);
    }

    static void TellStrings(const std::string& path, bool none, int strayEnds)
    {
        if (none) {
            Note(path +
                 ": no line begins in it; descriptions such as KERB B begin one, and d in --order tells "
                 "their column");
        }
        if (strayEnds > 0) {
            Note(path + ": " + std::to_string(strayEnds) +
                 " points end a line that was not begun; they are points like others");
        }
    }

    void ReadBlocks(const std::string& path)
    {
        TextFile text(path);
        std::vector<BadLine> bad;
        const BreaklineFile file = ReadBreaklines(text, bad);
        JudgeBadLines(bad, file.lines.empty());
        m_survey.columns.emplace_back(path, file.columns);
        Append(m_survey.badLines, bad);
        Append(m_survey.breaklines, file.lines);
    }

    void ReadExchange(const std::string& path, bool withPoints)
    {
        ExchangeFile file = ReadExchangeFile(path);
        AgreeOnUnit(file);
        m_survey.columns.emplace_back(
            path,
            file.format + (file.unit == LengthUnit::Unknown ? "" : " in " + std::string(NameOf(file.unit))));
        RequireChoice(file);
        const std::size_t before = m_survey.breaklines.size();
        for (SurfaceData& surface : file.surfaces) {
            if (IsWanted(surface)) Add(file, surface, withPoints);
        }
        if (!withPoints && m_survey.breaklines.size() == before) {
            throw Failure(path +
                          " holds no lines; give breaklines of a surface, polylines of a drawing, or text "
                          "in blocks of x y z lines");
        }
        for (const std::string& remark : file.remarks) {
            Note(path + ": " + remark);
        }
    }

    void RequireChoice(const ExchangeFile& file) const
    {
        if (std::none_of(file.surfaces.begin(), file.surfaces.end(),
                         [&](const SurfaceData& surface) { return IsWanted(surface); })) {
            throw Failure(file.path + " holds no surface of the name given; --surface takes one of " +
                              NamesOfSurfaces(file),
                          Failure::BadUsage);
        }
        if (m_use == Use::Build && m_sources.surfaces.empty() && !file.areLayers &&
            file.surfaces.size() > 1) {
            throw Failure(file.path + " holds " + std::to_string(file.surfaces.size()) +
                              " surfaces; choose with --surface: " + NamesOfSurfaces(file),
                          Failure::BadUsage);
        }
    }

    bool IsWanted(const SurfaceData& surface) const
    {
        const std::vector<std::string>& wanted = m_sources.surfaces;
        return wanted.empty() || std::find(wanted.begin(), wanted.end(), surface.name) != wanted.end();
    }

    // The first unit that a file states is that of the survey, unless one was asked for.
    void AgreeOnUnit(const ExchangeFile& file)
    {
        if (file.unit == LengthUnit::Unknown) return;
        if (m_survey.unit == LengthUnit::Unknown) m_survey.unit = file.unit;
        if (m_sources.unit == LengthUnit::Unknown && m_survey.unit != file.unit) {
            throw Failure(file.path + " is in " + std::string(NameOf(file.unit)) +
                              ", another file before it in " + std::string(NameOf(m_survey.unit)) +
                              (m_use == Use::Build ? "; pass --units to convert"
                                                   : "; give lines that are all in one unit"),
                          Failure::BadUsage);
        }
    }

    void Add(const ExchangeFile& file, SurfaceData& surface, bool withPoints)
    {
        UseMesh(file, surface, withPoints);
        ToSurveyUnit(file, surface.points);
        for (Breakline& line : surface.breaklines) {
            ToSurveyUnit(file, line.points);
        }
        for (BoundaryRing& ring : surface.boundaries) {
            ToSurveyUnit(file, ring.line.points);
        }
        if (withPoints) {
            m_survey.pointFiles.push_back(
                {file.path, {}, std::move(surface.points), std::move(surface.pointLines)});
        }
        Append(m_survey.breaklines, surface.breaklines);
        if (withPoints) Append(m_survey.boundaries, surface.boundaries);
    }

    // Points and lines may be stored as a mesh without triangles.
    void UseMesh(const ExchangeFile& file, SurfaceData& surface, bool withPoints) const
    {
        MeshData& mesh = surface.mesh;
        const bool hasTriangles = withPoints && !mesh.triangles.empty();
        const std::string triangles = std::to_string(mesh.triangles.size()) + " triangles";
        if (surface.HasSource()) {
            if (hasTriangles) {
                Note(file.path + ": the " + triangles +
                     " in it are not used, its points and lines are; qsvtin convert keeps triangles");
            }
            return;
        }
        if (hasTriangles) {
            throw Failure(file.path + ": surface " + Quoted(surface.name) + " is made of " + triangles +
                          " already; qsvtin convert keeps them");
        }
        mesh.vertexLines.resize(mesh.vertices.size());
        for (const std::vector<int>& line : mesh.lines) {
            surface.breaklines.push_back(LineOf(file, surface, line));
        }
        surface.points = std::move(mesh.vertices);
        surface.pointLines = std::move(mesh.vertexLines);
    }

    static Breakline LineOf(const ExchangeFile& file, const SurfaceData& surface,
                            const std::vector<int>& line)
    {
        Breakline made{file.path, static_cast<int>(surface.breaklines.size()) + 1, {}, {}, {}};
        for (const int vertex : line) {
            made.points.push_back(surface.mesh.vertices[static_cast<std::size_t>(vertex)]);
            made.lines.push_back(surface.mesh.vertexLines[static_cast<std::size_t>(vertex)]);
        }
        return made;
    }

    void ToSurveyUnit(const ExchangeFile& file, std::vector<Position>& points) const
    {
        for (Position& p : points) {
            p = {Convert(p.x, file.unit, m_survey.unit), Convert(p.y, file.unit, m_survey.unit),
                 Convert(p.z, file.unit, m_survey.unit)};
        }
    }

    const SurveySources& m_sources;
    const Use m_use;
    SurveyData m_survey;
};

}   // namespace

SurveyData ReadSurvey(const SurveySources& sources)
{
    return SurveyReader(sources, Use::Build).Read();
}

SurveyData ReadLines(const std::vector<std::string>& paths, LengthUnit unit)
{
    SurveySources sources;
    sources.breaklines = paths;
    sources.unit = unit;
    return SurveyReader(sources, Use::LinesAlone).Read();
}

}   // namespace qsvtin
