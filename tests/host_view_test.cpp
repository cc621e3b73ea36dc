// Pictures of a TIN from any direction: what is painted where, what a pixel shows, and the program's answers.

#include "host/view/painter.h"
#include "host/view/pick.h"
#include "host/view/surface_colours.h"
#include "host/view/view_picture.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/wait.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

namespace {

using qsvtin::Drawing;
using qsvtin::PictureOptions;
using qsvtin::Scene;
using qsvtin::View;
using qsvtin::ViewFrame;

// Hills and a gorge, far from the origin of the coordinates.
CTin Hills()
{
    constexpr double kEast = 3500000.0, kNorth = 5400000.0;
    std::mt19937 random(7);
    std::uniform_real_distribution<double> place(0.0, 1000.0);
    CTin tin;
    for (int i = 0; i < 2500; ++i) {
        const double x = place(random), y = place(random);
        const double gorge = 90.0 / (1.0 + std::pow((x - 0.6 * y - 200.0) / 30.0, 2.0));
        tin.AddPoint(kEast + x, kNorth + y,
                     300.0 + 80.0 * std::sin(x / 90.0) * std::cos(y / 120.0) + 0.05 * y - gorge);
    }
    EXPECT_EQ(tin.CreateTin(0.0), 1);
    return tin;
}

// A sheet of cells over (0 .. 1, 0 .. 1), placed in space by a function.
template <class Place>
CTin Sheet(int cells, Place place)
{
    CTin tin;
    for (int row = 0; row <= cells; ++row) {
        for (int column = 0; column <= cells; ++column) {
            const CXYZ p = place(static_cast<double>(column) / cells, static_cast<double>(row) / cells);
            tin.m_aVertex.Add(p);
        }
    }
    for (int row = 0; row < cells; ++row) {
        for (int column = 0; column < cells; ++column) {
            const int a = row * (cells + 1) + column, b = a + cells + 1;
            tin.AddTri(a, a + 1, b);
            tin.AddTri(a + 1, b + 1, b);
        }
    }
    tin.UpdateTopology();
    return tin;
}

// A wave that leans over until it hangs above its own foot.
CTin OverhangingWave()
{
    return Sheet(30, [](double u, double v) {
        const double z = 25.0 * std::sin(6.0 * u) + 5.0 * v;
        return CXYZ(100.0 * u + 1.1 * z, 100.0 * v + 0.2 * z, z);
    });
}

// A ramp that winds up two and a half times over the same ground.
CTin SpiralRamp()
{
    return Sheet(40, [](double u, double v) {
        const double angle = 16.0 * u, radius = 20.0 + 30.0 * v;
        return CXYZ(radius * std::cos(angle), radius * std::sin(angle), 45.0 * u);
    });
}

PictureOptions Picture(const View& view, int width, int height)
{
    PictureOptions options;
    options.view = view;
    options.width = width;
    options.height = height;
    return options;
}

std::vector<View> Views()
{
    return {{180.0, 90.0, false}, {205.0, 30.0, false}, {40.0, 12.0, false}, {310.0, 25.0, true},
            {120.0, 55.0, true},  {180.0, 90.0, true},  {77.0, 5.0, true}};
}

// The triangle nearest to the eye at the middle of each pixel: one pixel after the other, every triangle.
std::vector<int> NearestTriangles(const Scene& scene, const Drawing& drawing, int width, int height)
{
    std::vector<int> owners(static_cast<std::size_t>(width * height), -1);
    std::vector<double> depths(owners.size(), HUGE_VAL);
    for (int t = 0; t < scene.tin.m_aTri.GetSize(); ++t) {
        qsvtin::Seen c[3];
        for (int k = 0; k < 3; ++k) {
            c[k] = drawing.vertices[static_cast<std::size_t>(scene.tin.m_aTri[t].m_nVertex[k])];
        }
        const auto [left, right] = std::minmax({c[0].x, c[1].x, c[2].x});
        const auto [top, bottom] = std::minmax({c[0].y, c[1].y, c[2].y});
        for (int row = static_cast<int>(top); row < std::min(height, static_cast<int>(bottom) + 1); ++row) {
            for (int column = static_cast<int>(left); column < std::min(width, static_cast<int>(right) + 1);
                 ++column) {
                double side[3], sum = 0.0;
                for (int k = 0; k < 3; ++k) {
                    const qsvtin::Seen &a = c[(k + 1) % 3], &b = c[(k + 2) % 3];
                    side[k] = (b.x - a.x) * (row + 0.5 - a.y) - (b.y - a.y) * (column + 0.5 - a.x);
                    sum += side[k];
                }
                const bool inside = (side[0] >= 0.0 && side[1] >= 0.0 && side[2] >= 0.0) ||
                                    (side[0] <= 0.0 && side[1] <= 0.0 && side[2] <= 0.0);
                if (!inside || sum == 0.0) continue;
                const double depth =
                    (side[0] * c[0].depth + side[1] * c[1].depth + side[2] * c[2].depth) / sum;
                const std::size_t pixel = static_cast<std::size_t>(row * width + column);
                if (depth >= depths[pixel]) continue;
                depths[pixel] = depth;
                owners[pixel] = t;
            }
        }
    }
    return owners;
}

std::vector<int> PaintedTriangles(const Drawing& drawing, int width, int height)
{
    qsvtin::Band band;
    band.width = width;
    band.rows = height;
    qsvtin::Paint(drawing, 1, band);
    return band.owners;
}

TEST(ViewPainter, ShowsWhatADepthBufferShows)
{
    constexpr int kWidth = 480, kHeight = 360;
    const struct {
        const char* name;
        CTin tin;
        std::optional<double> skirt;
    } aCase[] = {
        {"hills", Hills(), {}},
        {"hills on a block", Hills(), 100.0},
        {"overhanging wave", OverhangingWave(), {}},
        {"spiral ramp", SpiralRamp(), {}},
    };
    for (const auto& c : aCase) {
        const Scene scene = qsvtin::MakeScene(c.tin, 1.5, c.skirt);
        for (const View& view : Views()) {
            SCOPED_TRACE(std::string(c.name) + " from " + std::to_string(view.azimuth) + "," +
                         std::to_string(view.elevation) + (view.perspective ? " in perspective" : ""));
            const ViewFrame frame = qsvtin::FrameOf(scene, Picture(view, kWidth, kHeight));
            const Drawing drawing = qsvtin::MakeDrawing(scene, frame);
            const std::vector<int> painted = PaintedTriangles(drawing, kWidth, kHeight);
            const std::vector<int> nearest = NearestTriangles(scene, drawing, kWidth, kHeight);
            int covered = 0, different = 0;
            for (std::size_t i = 0; i < painted.size(); ++i) {
                covered += nearest[i] >= 0;
                different += painted[i] != nearest[i];
            }
            EXPECT_GT(covered, kWidth * kHeight / 20);
            EXPECT_LT(different, 0.001 * covered) << "of " << covered;
        }
    }
}

TEST(ViewPainter, SamplesOfABandAreThoseOfTheWholePicture)
{
    const Scene scene = qsvtin::MakeScene(Hills(), 1.0, {});
    const Drawing drawing =
        qsvtin::MakeDrawing(scene, qsvtin::FrameOf(scene, Picture({205.0, 30.0, true}, 200, 120)));
    const std::vector<int> whole = PaintedTriangles(drawing, 200, 120);
    qsvtin::Band band;
    band.width = 200;
    band.firstRow = 50;
    band.rows = 17;
    qsvtin::Paint(drawing, 1, band);
    EXPECT_TRUE(std::equal(band.owners.begin(), band.owners.end(), whole.begin() + 50 * 200));
}

TEST(ViewFrame, PutsDirectionsWhereTheViewerSeesThem)
{
    const Scene scene = qsvtin::MakeScene(Hills(), 1.0, {});
    const struct {
        View view;
        double right[3];   // a step on the ground or upwards, to the right in the picture
        double up[3];
    } aCase[] = {
        {{180.0, 90.0, false}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}},
        {{90.0, 90.0, false}, {0.0, 1.0, 0.0}, {-1.0, 0.0, 0.0}},
        {{180.0, 1.0, false}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}},
        {{0.0, 45.0, true}, {-1.0, 0.0, 0.0}, {0.0, -1.0, 1.0}},
    };
    for (const auto& c : aCase) {
        const ViewFrame frame = qsvtin::FrameOf(scene, Picture(c.view, 400, 400));
        const qsvtin::Seen from = frame.ToPicture({0.0, 0.0, 0.0});
        const qsvtin::Seen right = frame.ToPicture({c.right[0], c.right[1], c.right[2]});
        const qsvtin::Seen up = frame.ToPicture({c.up[0], c.up[1], c.up[2]});
        EXPECT_GT(right.x - from.x, 0.1);
        EXPECT_NEAR(right.y, from.y, 0.01 * (right.x - from.x));
        EXPECT_LT(up.y - from.y, -0.1);
        EXPECT_NEAR(up.x, from.x, 0.01 * (from.y - up.y));
    }
}

