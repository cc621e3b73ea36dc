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
bool ParsePlace(std::string_view line, Position& at)
{
    const Separator separator = line.find(';') != std::string_view::npos   ? Separator::Semicolon
                                : line.find(',') != std::string_view::npos ? Separator::Comma
                                                                           : Separator::Blank;
    std::vector<std::string_view> fields;
    SplitFields(line, separator, fields);
    return fields.size() >= 2 && ParseNumber(fields[0], at.x) && ParseNumber(fields[1], at.y) &&
           IsCoordinate(at.x) && IsCoordinate(at.y);
}

// Turns places into lines of answer.
class Answers
{
public:
    Answers(const CTin& tin, const HeightOptions& options)
        : m_options(options), m_terrain(LocalTerrain(tin, false)), m_surface(m_terrain.tin)
    {
    }

    std::string For(const Position& asked)
    {
        const Position local = m_terrain.origin.ToLocal(asked);
        const auto found = m_surface.Find(local.x, local.y);
        Position at{asked.x, asked.y, found ? found->z : std::nan("")};
        double distance = 0.0;
        if (!found && m_options.nearest) {
            const auto nearest = m_surface.FindOnOutline(local.x, local.y);
            at = m_terrain.origin.ToSurvey(nearest.at);
            distance = nearest.distance;
        }
        return m_options.json ? AsJson(asked, at, distance, found.has_value()) : AsText(at, distance);
    }

private:
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
    std::ios::sync_with_stdio(false);
    std::streambuf& input = *std::cin.rdbuf();
    std::string pending, line;
    for (int number = 1; NextLine(input, line); ++number) {
        const std::string_view text = Trimmed(line);
        Position at;
        if (text.empty() || text.front() == '#') {
            pending += "\n";
        } else if (ParsePlace(text, at)) {
            pending += answers.For(at);
        } else {
            Print(pending);
            throw Failure("standard input:" + std::to_string(number) + ": " + Quoted(text) +
                          " is no place; give x y");
        }
        if (pending.size() > (1 << 16) || input.in_avail() <= 0) {
            Print(pending);
            pending.clear();
        }
    }
    Print(pending);
}

void RunHeight(const HeightOptions& options)
{
    const bool stream = options.x == "-" && options.y.empty();
    Position at;
    if (!stream && !ParsePlace(options.x + " " + options.y, at)) {
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
        Print(answers.For(at));
    }
}

}   // namespace

void DeclareHeight(CLI::App& app)
{
    const auto options = std::make_shared<HeightOptions>();
    DeclareTin(app, options->choice);
    app.add_option(
           "X", options->x,
           "east; or -: lines of x y from standard input, each answered by a line; nan off the surface")
        ->required();
    app.add_option("Y", options->y, "north");
    app.add_flag(
        "--nearest", options->nearest,
        "off the surface, answer for the nearest place of the outline; every answer is z x y distance");
    app.add_flag("--json", options->json, "answer as JSON, an object a line");
    SetExample(app,
               "  qsvtin height site.tin 12.5 40\n  cut -d' ' -f1,2 stakes.txt | qsvtin height site.tin -");
    app.callback([options] { RunHeight(*options); });
}

}   // namespace qsvtin
