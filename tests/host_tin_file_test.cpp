// TIN files as users meet them: kept, converted, joined, chosen from, checked, and safe from what goes wrong.

#include "tests/support/program.h"

#include "qsv_3dprocess.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>

namespace {

namespace fs = std::filesystem;

class TinFile : public ProgramTest
{
protected:
    TinFile() { PutHill(); }

    CArray<CTin, CTin&> Read(const std::string& file) const
    {
        CArray<CTin, CTin&> tins;
        EXPECT_EQ(CTin::ReadBIN_VER2(Path(file).c_str(), tins), 1) << file;
        return tins;
    }
};

TEST_F(TinFile, HoldsWhatWasBuiltInSurveyCoordinatesInAllForms)
{
    Put("far.txt", "21530180.582 6783126.792 1\n21530190.582 6783126.792 2\n21530180.582 6783136.792 3\n");
    const struct {
        const char* options;
        std::uintmax_t size;
        const char* name;
        const char* start;
    } aCase[] = {
        {"--format 0", 36 + 24 * 3 + 24 + 4 * 6, "0", "\3"},
        {"--format 1 --name Ufer", 36 + 296 + 24 * 3 + 24 + 4 * 6, "Ufer", "TIN_1.00"},
        {"", 36 + 272 + 32 * 3 + 24 + 4 * 6, "far", "TIN_2.00"},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.options);
        ASSERT_EQ(Run(std::string("build far.txt -o far.tin ") + c.options).status, 0);
        EXPECT_EQ(fs::file_size(Path("far.tin")), c.size);
        EXPECT_STREQ(Get("far.tin").c_str(), c.start);
        CArray<CTin, CTin&> tins = Read("far.tin");
        ASSERT_EQ(tins.GetSize(), 1);
        EXPECT_STREQ(tins[0].m_strName, c.name);
        ASSERT_EQ(tins[0].GetPointSize(), 3);
        EXPECT_EQ(tins[0].m_aVertex[1].x, 21530190.582);
        EXPECT_EQ(tins[0].m_aVertex[2].y, 6783136.792);
        EXPECT_EQ(tins[0].m_aVertex[2].tv, std::strlen(c.options) == 0 ? 1.0f : 0.0f) << "texture in form 2";
        double x = 0.0, y = 0.0, z = 0.0, distance = 0.0;
        ASSERT_EQ(tins[0].NearestOutsideTin(21530180.0, 6783126.0, x, y, z, distance), 1)
            << "outline in pairs";
        EXPECT_EQ(z, 1.0);
    }
}

// The area of a plan at 21 million east is lost when it is computed there.
TEST_F(TinFile, TellsCountsRangesAndAreasWhereverTheSurveyLies)
{
    // A rectangle of 10.37 by 7.91 with a point inside, level.
    Put("far.txt", "21530000.137 6783000.731 1\n21530010.507 6783000.731 1\n21530010.507 6783008.641 1\n"
                   "21530000.137 6783008.641 1\n21530005.3 6783004.7 1\n");
    ASSERT_EQ(Run("build far.txt -o far.tin --name hill").status, 0);
    const auto report = Report("info far.tin");
    EXPECT_EQ(report["form"], 2);
    const auto& tin = report["tins"][0];
    EXPECT_EQ(tin["name"], "hill");
    EXPECT_EQ(tin["vertices"], 5);
    EXPECT_EQ(tin["triangles"], 4);
    EXPECT_EQ(tin["pieces"], 1);
    EXPECT_EQ(tin["outline_edges"], 4);
    EXPECT_NEAR(tin["outline_length"].get<double>(), 36.56, 1e-7);
    EXPECT_EQ(tin["boundary_entries"], 8);
    EXPECT_EQ(tin["range"]["x"], nlohmann::json({21530000.137, 21530010.507}));
    EXPECT_EQ(tin["range"]["z"], nlohmann::json({1.0, 1.0}));
    EXPECT_EQ(tin["sound"], true);
    const auto area = Report("area far.tin");
    EXPECT_NEAR(area["plan_area"].get<double>(), 10.37 * 7.91, 1e-6);
    EXPECT_NEAR(area["surface_area"].get<double>(), 10.37 * 7.91, 1e-6);
    EXPECT_EQ(Run("area far.tin").out, "plan area           82.027\nsurface area        82.027\n");
}

