// Heights on a terrain: on the surface, beside it, in notches and holes, on skirted and merged TINs.

#include "host/query/surface.h"
#include "host/terrain/edits.h"
#include "host/terrain/polygon.h"
#include "tests/support/program.h"

#include <cmath>
#include <random>

namespace {

using namespace qsvtin;

// A comb: teeth one wide and nine high, one apart, on a back that is one high. On the plane z = 2x + 3y + 1.
constexpr int kTeeth = 12;

bool IsOnComb(double x, double y)
{
    const bool onBack = y >= -1.0 && y <= 0.0 && x >= 0.0 && x <= 2.0 * kTeeth - 1.0;
    const bool onTooth =
        y >= 0.0 && y <= 9.0 && x >= 0.0 && x <= 2.0 * kTeeth - 1.0 && std::fmod(x, 2.0) <= 1.0;
    return onBack || onTooth;
}

double Plane(double x, double y)
{
    return 2.0 * x + 3.0 * y + 1.0;
}

Breakline Comb(double east, double north)
{
    Breakline ring;
    const auto add = [&](double x, double y) {
        ring.points.push_back({east + x, north + y, Plane(x, y)});
        ring.lines.push_back(static_cast<int>(ring.points.size()));
    };
    for (int tooth = 0; tooth < kTeeth; ++tooth) {
        const double x = 2.0 * tooth;
        if (tooth > 0) add(x, 0.0);
        add(x, 9.0);
        add(x + 1.0, 9.0);
        if (tooth < kTeeth - 1) add(x + 1.0, 0.0);
    }
    add(2.0 * kTeeth - 1.0, -1.0);
    add(0.0, -1.0);
    return ring;
}

// Distance to the nearest side of a tooth, from a place on one or in the gap beside it.
double DistanceToSide(double x)
{
    const double inHalf = std::fmod(x, 1.0);
    return std::min(inHalf, 1.0 - inHalf);
}

// Walks from tooth to tooth leave the comb on the way; what stands upright is in the way of others.
TEST(Surface, FindsEveryPlaceOfANotchedTerrainWithOrWithoutWalls)
{
    for (const bool skirted : {false, true}) {
        SCOPED_TRACE(skirted ? "with walls" : "without walls");
        Terrain comb = FillPolygon(Comb(0.0, 0.0));
        if (skirted) HangSkirt(comb, -50.0);
        Surface surface(comb.tin);
        std::mt19937 random(3);
        std::uniform_real_distribution<double> x(-2.0, 2.0 * kTeeth + 1.0), y(-3.0, 11.0);
        int inside = 0;
        for (int i = 0; i < 5000; ++i) {
            // Every fourth place lies on an edge or a corner.
            const Position at{i % 4 == 0 ? std::floor(x(random)) : x(random),
                              i % 4 == 0 ? std::floor(y(random)) : y(random), 0.0};
            const auto found = surface.Find(at.x, at.y);
            ASSERT_EQ(found.has_value(), IsOnComb(at.x, at.y)) << at.x << " " << at.y;
            if (!found) continue;
            ASSERT_NEAR(found->z, Plane(at.x, at.y), 1e-9);
            ++inside;
        }
        EXPECT_GT(inside, 1500);
        for (double place = 1.25; place < 20.0; place += 0.37) {
            const auto nearest = surface.FindOnOutline(place, 8.0);
            EXPECT_NEAR(nearest.distance, DistanceToSide(place), 1e-9) << place;
            EXPECT_NEAR(nearest.at.z, Plane(nearest.at.x, nearest.at.y), 1e-9)
                << "the foot in plan, on the surface";
        }
    }
}

class Height : public ProgramTest
{
protected:
    Height() { PutHill(); }
};

TEST_F(Height, AnswersForOnePlace)
{
    const std::pair<const char*, const char*> aCase[] = {
        {"2.5 5", "5\n"},      {"5 5", "9\n"},   {"0 0", "1\n"},      {"10 3", "1\n"},
        {"-.5 -0.5", "nan\n"}, {"+5 .0", "1\n"}, {"1e1 1E+1", "1\n"}, {"11 5", "nan\n"},
    };
    for (const auto& [place, answer] : aCase) {
        EXPECT_EQ(Run(std::string("height hill.tin ") + place).out, answer) << place;
    }
    EXPECT_EQ(Run("height hill.tin 2.5 5 --nearest").out, "5 2.5 5 0\n");
    EXPECT_EQ(Run("height hill.tin -3 4 --nearest").out, "1 0 4 3\n");
    EXPECT_EQ(Run("height hill.tin 13 14 --nearest").out, "1 10 10 5\n");
    const auto on = JsonOf(Run("height hill.tin 2.5 5 --json").out);
    EXPECT_EQ(on, JsonOf(R"({"x": 2.5, "y": 5.0, "z": 5.0, "on_surface": true})"));
    const auto off = JsonOf(Run("height hill.tin 11 5 --json --nearest").out);
    EXPECT_EQ(off, JsonOf(R"({"x": 11.0, "y": 5.0, "z": 1.0, "on_surface": false,
                                             "nearest": [10.0, 5.0, 1.0], "distance": 1.0})"));
    EXPECT_TRUE(JsonOf(Run("height hill.tin 11 5 --json").out)["z"].is_null());
    for (const char* const place : {"", "1", "- 1", "1 x", "1 nan", "1 inf", "1 2 3", "1e300 1"}) {
        ExpectRefusal(std::string("height hill.tin ") + place, 2, "");
    }
}

TEST_F(Height, AnswersAStreamLineByLine)
{
    const Result result =
        RunWithInput("height hill.tin -", "2.5 5\n11 5\n\n# a comment\n5,5\r\n 5 ; 2.5 ; 99\n5\t5\tpeg\n0 0");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "5\nnan\n\n\n9\n5\n9\n1\n") << "a line for a line";
    EXPECT_EQ(RunWithInput("height hill.tin - --nearest", "-3 4\n2.5 5").out, "1 0 4 3\n5 2.5 5 0\n");
    EXPECT_EQ(RunWithInput("height hill.tin -", "").out, "");