TEST(ViewPick, AgreesWithTheHeightQueryAndThePicture)
{
    constexpr int kWidth = 480, kHeight = 360;
    CTin tin = Hills();
    const Scene scene = qsvtin::MakeScene(tin, 2.0, {});
    std::mt19937 random(11);
    int hits = 0, sameTriangle = 0;
    for (const View& view : Views()) {
        const ViewFrame frame = qsvtin::FrameOf(scene, Picture(view, kWidth, kHeight));
        const std::vector<int> painted = PaintedTriangles(qsvtin::MakeDrawing(scene, frame), kWidth, kHeight);
        for (int i = 0; i < 300; ++i) {
            const int column = static_cast<int>(random() % kWidth),
                      row = static_cast<int>(random() % kHeight);
            const int shown = painted[static_cast<std::size_t>(row * kWidth + column)];
            const auto hit = qsvtin::PickAt(scene, frame, column + 0.5, row + 0.5);
            sameTriangle += shown == (hit ? hit->triangle : -1);
            if (!hit) continue;
            ++hits;
            double z = 0.0;
            int nTri = -1;
            ASSERT_EQ(tin.InterpolateForPlane(hit->triangle, hit->at.x, hit->at.y, z, nTri), 1);
            EXPECT_NEAR(hit->at.z, z, 1e-4);   // the query computes with coordinates of seven digits
            const qsvtin::Seen back = frame.ToPicture(scene.ToScene(hit->at));
            EXPECT_NEAR(back.x, column + 0.5, 1e-4);
            EXPECT_NEAR(back.y, row + 0.5, 1e-4);
        }
    }
    EXPECT_GT(hits, 500);
    EXPECT_GE(sameTriangle, 2100 - 2);
}