// A slope z = x over 10 by 10, and a pyramid 6 high over 10 by 10: every way in which
// a level cuts a triangle or does not.
TEST_F(TinFile, TellsVolumesAboveAndBelowALevel)
{
    Put("slope.txt", "0 0 0\n10 0 10\n10 10 10\n0 10 0\n");
    Put("tent.txt", "0 0 0\n10 0 0\n10 10 0\n0 10 0\n5 5 6\n");
    const struct {
        const char* survey;
        double level, above, areaAbove, below;
    } aCase[] = {
        {"slope.txt", 4.0, 180.0, 60.0, 80.0}, {"slope.txt", -1.0, 600.0, 100.0, 0.0},
        {"slope.txt", 10.0, 0.0, 0.0, 500.0},  {"tent.txt", 0.0, 200.0, 100.0, 0.0},
        {"tent.txt", 3.0, 25.0, 25.0, 125.0},   // a pyramid half as wide and high; 300 - (200 - 25)
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(std::string(c.survey) + " at " + std::to_string(c.level));
        ASSERT_EQ(Run("build " + std::string(c.survey) + " -o t.tin").status, 0);
        const auto level = Report("area t.tin --level " + std::to_string(c.level))["level"];
        EXPECT_NEAR(level["volume_above"].get<double>(), c.above, 1e-9);
        EXPECT_NEAR(level["plan_area_above"].get<double>(), c.areaAbove, 1e-9);
        EXPECT_NEAR(level["volume_below"].get<double>(), c.below, 1e-9);
        EXPECT_NEAR(level["plan_area_below"].get<double>(), 100.0 - c.areaAbove, 1e-9);
    }
    EXPECT_EQ(Run("area t.tin --level 3").out, "plan area           100.000\nsurface area        156.205\n"
                                               "above 3.000         25.000 over a plan area of 25.000\n"
                                               "below 3.000         125.000 over a plan area of 75.000\n");
    EXPECT_EQ(Run("area t.tin --level nan").status, 2);
}

TEST_F(TinFile, ConvertsBetweenFormsWithoutLosingABit)
{
    // Nothing here comes from this program: a ring as outline, texture coordinates, a vertex that no triangle uses.
    CArray<CTin, CTin&> tins;
    tins.SetSize(1);
    CTin& tin = tins[0];
    tin.m_strName = "gr\xC3\xA4nse";
    const double aPoint[][3] = {
        {0.1, -0.0, 1e-300}, {1.0 / 3.0, 0.2, -7.0}, {0.1, 5.0, 2.0}, {9e9, 1.0, 0.0}};
    for (const auto& p : aPoint) tin.AddPoint(p[0], p[1], p[2]);
    tin.m_aVertex[1].tu = 0.25f;
    tin.AddTri(0, 1, 2);
    tin.m_aBoundary.SetSize(3);
    for (int i = 0; i < 3; ++i) tin.m_aBoundary[i] = i;
    ASSERT_EQ(CTin::WriteBIN_VER2(Path("a.tin").c_str(), tins), 1);
    tins[0].m_aVertex[1].tu = 0.0f;
    ASSERT_EQ(CTin::WriteBIN_VER1(Path("one.tin").c_str(), tins), 1);
    ASSERT_EQ(tins[0].WriteBIN_VER0(Path("zero.tin").c_str()), 1);

    for (const char* const command :
         {"convert a.tin b2.tin", "convert a.tin b1.tin --format 1", "convert a.tin b0.tin --format 0",
          "convert b1.tin c0.tin --format 0", "convert b0.tin c1.tin --format 1 --name gr\xC3\xA4nse"}) {
        EXPECT_EQ(Run(command).status, 0) << command;
    }
    EXPECT_EQ(Get("b2.tin"), Get("a.tin"));
    EXPECT_EQ(Get("b1.tin"), Get("one.tin"));
    EXPECT_EQ(Get("c1.tin"), Get("one.tin"));
    EXPECT_EQ(Get("b0.tin"), Get("zero.tin"));
    EXPECT_EQ(Get("c0.tin"), Get("zero.tin"));
}

