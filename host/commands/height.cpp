#include "host/commands/height.h"

#include "host/commands/options.h"
#include "host/failure.h"
#include "host/input/fields.h"
#include "host/input/text_file.h"
#include "host/numbers.h"
#include "host/query/surface.h"
#include "host/report/json_text.h"
#include "host/say.h"
#include "host/terrain/loaded.h"

#include <cmath>
#include <iostream>
#include <memory>
#include <optional>

namespace qsvtin {

namespace {

struct HeightOptions {
    TinChoice choice;
    std::string x;   // or -
    std::string y;
    bool nearest = false;
    bool json = false;
};

// x and y at the beginning of a line; what follows them, a height for instance, is passed over.
bool ParsePlace(std::string_view line, std::vector<std::string_view>& fields, Position& at)
{
    const Separator separator = line.find(';') != std::string_view::npos   ? Separator::Semicolon
                                : line.find(',') != std::string_view::npos ? Separator::Comma
                                                                           : Separator::Blank;
    SplitFields(line, separator, fields);
    return fields.size() >= 2 && ParseNumber(fields[0], at.x) && ParseNumber(fields[1], at.y) &&
           IsCoordinate(at.x) && IsCoordinate(at.y);
}

// Collects places and turns them into lines of answer, many at a time.
class Answers
{
public:
    Answers(const CTin& tin, const HeightOptions& options)
        : m_options(options), m_terrain(LocalTerrain(tin, false)), m_surface(m_terrain.tin)
    {
    }

    void Ask(const Position& at) { m_asked.emplace_back(at); }
    // Nothing was asked: the answer is an empty line.
    void AskNothing() { m_asked.emplace_back(std::nullopt); }
    std::size_t Waiting() const { return m_asked.size(); }

    // The answers to all that was asked since the last time.
    std::string Take()
    {
        std::vector<Position> places;
        for (const auto& at : m_asked) {
            if (at) places.push_back(m_terrain.origin.ToLocal(*at));
        }
        const auto found = m_surface.FindAll(places);
        std::string answers;
        std::size_t next = 0;
        for (const auto& at : m_asked) {
            if (at) {
                answers += Answer(*at, places[next], found[next]);
                ++next;
            } else {
                answers += '\n';
            }
        }
        m_asked.clear();
        return answers;
    }

private:
    std::string Answer(const Position& asked, const Position& local,
                       const std::optional<Surface::Place>& found)
    {
        Position at{asked.x, asked.y, found ? found->z : std::nan("")};
        double distance = 0.0;
        if (!found && m_options.nearest) {
            const auto nearest = m_surface.FindOnOutline(local.x, local.y);
            at = m_terrain.origin.ToSurvey(nearest.at);
            distance = nearest.distance;
        }
        return m_options.json ? AsJson(asked, at, distance, found.has_value()) : AsText(at, distance);
    }

    std::string AsText(const Position& at, double distance) const
    {
        if (!m_options.nearest) return Shortest(at.z) + "\n";
        return Shortest(at.z) + " " + Shortest(at.x) + " " + Shortest(at.y) + " " + Shortest(distance) + "\n";
    }

    std::string AsJson(const Position& asked, const Position& at, double distance, bool onSurface) const
    {
        Json json = {{"x", asked.x}, {"y", asked.y}, {"z", at.z}, {"on_surface", onSurface}};
        if (m_options.nearest) {
            json["nearest"] = JsonOf(at);
            json["distance"] = distance;
        }
        return TextOf(json, -1);
    }

    const HeightOptions& m_options;
    Terrain m_terrain;
    Surface m_surface;
    std::vector<std::optional<Position>> m_asked;
};

// The next line, or as much of it as a place could take up: a device may never end its line.
bool NextLine(std::streambuf& input, std::string& line)
{
    constexpr std::size_t kLongest = 1 << 16;
    using Traits = std::streambuf::traits_type;
    line.clear();
    Traits::int_type next = input.sbumpc();
    if (Traits::eq_int_type(next, Traits::eof())) return false;
    while (!Traits::eq_int_type(next, Traits::eof()) && next != '\n' && line.size() < kLongest) {
        line += Traits::to_char_type(next);
        next = input.sbumpc();
    }
    return true;
}

// One answer a line, at once when no more lines are waiting: another program may ask and wait in turn.
void AnswerStream(Answers& answers)
{
    constexpr std::size_t kMostWaiting = 1 << 15;
    std::ios::sync_with_stdio(false);
    std::streambuf& input = *std::cin.rdbuf();
    std::string line;
    std::vector<std::string_view> fields;
    for (int number = 1; NextLine(input, line); ++number) {
        const std::string_view text = Trimmed(line);
        Position at;
        if (text.empty() || text.front() == '#') {
            answers.AskNothing();
        } else if (ParsePlace(text, fields, at)) {
            answers.Ask(at);
        } else {
            Print(answers.Take());
            throw Failure("standard input:" + std::to_string(number) + ": " + Quoted(text) +
                          " is no place; give x y");
        }
        if (answers.Waiting() >= kMostWaiting || input.in_avail() <= 0) Print(answers.Take());
    }
    Print(answers.Take());
}

void RunHeight(const HeightOptions& options)
{
    const bool stream = options.x == "-" && options.y.empty();
    Position at;
    std::vector<std::string_view> fields;
    if (!stream && !ParsePlace(options.x + " " + options.y, fields, at)) {
        throw Failure("give a place as two numbers, x y, or - to read places from standard input",
                      Failure::BadUsage);
    }
    const TinFile file = ReadTins(options.choice.file);
    const int chosen = ChooseTin(file, options.choice.tin);
    RequireUsable(file, chosen);
    Answers answers(file.tins[chosen], options);
    if (stream) {
        AnswerStream(answers);
    } else {
        answers.Ask(at);
        Print(answers.Take());
    }
}

}   // namespace

void DeclareHeight(CommandLine command)
{
    const auto options = std::make_shared<HeightOptions>();
    DeclareTin(command, options->choice);
    command.Argument(
        "X", options->x,
        "east; or -: lines of x y from standard input, each answered by a line; nan off the surface");
    command.OptionalArgument("Y", options->y, "north");
    command.Flag(
        "--nearest", options->nearest,
        "off the surface, answer for the nearest place of the outline; every answer is z x y distance");
    command.Flag("--json", options->json, "answer as JSON, an object a line");
    command.SetExample(
        "  qsvtin height site.tin 12.5 40\n  cut -d' ' -f1,2 stakes.txt | qsvtin height site.tin -");
    command.SetAction([options] { RunHeight(*options); });
}

}   // namespace qsvtin