// The mean colour of each cell of a coarse grid, over white, as one letter a channel, A for black to P for white.
std::string Coarse(const std::vector<std::uint32_t>& pixels, int width, int height, int columns, int rows)
{
    std::string text;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            for (const int shift : {16, 8, 0}) {
                std::uint32_t sum = 0;
                const int cellWidth = width / columns, cellHeight = height / rows;
                for (int y = row * cellHeight; y < (row + 1) * cellHeight; ++y) {
                    for (int x = column * cellWidth; x < (column + 1) * cellWidth; ++x) {
                        const std::uint32_t pixel = pixels[static_cast<std::size_t>(y * width + x)];
                        sum += (pixel >> shift & 255u) + 255u - (pixel >> 24);
                    }
                }
                const auto cell = static_cast<std::uint32_t>(cellWidth * cellHeight);
                text += static_cast<char>('A' + sum / cell / 16u);
            }
        }
    }
    return text;
}

// Green foot, pale top, the north-west slopes brighter than the south-east ones, the corners of the picture empty.
TEST(ViewColours, OfAHillAreThoseOfTheReference)
{
    constexpr int kWidth = 160, kHeight = 120;
    const CTin hill = Sheet(24, [](double u, double v) {
        const double r = std::hypot(u - 0.5, v - 0.5);
        return CXYZ(100.0 * u, 100.0 * v, 40.0 * std::exp(-20.0 * r * r));
    });
    const Scene scene = qsvtin::MakeScene(hill, 1.0, -10.0);
    const ViewFrame frame = qsvtin::FrameOf(scene, Picture({200.0, 35.0, true}, kWidth, kHeight));
    qsvtin::SurfaceStyle style;
    style.edges = false;
    const std::string drawn =
        Coarse(qsvtin::ColourSurface(scene, qsvtin::MakeDrawing(scene, frame), style, kWidth, kHeight),
               kWidth, kHeight, 8, 6);
    const std::string reference = "PPPPPPPPPPPPPPPPPPPPPPPP"
                                  "PPPPPPOOOMMMOPPPPPPPPPPP"
                                  "NONHKIMLIJIGHJIPPPPPPPPP"
                                  "PPPGJHHKHGIGFIGIKJPPPPPP"
                                  "PPPHJIFHGHIHKKKNNNPPPPPP"
                                  "PPPOOOOOOPPPPPPPPPPPPPPP";
    ASSERT_EQ(drawn.size(), reference.size()) << drawn;
    for (std::size_t i = 0; i < drawn.size(); ++i) {
        EXPECT_LE(std::abs(drawn[i] - reference[i]), 1) << "at " << i << " of " << drawn;
    }
}

struct Result {
    int status = -1;
    std::string out;
    std::string err;
};

class ViewProgram : public ScratchFolder
{
protected:
    ViewProgram()
    {
        Put("hill.txt", "0 0 1\n10 0 1\n10 10 1\n0 10 1\n5 5 9\n");
        EXPECT_EQ(Run("build hill.txt -o hill.tin").status, 0);
    }

    Result Run(const std::string& arguments) const
    {
        const std::string command = "cd '" + m_folder.string() + "' && '" QSVTIN_PROGRAM "' " + arguments +
                                    " >stdout.log 2>stderr.log";
        const int ended = std::system(command.c_str());
        return {WIFEXITED(ended) ? WEXITSTATUS(ended) : -1, Get("stdout.log"), Get("stderr.log")};
    }
};