TEST_F(TinFile, JoinsTinsAndChoosesBetweenThem)
{
    ASSERT_EQ(Run("build hill.txt -o hill.tin --format 0").status, 0);
    Put("flat.txt", "0 0 2\n4 0 2\n0 4 2\n");
    ASSERT_EQ(Run("build flat.txt -o flat.tin --name 7").status, 0);
    ASSERT_EQ(Run("build flat.txt -o flat.obj").status, 0);
    ASSERT_EQ(Run("join hill.tin flat.tin flat.obj -o all.tin").status, 0);
    const CArray<CTin, CTin&> tins = Read("all.tin");
    ASSERT_EQ(tins.GetSize(), 3);
    EXPECT_STREQ(tins[0].m_strName, "hill") << "named as its file, which has no room for a name";
    EXPECT_STREQ(tins[1].m_strName, "7");
    EXPECT_STREQ(tins[2].m_strName, "flat");

    const auto area = [&](const char* tin) {
        return Report(std::string("area all.tin --tin ") + tin)["plan_area"];
    };
    EXPECT_EQ(area("1"), 100.0);
    EXPECT_EQ(area("hill"), 100.0);
    EXPECT_EQ(area("7"), 8.0) << "no TIN has this number, so it is a name";
    EXPECT_EQ(area("3"), 8.0);
    const Result first = Run("area all.tin");
    EXPECT_EQ(first.status, 0);
    EXPECT_EQ(first.err, "qsvtin: all.tin holds 3 TINs; this is the first, \"hill\" (--tin to choose)\n");
    EXPECT_EQ(Report("info all.tin")["tins"].size(), 3u);
    EXPECT_EQ(Report("info all.tin --tin flat")["tins"][0]["number"], 3);

    // A collection goes over whole, unless one is wanted.
    ASSERT_EQ(Run("convert all.tin whole.tin --format 1").status, 0);
    EXPECT_EQ(Read("whole.tin").GetSize(), 3);
    ASSERT_EQ(Run("convert all.tin one.tin --tin 2 --name bank").status, 0);
    EXPECT_STREQ(Read("one.tin")[0].m_strName, "bank");
    // Editing one leaves the others as they are.
    ASSERT_EQ(Run("edit all.tin --tin hill --delete 4 -o all.tin").status, 0);
    const CArray<CTin, CTin&> edited = Read("all.tin");
    ASSERT_EQ(edited.GetSize(), 3);
    EXPECT_EQ(edited[0].m_aTri.GetSize(), 2);
    EXPECT_EQ(edited[1].m_aTri.GetSize(), 1);

    ASSERT_EQ(Run("join flat.obj flat.obj -o twins.tin").status, 0);
    ExpectRefusal("area twins.tin --tin flat", 2, "more than one TIN");
    ExpectRefusal("area all.tin --tin 4", 2, "has no TIN of this name, and numbers go from 1 to 3");
    ExpectRefusal("convert all.tin zero.tin --tin 1 --format 3", 2, "--format must be");
    ExpectRefusal("convert all.tin x.tin --name both", 2, "choose one with --tin");
    ExpectRefusal("join all.tin -o all.obj", 2, ".tin");
    ExpectRefusal("join all.tin -o x.tin --format 0", 2, "--format must be 2 or 1");
    ExpectRefusal("edit all.tin --tin 1 --delete 0 -o x.tin --format 0", 2, "holds one TIN, not 3");
}

