// Pictures of a TIN from any direction: what is painted where, what a pixel shows, and the program's answers.

#include "host/input/survey_text.h"
#include "host/view/drape.h"
#include "host/view/painter.h"
#include "host/view/pick.h"
#include "host/view/surface_colours.h"
#include "host/view/view_picture.h"
#include "host/view/visibility.h"
#include "tests/support/fixtures.h"
#include "tests/support/program.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>

namespace {

using qsvtin::Drawing;
using qsvtin::Path;
using qsvtin::PictureOptions;
using qsvtin::Rgb;
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

// Two slopes that pass through each other.
CTin PiercingSlopes()
{
    CTin tin = Sheet(9, [](double u, double v) { return CXYZ(100.0 * u, 100.0 * v, 40.0 * u); });
    CTin other = Sheet(7, [](double u, double v) { return CXYZ(100.0 * u, 100.0 * v, 30.0 - 45.0 * u * v); });
    tin.AddTIN(other);
    return tin;
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

CTin SampleTerrain()
{
    qsvtin::TextFile text(QSV_SAMPLE "/points.xyz");
    std::vector<qsvtin::BadLine> bad;
    CTin tin;
    tin.BeginAddPoint(6000);
    for (const qsvtin::Position& p : qsvtin::ReadSurveyPoints(text, {}, bad).points) {
        tin.AddPoint2(p.x, p.y, p.z);
    }
    tin.EndAddPoint();
    EXPECT_EQ(tin.CreateTin(0.0), 1);
    return tin;
}

TEST(ViewPainter, ShowsTheNearestTriangle)
{
    constexpr int kWidth = 480, kHeight = 360;
    const struct {
        const char* name;
        CTin tin;
        std::optional<double> skirt;
    } aCase[] = {
        {"hills", Hills(), {}},
        {"hills on a block", Hills(), 100.0},
        {"sample on a block", SampleTerrain(), 150.0},
        {"overhanging wave", OverhangingWave(), {}},
        {"spiral ramp", SpiralRamp(), {}},
        {"piercing slopes", PiercingSlopes(), {}},
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
            EXPECT_LE(different, 2) << "of " << covered << ": those whose middle lies on an edge";
        }
    }
}

// Two triangulations of a slope: rounding must not choose between them anew at every sample.
TEST(ViewPainter, ShowsTheFirstOfSurfacesThatLieInEachOther)
{
    const auto slope = [](double u, double v) { return CXYZ(100.0 * u, 100.0 * v, 20.0 * u + 7.0 * v); };
    CTin tin = Sheet(30, slope);
    const int first = tin.GetTriSize();
    CTin other = Sheet(7, [&](double u, double v) { return slope(0.1 + 0.8 * u, 0.1 + 0.8 * v); });
    tin.AddTIN(other);
    const Scene scene = qsvtin::MakeScene(tin, 1.0, {});
    for (const View& view : Views()) {
        const Drawing drawing = qsvtin::MakeDrawing(scene, qsvtin::FrameOf(scene, Picture(view, 480, 360)));
        const std::vector<int> painted = PaintedTriangles(drawing, 480, 360);
        const int last = *std::max_element(painted.begin(), painted.end());
        EXPECT_GE(last, 0);
        EXPECT_LT(last, first) << view.azimuth << "," << view.elevation;
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

// The apex is a vertex, so that lines through it pass two sides of the hill; one along its edges belongs to both.
TEST(ViewDrape, FollowsTheSurfaceAndEndsWithIt)
{
    const CTin tin = Built({{0, 0, 1}, {10, 0, 1}, {10, 10, 1}, {0, 10, 1}, {5, 5, 9}});
    const Scene scene = qsvtin::MakeScene(tin, 2.0, -5.0);
    const struct {
        const char* name;
        Path line;
        std::vector<Path> laid;   // in survey coordinates
    } aCase[] = {
        {"over the top", {{-5, 5, 0}, {15, 5, 0}}, {{{0, 5, 1}, {5, 5, 9}, {10, 5, 1}}}},
        {"along edges", {{0, 0, 7}, {5, 5, 7}, {10, 0, 7}}, {{{0, 0, 1}, {5, 5, 9}, {10, 0, 1}}}},
        {"across edges", {{1, 4, 0}, {4, 1, 0}}, {{{1, 4, 2.6}, {2.5, 2.5, 5}, {4, 1, 2.6}}}},
        {"out and in again", {{8, 5, 0}, {12, 5, 0}, {8, 5, 0}}, {{{8, 5, 4.2}, {10, 5, 1}, {8, 5, 4.2}}}},
        {"beside", {{11, 0, 0}, {11, 10, 0}}, {}},
        {"a place", {{3, 3, 0}}, {}},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.name);
        const std::vector<Path> laid = qsvtin::Drape(scene, {c.line});
        ASSERT_EQ(laid.size(), c.laid.size());
        for (std::size_t i = 0; i < laid.size(); ++i) {
            ASSERT_EQ(laid[i].size(), c.laid[i].size());
            for (std::size_t k = 0; k < laid[i].size(); ++k) {
                const qsvtin::Position at = scene.ToSurvey(laid[i][k]), &expected = c.laid[i][k];
                EXPECT_NEAR(at.x, expected.x, 1e-12);
                EXPECT_NEAR(at.y, expected.y, 1e-12);
                EXPECT_NEAR(at.z, expected.z, 1e-12);
            }
        }
    }
}

// Places on the surface and above it, against the line of sight that pick follows through every triangle.
TEST(ViewVisibility, AgreesWithTheLineOfSight)
{
    const Scene scene = qsvtin::MakeScene(Hills(), 2.0, 100.0);
    std::mt19937 random(3);
    int hidden = 0, shown = 0, different = 0;
    for (const View& view : Views()) {
        const ViewFrame frame = qsvtin::FrameOf(scene, Picture(view, 480, 360));
        const Drawing drawing = qsvtin::MakeDrawing(scene, frame, 2);
        std::vector<std::vector<Path>> places;
        for (int i = 0; i < 200; ++i) {
            const int t = static_cast<int>(random() % static_cast<unsigned>(scene.groundTriangles));
            const CXYZ &a = scene.Corner(t, 0), &b = scene.Corner(t, 1), &c = scene.Corner(t, 2);
            const double above = i % 2 == 0 ? 0.0 : 5.0;
            const qsvtin::Position at = {(a.x + b.x + c.x) / 3.0, (a.y + b.y + c.y) / 3.0,
                                         (a.z + b.z + c.z) / 3.0 + above};
            places.push_back({Path{at, at}});
        }
        const std::vector<qsvtin::SeenLines> parted = qsvtin::PartByVisibility(places, frame, drawing);
        for (std::size_t i = 0; i < places.size(); ++i) {
            const qsvtin::Seen seen = frame.ToPicture(places[i][0][0]);
            const auto hit = qsvtin::PickAt(scene, frame, seen.x, seen.y);
            const bool behind = hit && frame.ToPicture(scene.ToScene(hit->at)).depth < seen.depth - 1e-6;
            ASSERT_EQ(parted[i].hidden.size() + parted[i].shown.size(), 1u);
            different += behind != parted[i].shown.empty();
            (behind ? hidden : shown) += 1;
        }
    }
    EXPECT_GT(hidden, 200);
    EXPECT_GT(shown, 700);
    EXPECT_LE(different, 14) << "of 1400: those within a pixel of a silhouette";
}

std::string FromHex(const std::string& digits)
{
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

class ViewProgram : public ProgramTest
{
protected:
    ViewProgram()
    {
        PutHill();
        // Two by two pixels: red and green above blue and white.
        Put("four.png",
            FromHex(
                "89504e470d0a1a0a0000000d4948445200000002000000020802000000fdd49a730000001249444154789c63f8"
                "cfc0c000c20cff8100001fee05fb0bd9688b0000000049454e44ae426082"));
    }

    /// The colour of a pixel of a picture of 1600 x 1000.
    Rgb PixelOf(const qsvtin::Texture& picture, double column, double row) const
    {
        return picture.Over({}, (column + 0.5) / 1600.0, 1.0 - (row + 0.5) / 1000.0, 1.0);
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
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
         "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\"400px\" height=\"300px\""},
        {"--view 250,20 --breaklines hill.txt --texture four.png --grid-sphere 5,5,9,4 --sphere-step 45,30 "
         "--sphere-zero horizon-signed -o all.svg",
         "all.svg", "<?xml"},
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

// The frame of the plan: 112 to 952 down, and 48 to 1450 across, in which the square of 10 stands in the middle, at
// 84 pixels a unit.
TEST_F(ViewProgram, DrapesATextureNorthUp)
{
    Put("level.txt", "0 0 1\n10 0 1\n10 10 1\n0 10 1\n");
    ASSERT_EQ(Run("build level.txt -o level.tin").status, 0);
    const Result result = Run("render level.tin --texture four.png --no-edges -o level.png");
    ASSERT_EQ(result.status, 0) << result.err;
    const qsvtin::Texture picture(ScratchFolder::Path("level.png"));
    const struct {
        double column, row;
        Rgb colour;
    } aCase[] = {
        {350, 132, {1, 0, 0}}, {1148, 132, {0, 1, 0}}, {350, 932, {0, 0, 1}}, {1148, 932, {1, 1, 1}}};
    for (const auto& c : aCase) {
        const Rgb colour = PixelOf(picture, c.column, c.row);
        EXPECT_NEAR(colour.r, c.colour.r, 0.01) << c.column << "," << c.row;
        EXPECT_NEAR(colour.g, c.colour.g, 0.01) << c.column << "," << c.row;
        EXPECT_NEAR(colour.b, c.colour.b, 0.01) << c.column << "," << c.row;
    }
}

// From above: meridians every 30 degrees from north over east, circles at the cosine of the vertical angle.
TEST_F(ViewProgram, DrawsTheGridSphereWhereItsAnglesAre)
{
    ASSERT_EQ(Run("render hill.tin --no-edges -o bare.png").status, 0);
    const Result result = Run("render hill.tin --no-edges --grid-sphere 5,5,20,4 -o sphere.png");
    ASSERT_EQ(result.status, 0) << result.err;
    const qsvtin::Texture bare(ScratchFolder::Path("bare.png")), sphere(ScratchFolder::Path("sphere.png"));
    const auto change = [&](double column, double row) {
        const Rgb a = PixelOf(bare, column, row), b = PixelOf(sphere, column, row);
        return std::fabs(a.r - b.r) + std::fabs(a.g - b.g) + std::fabs(a.b - b.b);
    };
    const double radius = 4 * 84.0, degree = std::acos(-1.0) / 180.0;
    const auto changeAt = [&](double horizontal, double share) {
        return change(std::round(749 + share * radius * std::sin(horizontal * degree) - 0.5),
                      std::round(532 - share * radius * std::cos(horizontal * degree) - 0.5));
    };
    for (int h = 0; h < 360; h += 30) {
        EXPECT_GT(changeAt(h, 0.6), 0.2) << h;   // a meridian
        EXPECT_LT(changeAt(h + 10.0, 0.6), 0.02)
            << h;   // nothing between 45 and 60 degrees: cosines 0.71, 0.5
        EXPECT_GT(changeAt(h + 10.0, std::sqrt(0.5)), 0.2) << h;
    }
    constexpr double kLabel = 40.0;   // half a label at the rim
    int beyond = 0;
    for (int row = 112; row < 952; ++row) {
        for (int column = 48; column < 1450; ++column) {
            beyond += std::hypot(column - 748.5, row - 531.5) > radius + kLabel && change(column, row) > 0.2;
        }
    }
    EXPECT_EQ(beyond, 0);
}

TEST_F(ViewProgram, TellsWhatAPixelShows)
{
    const Result plan = Run("pick hill.tin 748,531 --json");
    ASSERT_EQ(plan.status, 0) << plan.err;
    const auto answer = JsonOf(plan.out);
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
    Put("cut.png", Get("four.png").substr(0, 60));
    Put("huge.png", Get("four.png").replace(16, 1, "\x10"));
    const std::vector<Refusal> commands = {
        {"render missing.tin -o kept.png", 1, "missing.tin"},
        {"render text.tin -o kept.png", 1, "text.tin"},
        {"render hill.tin", 2, "--output is required"},
        {"render hill.tin -o x.bmp", 2, "x.bmp"},
        {"render hill.tin -o missing/x.png", 1, "missing/x.png"},
        {"render hill.tin -o four.png --texture four.png", 2, "overwrite the input"},
        {"pick hill.tin 800,500 --grid-sphere 5000,5,9,4", 2, "check station and radius"},
        {"pick hill.tin", 2, "PIXEL"},
        {"pick hill.tin 5", 2, "column and the row"},
        {"pick hill.tin 5,five", 2, "column and the row"},
        {"pick hill.tin 1600,0", 2, "outside the picture"},
        {"pick hill.tin 0,300 --size 300x300", 2, "outside the picture"},
        {"pick hill.tin 0,0", 1, "no surface under pixel 0,0"},
        {"pick missing.tin 0,0", 1, "missing.tin"},
    };
    const std::vector<Refusal> options = {
        {"--view 205", 2, "--view 205"},
        {"--view north,30", 2, "--view north,30"},
        {"--view nan,30", 2, "--view nan,30"},
        {"--view 205,91", 2, "elevation"},
        {"--view 205,0", 2, "elevation"},
        {"--view 1e300,30", 2, "--view"},
        {"--exaggerate 0", 2, "--exaggerate"},
        {"--exaggerate nan", 2, "--exaggerate"},
        {"--skirt inf", 2, "--skirt"},
        {"--size 5x5", 2, "--size"},
        {"--size 100000x100000", 2, "--size"},
        {"--tin 2", 2, "--tin"},
        {"--texture missing.png", 1, "missing.png"},
        {"--texture .", 1, "directory"},
        {"--texture text.tin", 1, "text.tin is no PNG"},
        {"--texture cut.png", 1, "cut.png is no PNG"},
        {"--texture huge.png", 1, "huge.png has 268435458 x 2 pixels"},
        {"--breaklines missing.txt", 1, "missing.txt"},
        {"--breaklines text.tin", 1, "text.tin:1"},
        {"--grid-sphere 5,5,9", 2, "X,Y,Z,RADIUS"},
        {"--grid-sphere 5,5,9,4,", 2, "X,Y,Z,RADIUS"},
        {"--grid-sphere 5,nan,9,4", 2, "X,Y,Z,RADIUS"},
        {"--grid-sphere 5,5,9,0", 2, "above 0"},
        {"--grid-sphere 5000,5,9,4", 2, "check station and radius"},
        {"--grid-sphere 5,5,9,1e300", 2, "above 0"},
        {"--grid-sphere 5,5,9,4 --sphere-step 0,15", 2, "--sphere-step"},
        {"--grid-sphere 5,5,9,4 --sphere-step 30,91", 2, "--sphere-step"},
        {"--grid-sphere 5,5,9,4 --sphere-step 1e-9,15", 2, "larger steps"},
        {"--grid-sphere 5,5,9,4 --sphere-zero north", 2, "--sphere-zero"},
        {"--sphere-step 30,15", 2, "need --grid-sphere"},
    };
    ExpectRefusals("", "kept.png", commands);
    ExpectRefusals("render hill.tin -o kept.png ", "kept.png", options);
    EXPECT_EQ(Count(), 9);   // what was put there, the TIN and the two logs
}

}   // namespace