TEST_F(ViewProgram, DrawsEveryFormat)
{
    const struct {
        const char* arguments;
        const char* file;
        const char* start;
    } aCase[] = {
        {"-o plan.png", "plan.png", "\x89PNG"},
        {"--view 205,30 --perspective --exaggerate 2 --skirt -1 --size 400x300 --no-edges -o v.svg", "v.svg",
         "<?xml"},
        {"--view -20.5,5 --size 300x400 --title 'A hill' -o v.PDF", "v.PDF", "%PDF"},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.arguments);
        const Result result = Run(std::string("render hill.tin ") + c.arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        EXPECT_EQ(Get(c.file).compare(0, std::string(c.start).size(), c.start), 0);
        EXPECT_GT(Get(c.file).size(), 3000u);
    }
}

TEST_F(ViewProgram, TellsWhatAPixelShows)
{
    // The frame of the plan: 112 to 952 down, and 48 to 1450 across, in which the square of 10 stands in the middle.
    const Result plan = Run("pick hill.tin 748,531 --json");
    ASSERT_EQ(plan.status, 0) << plan.err;
    const auto answer = nlohmann::json::parse(plan.out);
    EXPECT_EQ(answer["skirt"], false);
    EXPECT_GE(answer["triangle"].get<int>(), 0);
    EXPECT_NEAR(answer["position"][0].get<double>(), 5.0, 0.02);
    EXPECT_NEAR(answer["position"][1].get<double>(), 5.0, 0.02);
    EXPECT_NEAR(answer["position"][2].get<double>(), 9.0, 0.05);

    const Result wall = Run("pick hill.tin 400,560 --view 180,10 --skirt -9 --size 800x600");
    EXPECT_EQ(wall.status, 0) << wall.err;
    EXPECT_EQ(wall.out.rfind("skirt  ", 0), 0u) << wall.out;
    EXPECT_NE(wall.out.find(" 0.000 "), std::string::npos) << wall.out;   // the south side
    EXPECT_EQ(std::count(wall.out.begin(), wall.out.end(), '\n'), 1);
}

TEST_F(ViewProgram, RefusesNonsenseInOneLineAndLeavesFilesAlone)
{
    Put("kept.png", "kept");
    Put("text.tin", "no TIN");
    const struct {
        const char* arguments;
        int status;
        const char* message;   // a part of it
    } aCase[] = {
        {"render missing.tin -o kept.png", 1, "missing.tin"},
        {"render text.tin -o kept.png", 1, "text.tin"},
        {"render hill.tin", 2, "--output is required"},
        {"render hill.tin -o x.bmp", 2, "x.bmp"},
        {"render hill.tin -o missing/x.png", 1, "missing/x.png"},
        {"render hill.tin -o kept.png --view 205", 2, "--view 205"},
        {"render hill.tin -o kept.png --view north,30", 2, "--view north,30"},
        {"render hill.tin -o kept.png --view nan,30", 2, "--view nan,30"},
        {"render hill.tin -o kept.png --view 205,91", 2, "elevation"},
        {"render hill.tin -o kept.png --view 205,0", 2, "elevation"},
        {"render hill.tin -o kept.png --view 1e300,30", 2, "--view"},
        {"render hill.tin -o kept.png --exaggerate 0", 2, "--exaggerate"},
        {"render hill.tin -o kept.png --exaggerate nan", 2, "--exaggerate"},
        {"render hill.tin -o kept.png --skirt inf", 2, "--skirt"},
        {"render hill.tin -o kept.png --size 5x5", 2, "--size"},
        {"render hill.tin -o kept.png --size 100000x100000", 2, "--size"},
        {"render hill.tin -o kept.png --tin 2", 2, "--tin"},
        {"pick hill.tin", 2, "PIXEL"},
        {"pick hill.tin 5", 2, "column and the row"},
        {"pick hill.tin 5,five", 2, "column and the row"},
        {"pick hill.tin 1600,0", 2, "outside the picture"},
        {"pick hill.tin 0,300 --size 300x300", 2, "outside the picture"},
        {"pick hill.tin 0,0", 1, "no surface under pixel 0,0"},
        {"pick missing.tin 0,0", 1, "missing.tin"},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.arguments);
        const Result result = Run(c.arguments);
        EXPECT_EQ(result.status, c.status);
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err.rfind("qsvtin: ", 0), 0u) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
        EXPECT_NE(result.err.find(c.message), std::string::npos) << result.err;
        EXPECT_EQ(Get("kept.png"), "kept");
    }
    EXPECT_EQ(Count(), 6);   // what was put there, the TIN and the two logs
}

}   // namespace