// Two triangles, of which the second is damaged in one way after the other.
TEST_F(TinFile, CheckNamesEveryFaultAndFails)
{
    const auto damaged = [&](void (*damage)(CTin&)) {
        CTin tin;
        const double aPoint[][2] = {{0.0, 0.0}, {4.0, 0.0}, {0.0, 4.0}, {4.0, 4.0}};
        for (const auto& p : aPoint) tin.AddPoint(p[0], p[1], 1.0);
        tin.AddTri(0, 1, 2);
        tin.AddTri(2, 1, 3);
        tin.UpdateTopology();
        tin.UpdateBoundary();
        damage(tin);
        EXPECT_EQ(tin.WriteBIN_VER0(Path("x.tin").c_str()), 1);
    };
    const struct {
        void (*damage)(CTin&);
        const char* kind;
        bool computable;
    } aCase[] = {
        {[](CTin& tin) { tin.m_aTri[1].m_nVertex[2] = 99; }, "corner refers to no vertex", false},
        {[](CTin& tin) { tin.m_aTri[1].m_nNeighbor[0] = 99; }, "neighbour is not a triangle", false},
        {[](CTin& tin) { tin.m_aTri[1].m_nNeighbor[1] = -1; }, "neighbour does not link back", true},
        {[](CTin& tin) { std::swap(tin.m_aTri[1].m_nVertex[0], tin.m_aTri[1].m_nVertex[1]); },
         "triangle runs clockwise", true},
        {[](CTin& tin) { tin.m_aVertex[3].z = std::nan(""); }, "coordinate is not a finite number", false},
        {[](CTin& tin) { tin.m_aBoundary[0] = -5; }, "boundary refers to no vertex", true},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.kind);
        damaged(c.damage);
        const Result result = Run("check x.tin");
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err.rfind("qsvtin: x.tin is broken: ", 0), 0u) << result.err;
        EXPECT_NE(result.out.find(c.kind), std::string::npos) << result.out;
        const auto json = JsonOf(Run("check x.tin --json").out);
        EXPECT_EQ(json["sound"], false);
        std::size_t places = 0;
        for (const auto& kind : json["tins"][0]["kinds"]) places += kind["places"].size();
        EXPECT_EQ(json["tins"][0]["faults"], places);
        // Telling about it and passing it on always work; computing does where there is something to compute with.
        EXPECT_EQ(Run("info x.tin").status, 0);
        EXPECT_EQ(Run("convert x.tin y.tin").status, 0);
        EXPECT_EQ(Run("height x.tin 1 1").status, c.computable ? 0 : 1);
        EXPECT_EQ(Run("convert x.tin y.png").status, !QSV_PICTURES ? 2 : c.computable ? 0 : 1);
        EXPECT_EQ(Run("edit x.tin --insert 1,1,1 -o y.tin").status, c.computable ? 0 : 1);
    }
    damaged([](CTin& tin) { tin.m_aTri[1].m_nNeighbor[0] = 99; });
    ASSERT_EQ(Run("convert x.tin mended.tin --relink").status, 0);
    EXPECT_EQ(Run("check mended.tin").status, 0);
    damaged([](CTin&) {});
    EXPECT_EQ(Run("check x.tin").out, "TIN 1 \"x\"           sound\n");
}

TEST_F(TinFile, RefusesFilesThatAreNone)
{
    const std::string whole = Get("hill.tin");
    Put("short.tin", whole.substr(0, whole.size() - 1));
    Put("long.tin", whole + "x");
    Put("empty.tin", "");
    Put("zeros.tin", std::string(1000, '\0'));
    Put("none.tin", std::string("TIN_2.00") + std::string(28, '\0'));
    std::string many = whole;
    many.replace(32, 4, "\xFF\xFF\xFF\x7F");   // 2 147 483 647 TINs
    Put("many.tin", many);
    fs::create_directory(Path("folder.tin"));
    fs::create_symlink("/dev/zero", Path("device.tin"));
    const std::pair<const char*, const char*> aCase[] = {
        {"short.tin", "is damaged or cut short"}, {"long.tin", "is damaged or cut short"},
        {"empty.tin", "is no TIN file"},          {"zeros.tin", "is no TIN file"},
        {"hill.txt", "is no TIN file"},           {"none.tin", "holds no TIN"},
        {"many.tin", "is damaged or cut short"},  {"folder.tin", "is a directory"},
        {"device.tin", "a device or a pipe"},     {"missing.tin", "No such file"},
    };
    for (const auto& [file, message] : aCase) {
        for (const std::string command : {"info", "check", "area"}) {
            ExpectRefusal(command + " " + file, 1, message);
        }
        ExpectRefusal(std::string("height ") + file + " 1 1", 1, message);
        ExpectRefusal(std::string("convert ") + file + " hill.tin", 1, message);
        ExpectRefusal(std::string("join hill.tin ") + file + " -o hill.tin", 1, message);
        ExpectRefusal(std::string("edit hill.tin --merge ") + file + " -o hill.tin", 1, message);
        EXPECT_EQ(Get("hill.tin"), whole);
    }
}

