// Editing from the command line: points in and out, trimming, walls, merging, polygons; sound at every step.

#include "tests/support/program.h"

#include "qsv_3dprocess.h"

#include <cmath>
#include <filesystem>

namespace {

class Edit : public ProgramTest
{
protected:
    Edit() { PutHill(); }

    // The report on a.tin edited in place, which must be sound afterwards.
    nlohmann::json EditSound(const std::string& steps) const
    {
        const auto report = Report("edit a.tin " + steps + " -o a.tin");
        EXPECT_EQ(report["sound"], true) << steps;
        const Result check = Run("check a.tin");
        EXPECT_EQ(check.status, 0) << steps << "\n" << check.out;
        return report;
    }
};

TEST_F(Edit, StepsAreTakenInTheOrderGiven)
{
    const double slope = 20.0 * std::sqrt(89.0);   // four faces of 10 x sqrt(89) / 2
    const auto area = [&](const std::string& steps) {
        const auto report = Report("edit hill.tin " + steps + " -o a.tin");
        EXPECT_EQ(report["sound"], true) << steps;
        EXPECT_EQ(Run("check a.tin").status, 0) << steps;
        return report["surface_area"].get<double>();
    };
    EXPECT_DOUBLE_EQ(area("--delete 4"), 100.0);
    EXPECT_DOUBLE_EQ(area("--delete 4.2,5.1"), 100.0) << "the vertex nearest to the place";
    EXPECT_DOUBLE_EQ(area("--delete 4 --insert 5,5,9"), slope);
    EXPECT_DOUBLE_EQ(area("--insert 5,2.5,5 --delete 5"), slope);
    EXPECT_DOUBLE_EQ(area("--skirt 0 --delete 4"), 140.0) << "the walls stay: 40 x 1";
    EXPECT_DOUBLE_EQ(area("--delete 4 --skirt -1"), 180.0);
    EXPECT_DOUBLE_EQ(area("--skirt 0 --merge hill.tin"), 2.0 * slope + 40.0);
    const auto report = Report("edit hill.tin --insert 5,2.5,5 --insert 5,7.5,5 --delete 4 -o a.tin");
    EXPECT_EQ(report["steps"][0]["done"], "vertex 5");
    EXPECT_EQ(report["steps"][1]["value"], "5,7.5,5");
    EXPECT_EQ(report["steps"][2]["done"], "vertex 4 at 5 5 9");
    ExpectRefusal("edit hill.tin --delete 4 --insert 5,5,9 --insert 5,5,8 -o a.tin", 1,
                  "--insert 5,5,8: a vertex stands at 5,5 already");
}

TEST_F(Edit, RefusesNonsenseAndLeavesTheFileAlone)
{
    const std::vector<Refusal> refusals = {
        {"", 2, "nothing to do"},
        {"--insert 1,2", 2, "--insert 1,2: give x,y,z"},
        {"--insert 1,2,nan", 2, "give x,y,z"},
        {"--insert 1,2,3,4", 2, "give x,y,z"},
        {"--insert 50,50,1", 1, "--insert 50,50,1: no triangle holds 50,50"},
        {"--insert 5,5,1", 1, "a vertex stands at 5,5 already"},
        {"--delete five", 2, "give the number of a vertex, or x,y"},
        {"--delete -1", 2, "give the number of a vertex"},
        {"--delete 5", 1, "there is no vertex 5; they are numbered from 0 to 4"},
        {"--delete 99999999999", 2, "give the number of a vertex"},
        {"--delete 4 --delete 4", 1, "there is no vertex 4"},
        {"--delete 0 --delete 0 --delete 0", 1, "--delete 0: no triangle is left"},
        {"--skirt deep", 2, "--skirt deep: give a height"},
        {"--trim-angle 90", 2, "give degrees above 0 and below 90"},
        {"--trim-angle 0", 2, "give degrees"},
        {"--merge missing.tin", 1, "cannot read missing.tin"},
        {"--merge hill.txt", 1, "is no TIN file"},
        {"--tin 2 --delete 4", 2, "has no TIN of this name"},
        {"--insert", 2, "--insert"},
        {"--insert -o a.tin", 2,
         "--insert needs a value, but -o follows; if that is the value, write --insert=-o"},
    };
    ExpectRefusals("edit hill.tin -o hill.tin ", "hill.tin", refusals);
    ExpectRefusal("edit hill.tin --delete 4 -o a.dwg", 2, "cannot tell the format");
    ExpectRefusal("edit hill.tin --delete 4", 2, "--output is required");
}

// Outcrops of rock surveyed along a road, far from zero: rings of points with the ground between left out.
TEST_F(Edit, ASurveyStaysSoundThroughEveryStep)
{
    std::string points, lines;
    const auto toMillimetres = [](double metres) {
        return nlohmann::json(std::round(metres * 1000.0) / 1000.0).dump() + " ";
    };
    for (int outcrop = 0; outcrop < 6; ++outcrop) {
        const double east = 21530180.0 + 37.3 * outcrop, north = 6782553.0 + 11.9 * (outcrop % 3);
        std::string ring;
        for (int i = 0; i <= 16; ++i) {
            const double turn = 2.0 * 3.14159265358979 * (i % 16) / 16.0,
                         radius = 9.0 + 2.0 * std::sin(3.0 * turn + outcrop);
            ring += toMillimetres(east + radius * std::cos(turn)) +
                    toMillimetres(north + radius * std::sin(turn)) + "14.5\n";
        }
        lines += ring + "\n";
        for (int i = 0; i < 40; ++i) {
            const double turn = 2.4 * i, radius = std::sqrt(i) * 0.9;
            points += toMillimetres(east + radius * std::cos(turn)) +
                      toMillimetres(north + radius * std::sin(turn)) +
                      std::to_string(16 + outcrop % 2 + i % 5) + "\n";
        }
    }
    Put("rock.txt", points);
    Put("edges.txt", lines);
    const auto built = Report("build rock.txt --breaklines edges.txt --trim-angle 12 -o a.tin");
    EXPECT_EQ(built["segments_enforced"], built["segments"]);
    EXPECT_EQ(Run("check a.tin").status, 0);
    const double plan = built["plan_area"].get<double>();

    const auto inserted =
        EditSound("--insert 21530180.5,6782553.25,17.25 --insert 21530218.111,6782565.222,16");
    EXPECT_NEAR(inserted["plan_area"].get<double>(), plan, 1e-6);
    EXPECT_EQ(Run("height a.tin 21530180.5 6782553.25").out, "17.25\n");
    EXPECT_EQ(inserted["vertices"].get<int>(), built["vertices"].get<int>() + 2);

    const auto deleted = EditSound("--delete 21530180.5,6782553.25 --delete 3 --delete 40");
    EXPECT_EQ(deleted["vertices"].get<int>(), built["vertices"].get<int>() - 1);
    EXPECT_NEAR(deleted["plan_area"].get<double>(), plan, 1e-6) << "of inner vertices";

    const auto trimmed = EditSound("--trim-angle 25");
    EXPECT_LT(trimmed["triangles"], deleted["triangles"]);
    const double trimmedPlan = trimmed["plan_area"].get<double>();

    const auto skirted = EditSound("--skirt 10");
    EXPECT_EQ(skirted["upright"], 2 * trimmed["outline_edges"].get<int>());
    EXPECT_NEAR(skirted["plan_area"].get<double>(), trimmedPlan, 1e-6);
    EXPECT_EQ(skirted["range"]["z"][0], 10.0);

    ASSERT_EQ(Run("build rock.txt -o ground.tin").status, 0);
    const auto merged = EditSound("--merge ground.tin");
    EXPECT_EQ(merged["pieces"].get<int>(), skirted["pieces"].get<int>() + 1);
    EXPECT_EQ(merged["range"]["x"], built["range"]["x"]) << "coordinates are the survey's, to the bit";
    EXPECT_EQ(Run(QSV_PICTURES ? "convert a.tin a.png" : "convert a.tin a.obj").status, 0);
}

// Two squares that meet at one corner: the walls there must not share an edge.
TEST_F(Edit, WallsStandApartWhereTheOutlineTouchesItself)
{
    Put("a.obj", "v 0 0 1\nv 4 0 1\nv 4 4 1\nv 0 4 1\nv 8 4 1\nv 8 8 1\nv 4 8 1\nf 1 2 3\nf 1 3 4\nf 3 5 "
                 "6\nf 3 6 7\n");
    const auto report = Report("edit a.obj --skirt 0 -o a.tin");
    EXPECT_EQ(report["sound"], true);
    EXPECT_EQ(report["upright"], 16);
    EXPECT_EQ(report["pieces"], 2);
    EXPECT_EQ(report["vertices"], 7 + 1 + 7) << "the corner twice above, once below";
    EXPECT_EQ(report["surface_area"], 64.0);
}

TEST_F(Edit, KeepsTheFormOfTheFile)
{
    for (const char* const form : {"0", "1", "2"}) {
        ASSERT_EQ(Run(std::string("convert hill.tin a.tin --format ") + form).status, 0);
        ASSERT_EQ(Report("edit a.tin --delete 4 -o b.tin -o b.obj")["written"].size(), 2u);
        EXPECT_EQ(std::to_string(Report("info b.tin")["form"].get<int>()), form);
    }
    ASSERT_EQ(Run("edit a.tin --delete 4 --name flat --format 1 -o b.tin").status, 0);
    EXPECT_EQ(Report("info b.tin")["tins"][0]["name"], "flat");
}

TEST_F(Edit, PolygonsAreFilledWhicheverWayTheyRun)
{
    const struct {
        const char* ring;
        double area;
    } aCase[] = {
        {"0 0 1\n4 0 1\n4 4 1\n0 4 1\n", 16.0},
        {"0 4 1\n4 4 1\n4 0 1\n0 0 1\n0 4 1\n", 16.0},                           // clockwise, ends meet
        {"# pond\n0 0 1\n4 0 1\n4 0 1\n4 4 1\n2 1 1\n0 4 1\n", 10.0},            // notched, a point twice
        {"21530000 6783000 1\n21530004 6783000 1\n21530000 6783004 5\n", 8.0},   // far away
        // Corners stand inside the shortest ears.
        {"157 105 0\n128 195 0\n110 162 0\n99 110 0\n94 147 0\n96 113 0\n43 152 0\n36 100 0\n48 82 0\n47 81 "
         "0\n77 90 "
         "0\n91 56 0\n126 90 0\n117 99 0\n",
         6964.0},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.ring);
        Put("ring.txt", c.ring);
        const auto report = Report("polygon ring.txt -o ring.tin");
        EXPECT_NEAR(report["plan_area"].get<double>(), c.area, 1e-9);
        EXPECT_EQ(report["sound"], true);
        EXPECT_EQ(report["pieces"], 1);
        EXPECT_EQ(Report("area ring.tin")["plan_area"], report["plan_area"]);
    }
    const std::pair<const char*, const char*> aBad[] = {
        {"0 0 1\n4 4 1\n4 0 1\n0 4 1\n", "the edges that start at lines 1 and 3 cross"},
        {"0 0 1\n2 2 1\n4 0 1\n4 4 1\n2 2 1\n0 4 1\n", "lines 2 and 5 are the same place"},
        {"0 0 1\n4 0 1\n", "only 2 different points"},
        {"0 0 1\n4 0 1\n8 0 1\n", "lie on one line"},
        {"0 0 1\n4 0 1\n0 4 1\n\n5 5 1\n6 5 1\n5 6 1\n", "holds 2 lines"},
        {"0 0 1\n4 0 x\n0 4 1\n", "ring.txt:2: \"x\" is not a number; fix the line"},
        {"", "no breakline in it"},
    };
    const std::string whole = Get("ring.tin");
    for (const auto& [ring, message] : aBad) {
        Put("ring.txt", ring);
        ExpectRefusal("polygon ring.txt -o ring.tin", 1, message);
        EXPECT_EQ(Get("ring.tin"), whole);
    }
}

}   // namespace
