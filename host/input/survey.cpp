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

// Ends the command for the bad lines of one file, unless they may be passed over and others were good.
void JudgeBadLines(const std::vector<BadLine>& bad, bool nothingElse, bool skipBad)
{
    if (bad.empty() || (skipBad && !nothingElse)) return;
    const BadLine& first = bad.front();
    const std::string place = first.file + ":" + std::to_string(first.line) + ": " + first.reason;
    if (nothingElse && bad.size() > 1)
        throw Failure(place + "; no line could be read, give one point a line: x y z");
    const std::string more =
        bad.size() > 1 ? " (" + std::to_string(bad.size() - 1) + " more such lines)" : "";
    throw Failure(place + "; fix the line or pass --skip-bad" + more);
}

template <class Item>
void Append(std::vector<Item>& all, const std::vector<Item>& more)
{
    all.insert(all.end(), more.begin(), more.end());
}

std::string NamesOfSurfaces(const ExchangeFile& file)
{
    std::string names;
    for (const SurfaceData& surface : file.surfaces) {
        names += (names.empty() ? "" : ", ") + Quoted(surface.name);
    }
    return names;
}

class SurveyReader
{
public:
    explicit SurveyReader(const SurveySources& sources) : m_sources(sources) { m_survey.unit = sources.unit; }

    SurveyData Read()
    {
        for (const std::string& path : m_sources.points) {
            IsExchangeFile(path) ? ReadExchange(path, true) : ReadPoints(path);
        }
        for (const std::string& path : m_sources.breaklines) {
            IsExchangeFile(path) ? ReadExchange(path, false) : ReadLines(path);
        }
        return std::move(m_survey);
    }

private:
    void ReadPoints(const std::string& path)
    {
        TextFile text(path);
        std::vector<BadLine> bad;
        PointStrings strings(m_sources.codes);
        PointFile file = ReadSurveyPoints(text, m_sources.order, bad, m_sources.strings ? &strings : nullptr);
        const std::vector<Breakline> lines = strings.Take();
        JudgeBadLines(bad, file.points.empty() && lines.empty(), m_sources.skipBad);
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

    void ReadLines(const std::string& path)
    {
        TextFile text(path);
        std::vector<BadLine> bad;
        const BreaklineFile file = ReadBreaklines(text, bad);
        JudgeBadLines(bad, file.lines.empty(), m_sources.skipBad);
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
        for (SurfaceData& surface : file.surfaces) {
            if (IsWanted(surface)) Add(file, surface, withPoints);
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
        if (m_sources.surfaces.empty() && !file.areLayers && file.surfaces.size() > 1) {
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
                              "; pass --units to convert",
                          Failure::BadUsage);
        }
    }

    void Add(const ExchangeFile& file, SurfaceData& surface, bool withPoints)
    {
        UseVerticesAsPoints(file, surface);
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

    // Points that were stored as the vertices of a mesh without triangles.
    void UseVerticesAsPoints(const ExchangeFile& file, SurfaceData& surface) const
    {
        const std::string triangles = std::to_string(surface.mesh.triangles.size()) + " triangles";
        if (surface.HasSource()) {
            if (!surface.mesh.triangles.empty()) {
                Note(file.path + ": the " + triangles +
                     " in it are not used, its points and lines are; qsvtin convert keeps triangles");
            }
            return;
        }
        if (!surface.mesh.triangles.empty()) {
            throw Failure(file.path + ": surface " + Quoted(surface.name) + " is made of " + triangles +
                          " already; qsvtin convert keeps them");
        }
        surface.points = std::move(surface.mesh.vertices);
        surface.pointLines = std::move(surface.vertexLines);
        surface.pointLines.resize(surface.points.size());
    }

    void ToSurveyUnit(const ExchangeFile& file, std::vector<Position>& points) const
    {
        for (Position& p : points) {
            p = {Convert(p.x, file.unit, m_survey.unit), Convert(p.y, file.unit, m_survey.unit),
                 Convert(p.z, file.unit, m_survey.unit)};
        }
    }

    const SurveySources& m_sources;
    SurveyData m_survey;
};

}   // namespace

SurveyData ReadSurvey(const SurveySources& sources)
{
    return SurveyReader(sources).Read();
}

}   // namespace qsvtin
