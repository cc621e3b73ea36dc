#include "host/output/page_layout.h"
#include "host/output/relief.h"
#include "host/output/round_steps.h"
#include "host/output/safe_file.h"
#include "host/output/writers.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace {

using namespace qsvtin;
namespace fs = std::filesystem;

using SafeFileTest = ScratchFolder;

TEST_F(SafeFileTest, ReplacesTheTargetOnlyWhenItIsWhole)
{
    Put("target", "old");
    fs::permissions(Path("target"), fs::perms::owner_read | fs::perms::owner_write);
    {
        SafeFile file(Path("target"));
        file.Write("new");
        file.Finish();
        EXPECT_EQ(Get("target"), "old");
    }
    EXPECT_EQ(Get("target"), "old");
    EXPECT_EQ(Count(), 1) << "what was written is gone";

    SafeFile file(Path("target"));
    SafeFile other(Path("target"));
    file.Write("new");
    other.Write("other");
    file.Finish();
    file.TakePlace();
    EXPECT_EQ(Get("target"), "new");
    EXPECT_EQ(fs::status(Path("target")).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(SafeFileTest, WritesThroughLinks)
{
    Put("real", "old");
    fs::create_symlink("real", Path("link"));
    SafeFile file(Path("link"));
    file.Write("new");
    file.Finish();
    file.TakePlace();
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    EXPECT_EQ(Get("real"), "new");
}

using WritersTest = ScratchFolder;

// n x n points on a bumpy surface, 100 wide.
Terrain Bumps(int n)
{
    Terrain terrain;
    terrain.tin.BeginAddPoint(n * n);
    for (int i = 0; i < n * n; ++i) {
        const int column = i % n, row = i / n;
        const double x = 100.0 * column / (n - 1), y = 100.0 * row / (n - 1);
        terrain.tin.AddPoint2(x, y, std::sin(0.1 * x) * std::cos(0.1 * y));
    }
    terrain.tin.EndAddPoint();
    EXPECT_EQ(terrain.tin.CreateTin(0.0), 1);
    terrain.tin.UpdateNormal();
    return terrain;
}

TEST_F(WritersTest, PlanShowsLinesWhereThereAreSomeAndEdgesWhereTheyCanBeToldApart)
{
    const auto strokes = [&](const Terrain& terrain) {
        WriteAll(terrain, {}, {Path("plan.svg")});
        const std::string svg = Get("plan.svg");
        std::size_t count = 0;
        for (std::size_t at = svg.find("M "); at != std::string::npos; at = svg.find("M ", at + 1)) ++count;
        return count;
    };
    const std::size_t coarse = strokes(Bumps(20)), fine = strokes(Bumps(130));
    EXPECT_GT(coarse, 3u * 19u * 19u) << "two triangles a square have three edges of their own";
    EXPECT_LT(fine, 2000u) << "of 50,000 edges only the outline is left";

    const std::string breaklineColour = "stroke:rgb(72%,5%,22%)", crossingColour = "fill:rgb(100%,86%,10%)";
    Terrain terrain = Bumps(20);
    strokes(terrain);
    EXPECT_EQ(Get("plan.svg").find(breaklineColour), std::string::npos);
    EXPECT_EQ(Get("plan.svg").find(crossingColour), std::string::npos);
    terrain.lines.push_back({{0, 21, 42}, {1, 2, 3}, false});
    terrain.crossings.push_back({5.0, 5.0, {}});
    strokes(terrain);
    EXPECT_NE(Get("plan.svg").find(breaklineColour), std::string::npos);
    EXPECT_NE(Get("plan.svg").find(crossingColour), std::string::npos);
}

TEST(PlanView, ExaggeratesGentleGroundOnly)
{
    const double aCase[][2] = {{2.0, 1.0}, {0.5, 1.0}, {0.25, 2.0}, {0.1, 5.0}, {0.001, 10.0}, {0.0, 10.0}};
    for (const auto& c : aCase) {
        PlanView view;
        view.vertices = {{0, 0, 0}, {10, 0, 6 * c[0]}, {0, 10, 8 * c[0]}};   // rises by c[0] along (0.6, 0.8)
        view.triangles = {{0, 1, 2}};
        EXPECT_NEAR(GradientOf(view, 0).x, 0.6 * c[0], 1e-12);
        EXPECT_NEAR(GradientOf(view, 0).y, 0.8 * c[0], 1e-12);
        EXPECT_EQ(HeightExaggeration(view), c[1]) << c[0];
    }
}

TEST(RoundSteps, AreOneTwoFive)
{
    const double aCase[][2] = {{1.0, 1.0},   {1.1, 2.0},      {2.0, 2.0}, {3.0, 5.0},         {6.0, 10.0},
                               {0.03, 0.05}, {700.0, 1000.0}, {0.0, 1.0}, {std::nan(""), 1.0}};
    for (const auto& c : aCase) {
        EXPECT_DOUBLE_EQ(RoundStepAtLeast(c[0]), c[1]) << c[0];
    }
    EXPECT_EQ(MultiplesBetween(-0.3, 0.7, 0.5), (std::vector<double>{0.0, 0.5}));
    EXPECT_EQ(MultiplesBetween(10.0, 30.0, 10.0), (std::vector<double>{10.0, 20.0, 30.0}))
        << "both ends count";
    EXPECT_EQ(WithDecimalsOf(0.05, 0.1), "0.10");
    EXPECT_EQ(WithDecimalsOf(200.0, 21530200.0), "21530200");
    EXPECT_EQ(WithDecimalsOf(1.0, -0.0), "0");
}

TEST(PageLayout, ShowsTheWholeTerrainInsideTheMap)
{
    for (const auto& [width, height] :
         {std::pair{1000.0, 500.0}, {500.0, 1000.0}, {1e6, 1.0}, {1e-3, 1e-3}}) {
        for (const bool wholePage : {false, true}) {
            PlanView view;
            view.high = {width, height, 1.0};
            const PageLayout page = LayOutPage(view, wholePage);
            EXPECT_GT(page.toPage.X(0.0), page.map.left);
            EXPECT_LT(page.toPage.X(width), page.map.Right());
            EXPECT_GT(page.toPage.Y(height), page.map.top);
            EXPECT_LT(page.toPage.Y(0.0), page.map.Bottom());
            EXPECT_LE(page.legend.Right(), page.width);
            EXPECT_LE(page.footer.Bottom(), page.height);
            EXPECT_LE(page.width, 842.0 + 1e-9);
            EXPECT_LE(page.height, 842.0 + 1e-9);
        }
    }
}

// A square of 48 whose lower left corner is at (edge, edge), as a fan of slivers around a centre.
PlanView Fan(double edge, const Position& centre)
{
    constexpr int kASide = 39;
    const Position aCorner[] = {
        {edge, edge, 0}, {edge + 48, edge, 3}, {edge + 48, edge + 48, 0}, {edge, edge + 48, 3}};
    PlanView view;
    for (int i = 0; i < 4 * kASide; ++i) {
        const Position &from = aCorner[i / kASide], &to = aCorner[(i / kASide + 1) % 4];
        const double along = static_cast<double>(i % kASide) / kASide;
        view.vertices.push_back({from.x + along * (to.x - from.x), from.y + along * (to.y - from.y), from.z});
        view.triangles.push_back({i, (i + 1) % (4 * kASide), 4 * kASide});
    }
    view.vertices.push_back(centre);
    view.gradients.resize(view.vertices.size());
    view.high.z = 5.0;
    return view;
}

// Every one of the 3 x 3 samples of a pixel belongs to exactly one triangle inside the square and to none
// outside, also when edges and corners lie on samples.
TEST(Relief, HasNoSeamsAndNoOverlaps)
{
    for (const double edge : {8.0, 8.5}) {
        for (const Position& centre : {Position{20.37, 33.71, 5.0}, {20.5, 33.5, 5.0}, {9.5, 9.5, 5.0}}) {
            const Relief relief = DrawRelief(Fan(edge, centre), {0.0, 64.0, 1.0}, 64, 64, 1.0);
            std::uint32_t hits = 0;
            for (std::size_t i = 0; i < relief.pixels.size(); ++i) {
                const std::uint32_t alpha = relief.pixels[i] >> 24;
                const std::size_t row = i / 64, column = i % 64;
                hits += (alpha * 9 + 127) / 255;
                if (row >= 9 && row < 55 && column >= 9 && column < 55) {
                    ASSERT_EQ(alpha, 255u) << edge << " " << row << " " << column;
                }
            }
            EXPECT_EQ(hits, 9u * 48u * 48u) << edge << " " << centre.x;
        }
    }
}

// A pyramid: of its four sides the north-western one is the brightest and the south-eastern one the darkest.
TEST(Relief, IsLitFromTheNorthWest)
{
    PlanView view;
    view.vertices = {{0, 0, 0}, {40, 0, 0}, {40, 40, 0}, {0, 40, 0}, {20, 20, 10}};
    view.triangles = {{0, 1, 4}, {1, 2, 4}, {2, 3, 4}, {3, 0, 4}};
    for (const Position& p : view.vertices) {
        view.gradients.push_back({0.02 * (20 - p.x), 0.02 * (20 - p.y)});
    }
    view.low.z = -1e6;   // one tint everywhere
    view.high.z = 1e6;
    const Relief relief = DrawRelief(view, {0.0, 40.0, 1.0}, 40, 40, 1.0);
    const auto brightness = [&](std::size_t column, std::size_t row) {
        const std::uint32_t pixel = relief.pixels[row * 40 + column];
        return (pixel >> 16 & 255) + (pixel >> 8 & 255) + (pixel & 255);
    };
    const std::uint32_t north = brightness(20, 10), west = brightness(10, 20), south = brightness(20, 30),
                        east = brightness(30, 20);
    EXPECT_EQ(north, west);
    EXPECT_EQ(south, east);
    EXPECT_GT(north, south + 60);
}

}   // namespace