TEST_F(TinFile, AFullDiskLeavesTheOldFileWhole)
{
    Put("site.tin", "old");
    Put("site.obj", "old");
    Put("grid.txt", [] {
        std::string text;
        for (int i = 0; i < 900; ++i) {
            text +=
                std::to_string(i % 30) + " " + std::to_string(i / 30) + " " + std::to_string(i % 7) + "\n";
        }
        return text;
    }());
    // Files may grow to some kilobytes; the signal that tells so is ignored, as on a full disk there is none.
    const std::string limit = "trap '' XFSZ; ulimit -f 8; '" QSVTIN_PROGRAM "' ";
    for (const char* const command : {"build grid.txt -o site.tin", "build grid.txt -o site.tin --format 1",
                                      "build grid.txt -o site.tin --format 0", "build grid.txt -o site.obj",
                                      "build hill.txt -o site.tin -o site.png"}) {
        if (!QSV_PICTURES && std::string(command).find("png") != std::string::npos) continue;
        SCOPED_TRACE(command);
        const auto files = Count();
        const Result result = Shell(limit + command);
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find("cannot write site."), std::string::npos) << result.err;
        EXPECT_EQ(Get("site.tin"), "old");
        EXPECT_EQ(Get("site.obj"), "old");
        EXPECT_LE(Count(), files + 2) << "but for the logs, nothing half-written stays";
        EXPECT_FALSE(fs::exists(Path("site.tin.qsvtin-part")));
    }
    fs::create_symlink("/dev/full", Path("full.tin"));
    ExpectRefusal("build hill.txt -o site.tin -o full.tin", 1, "a device or a pipe");
    EXPECT_EQ(Get("site.tin"), "old");
}

// Whenever the process dies, the target is the old file or the new one.
TEST_F(TinFile, AKilledProcessLeavesTheOldFileWhole)
{
    CArray<CTin, CTin&> tins;
    tins.SetSize(1);
    tins[0].BeginAddPoint(300000);
    for (int i = 0; i < 300000; ++i) tins[0].AddPoint2(i % 500, i / 500, i);
    tins[0].EndAddPoint();
    tins[0].AddTri(0, 1, 500);
    ASSERT_EQ(CTin::WriteBIN_VER2(Path("new.tin").c_str(), tins), 1);
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(Run("convert new.tin whole.tin --format 1").status, 0);
    const auto wholeRun = std::chrono::steady_clock::now() - start;
    const auto most = static_cast<unsigned>(wholeRun / std::chrono::microseconds(1));
    const std::string whole = Get("whole.tin"), old(1000, 'o');

    const std::string part = Path("site.tin.qsvtin-part");
    std::mt19937 random(20);
    int interrupted = 0, replaced = 0;
    for (int i = 0; i < 40; ++i) {
        Put("site.tin", old);
        const bool left = fs::exists(part);
        const pid_t process = fork();
        if (process == 0) {
            if (chdir(m_folder.c_str()) == 0 && freopen("stdout.log", "w", stdout)) {
                execl(QSVTIN_PROGRAM, "qsvtin", "convert", "new.tin", "site.tin", "--format", "1", nullptr);
            }
            _exit(99);
        }
        // Beside what a run before left it cannot be seen when the saving begins: then at any moment.
        for (unsigned waited = 0; !left && !fs::exists(part) && waited < 4 * most; waited += 100) usleep(100);
        usleep(static_cast<useconds_t>(random() % (left ? most : 20000)));
        kill(process, SIGKILL);
        int ended = 0;
        ASSERT_EQ(waitpid(process, &ended, 0), process);
        interrupted += !left && fs::exists(part) ? 1 : 0;
        const std::string found = Get("site.tin");
        replaced += found == whole ? 1 : 0;
        ASSERT_TRUE(found == old || found == whole) << "a file of " << found.size() << " bytes";
    }
    EXPECT_GT(interrupted, 0) << "while saving";
    const auto files = Count();
    ASSERT_EQ(Run("convert new.tin site.tin --format 1").status, 0);
    EXPECT_EQ(Get("site.tin"), whole);
    EXPECT_FALSE(fs::exists(part)) << "taken over";
    EXPECT_LE(Count(), files) << "nor did other files pile up";
    std::printf("%d runs died while saving, %d came to their end\n", interrupted, replaced);
}

}   // namespace
