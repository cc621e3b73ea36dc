// The program as its users meet it: a process with arguments, files, two streams and an exit status.

#include "tests/support/program.h"

#include <filesystem>

namespace {

namespace fs = std::filesystem;

class Program : public ProgramTest
{
protected:
    Program()
    {
        Put("hill.txt", "0 0 1\n10 0 1\n10 10 1\n0 10 1\n5 5 9\n");
        Put("wall.txt", "# wall\n1 1 4\n9 1 4\n");
    }
};

TEST_F(Program, RefusesNonsenseInOneLineAndLeavesFilesAlone)
{
    Put("kept.obj", "kept");
    Put("empty.txt", "");
    Put("prose.txt", "It was a dark night.\nThe theodolite stood alone.\n");
    Put("nan.txt", "0 0 nan\n1 0 1\n0 1 1\n");
    Put("typo.txt", "0 0 1\n1 0 1\n0 l 1\n");
    Put("one.txt", "1 2 3\n1 2 4\n1 2 3\n");
    Put("row.txt", "0 0 0\n1000 1000 1\n500 500.000001 2\n");
    Put("zeros.txt", std::string(1000, '\0'));
    Put("numbered.txt", "P1 0 0 1\nP2 1 0 1\nP3 0 1 1\n");
    fs::create_directory(m_folder / "folder");
    fs::create_symlink("/dev/full", m_folder / "full.obj");
    const std::vector<Refusal> refusals = {
        {"build empty.txt -o kept.obj", 1, "empty.txt: no points in it"},
        {"build prose.txt -o kept.obj", 1, "prose.txt:1: \"It\" is not a number"},
        {"build prose.txt --skip-bad -o kept.obj", 1, "prose.txt:1: \"It\" is not a number"},
        {"build nan.txt -o kept.obj", 1,
         "nan.txt:1: \"nan\" is not a finite number; fix the line or pass --skip-bad"},
        {"build typo.txt -o kept.obj", 1,
         "typo.txt:3: \"l\" is not a number; fix the line or pass --skip-bad"},
        {"build one.txt -o kept.obj", 1, "only 1 different point"},
        {"build row.txt -o kept.obj", 1, "lie on one line"},
        {"build zeros.txt -o kept.obj", 1, "not a text file"},
        {"build numbered.txt -o kept.obj", 1, "see --order"},
        {"build folder -o kept.obj", 1, "folder is a directory"},
        {"build hill.txt --eps x -o kept.obj", 2, "no number: --eps = x; see qsvtin build --help"},
        {"build hill.txt --surface s -o kept.obj", 2, "--surface chooses in LandXML files and drawings"},
        {"build missing.txt -o kept.obj", 1, "cannot read missing.txt"},
        {"build hill.txt --breaklines missing.txt -o kept.obj", 1, "cannot read missing.txt"},
        {"build hill.txt missing.txt -o kept.obj", 1, "cannot read missing.txt"},
        {"build hill.txt -o kept.obj -o full.obj", 1, "cannot write full.obj"},
        {"build hill.txt -o kept.obj -o folder/missing/x.png", 1, "folder/missing"},
        {"build hill.txt -o kept.obj -o x.dwg", 2, "x.dwg"},
        {"build hill.txt -o kept.obj -o noextension", 2, "noextension"},
        {"build kept.obj -o kept.obj", 2, "overwrite"},
        {"build hill.txt", 2, "--output is required; see qsvtin build --help"},
        {"build -o kept.obj", 2, "no input"},
        {"build hill.txt -o kept.obj --eps 0", 2, "--eps"},
        {"build hill.txt -o kept.obj --eps nan", 2, "--eps"},
        {"build hill.txt -o kept.obj --trim-angle -3", 2, "--trim-angle"},
        {"build hill.txt -o kept.obj --trim-angle nan", 2, "--trim-angle"},
        {"build hill.txt -o kept.obj --order zzz", 2, "--order zzz"},
        {"build hill.txt -o kept.obj --frobnicate", 2, "--frobnicate"},
        {"", 2, "no command; name one such as build, see qsvtin --help"},
        {"--frobnicate build", 2, "there is no option --frobnicate in front of a command"},
        {"frobnicate", 2, "there is no command frobnicate; see qsvtin --help"},
    };
    ExpectRefusals("", "kept.obj", refusals);
    // What was put there, and the two logs: nothing half-written stays behind.
    EXPECT_EQ(Count(), 15);
}

TEST_F(Program, ReportsForPrograms)
{
    Put("more.txt", "10 0 1\n5 5 8\n");
    const Result result = Run("build hill.txt more.txt --breaklines wall.txt --json -o hill.png -o hill.obj");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    const auto report = JsonOf(result.out);
    EXPECT_EQ(report["points_read"], 7);
    EXPECT_EQ(report["points_merged"], 2);
    EXPECT_EQ(report["points_rejected"], 0);
    EXPECT_EQ(report["points_unused"], 0);
    EXPECT_EQ(report["breaklines"], 1);
    EXPECT_EQ(report["segments"], 1);
    EXPECT_EQ(report["segments_enforced"], 1);
    EXPECT_EQ(report["crossings"], nlohmann::json::array());
    EXPECT_EQ(report["hull"], 4);
    EXPECT_EQ(report["range"]["z"], nlohmann::json({1.0, 9.0}));
    EXPECT_EQ(report["height_conflicts"][0]["dropped"], 8.0);
    EXPECT_DOUBLE_EQ(report["plan_area"].get<double>(), 100.0);
    EXPECT_GT(report["surface_area"].get<double>(), 100.0);
    EXPECT_GE(report["seconds"]["total"].get<double>(), report["seconds"]["write"].get<double>());
    // The mesh in the file is the one reported: Euler for a disc, 2n - 2 - h with h vertices on the outline.
    const std::string obj = Get("hill.obj");
    const auto countLines = [&](const std::string& start) {
        int count = 0;
        for (std::size_t at = obj.find(start); at != std::string::npos; at = obj.find(start, at + 1)) ++count;
        return count;
    };
    EXPECT_EQ(countLines("\nv "), report["vertices"]);
    EXPECT_EQ(countLines("\nf "), report["triangles"]);
    EXPECT_EQ(report["triangles"].get<int>(), 2 * report["vertices"].get<int>() - 2 - 4);
}

TEST_F(Program, ReportsForPeople)
{
    Put("bad.txt", "0 0 1\n10 0 1\nfive 5 9\n10 10 1\n0 10 1\n");
    Put("cross.txt", "# one\n2 2 3\n8 8 3\n\n# two\n2 8 5\n8 2 5\n");
    const Result result = Run("build bad.txt --skip-bad --breaklines cross.txt -o hill.svg");
    ASSERT_EQ(result.status, 0) << result.err;
    for (const char* const line : {
             "columns             x y z (assumed; --order to change)  bad.txt\n",
             "points read         4\n",
             "points rejected     1\n    bad.txt:3: \"five\" is not a number\n",
             "segments enforced   2 of 2\n",
             "crossings           1\n    5.000 5.000  heights 3.000 and 5.000 (2.000 apart): line 2 of "
             "cross.txt block 1 "
             "(one), line 6 of cross.txt block 2 (two)\n",
             "plan area           100.000\n",
             "written             hill.svg\n",
         }) {
        EXPECT_NE(result.out.find(line), std::string::npos) << line << "is not in\n" << result.out;
    }
}

// The first line runs along a sliver that --trim-angle cuts off; its name is not UTF-8.
TEST_F(Program, NamesIncompleteLinesAndHeightConflicts)
{
    Put("thin.txt", "0 0 1\n1 0 1\n2 0 1\n3 0 1\n4 0 1\n0 4 1\n4 4 9\n2 -0.05 1\n4 4 8.5\n");
    Put("lines.txt", "# gr\xE4nse\n0 0 1\n2 -0.05 1\n\n# ridge\n2 0 1\n4 4 9\n");
    const std::string arguments =
        "build thin.txt --breaklines lines.txt --trim-angle 5 --title Thin -o thin.obj";
    const Result people = Run(arguments);
    ASSERT_EQ(people.status, 0) << people.err;
    for (const char* const line : {
             "height conflicts    1 points at the place of another height\n    thin.txt:9: 8.500 dropped, "
             "9.000 kept\n",
             "segments enforced   1 of 2\n    lines.txt block 1 (gr\xE4nse): 1 of 1 segments are no edges of "
             "the "
             "surface\n        lines 2 to 3: 0.000 0.000 to 2.000 -0.050\n",
         }) {
        EXPECT_NE(people.out.find(line), std::string::npos) << line << "is not in\n" << people.out;
    }
    EXPECT_EQ(Get("thin.obj").substr(0, 15), "# qsvtin: Thin\n");

    const Result programs = Run(arguments + " --json");
    ASSERT_EQ(programs.status, 0) << programs.err;
    const auto report = JsonOf(programs.out);
    ASSERT_EQ(report["incomplete"].size(), 1u);
    EXPECT_EQ(report["incomplete"][0]["line"], 1);
    EXPECT_EQ(report["incomplete"][0]["missing"][0]["file_lines"], nlohmann::json({2, 3}));
    EXPECT_EQ(report["segments_enforced"], 1);
}

TEST_F(Program, TellsWhenPointsInLineFoldTheSurface)
{
    Put("line.txt", "-2521.985476945427 175.713395116136 1\n-1272.344737096022 1165.659920796980 1\n"
                    "-2250.620554171414 410.317488254661 1\n-1022.416589126141 1363.649225933149 1\n");
    const Result folded = Run("build line.txt -o line.tin");
    EXPECT_EQ(folded.status, 0);
    EXPECT_NE(folded.err.find("folded the surface (triangles that run clockwise: 1)"), std::string::npos)
        << folded.err;
    EXPECT_EQ(Run("check line.tin").status, 1);
    EXPECT_EQ(Run("build line.txt --eps 0.001 -o line.tin").err, "");
    EXPECT_EQ(Run("check line.tin").status, 0);
}

// A field in longitude and latitude; the same heights on a local grid, where they are steep but can be.
TEST_F(Program, TellsWhenCoordinatesLookLikeDegrees)
{
    Put("degrees.txt", "24.1001 60.2001 10\n24.1009 60.2002 11\n24.1003 60.2008 14\n");
    const Result degrees = Run("build degrees.txt -o a.tin");
    EXPECT_NE(degrees.err.find("x and y look like degrees"), std::string::npos) << degrees.err;
    EXPECT_NE(degrees.out.find("plan area           2.7e-07\n"), std::string::npos) << degrees.out;
    Put("local.txt", "1 1 10\n9 2 11\n3 8 14\n");
    EXPECT_EQ(Run("build local.txt -o a.tin").err, "");
}

// Ridges and a fault valley surveyed beside a grid of posts.
TEST_F(Program, BuildsTheSampleTerrain)
{
    const Result result = Run("build '" QSV_SAMPLE "/points.xyz' --breaklines '" QSV_SAMPLE
                              "/breaklines.txt' --json -o sample.png");
    ASSERT_EQ(result.status, 0) << result.err;
    const auto report = JsonOf(result.out);
    EXPECT_GT(report["segments"].get<int>(), 100);
    EXPECT_EQ(report["segments_enforced"], report["segments"]);
    EXPECT_EQ(report["points_unused"], 0);
    EXPECT_EQ(report["points_rejected"], 0);
    EXPECT_GT(fs::file_size(m_folder / "sample.png"), 100000u);
}

}   // namespace