    const Result bad = RunWithInput("height hill.tin -", "5 5\n5 five\n0 0\n");
    EXPECT_EQ(bad.status, 1);
    EXPECT_EQ(bad.out, "9\n");
    EXPECT_EQ(bad.err, "qsvtin: standard input:2: \"5 five\" is no place; give x y\n");
    EXPECT_EQ(RunWithInput("height hill.tin - --json", "5 5\n").out.back(), '\n');
    EXPECT_EQ(Run("height hill.tin - </dev/zero").status, 1) << "a line without an end";
}

// Another program asks, waits for the answer, and asks again.
TEST_F(Height, AnswersBeforeTheNextQuestion)
{
    Put("ask.sh", "mkfifo to from\n'" QSVTIN_PROGRAM "' height hill.tin - <to >from &\n"
                  "exec 3>to 4<from\n"
                  "for x in 1 2 3; do echo $x 5 >&3; read z <&4; echo $z; done\nexec 3>&-\nwait\n");
    EXPECT_EQ(Shell("timeout 20 sh ask.sh").out, "2.6\n4.2\n5.8\n");
}

TEST_F(Height, FindsBothPiecesOfAMergedTin)
{
    Put("east.txt", "100 0 3\n104 0 3\n100 4 3\n");
    ASSERT_EQ(Run("build east.txt -o east.tin").status, 0);
    ASSERT_EQ(Run("edit hill.tin --skirt 0 --merge east.tin -o both.tin").status, 0);
    EXPECT_EQ(RunWithInput("height both.tin -", "5 5\n101 1\n50 1\n0 5\n101 1\n5 5\n").out,
              "9\n3\nnan\n1\n3\n9\n");
    EXPECT_EQ(Run("height both.tin -2 5 --nearest").out, "1 0 5 2\n") << "the top of the wall, not its foot";
}

}   // namespace
