// What the machine does to the program: disks that are full, folders that are closed, readers that leave, memory
// that runs out. And what users do: commands with nonsense in them. One line that says so, the right status, and
// nothing lost.

#include "tests/support/fixtures.h"
#include "tests/support/program.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <sstream>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QSV_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QSV_SANITIZED 1
#endif
#endif

namespace {

namespace fs = std::filesystem;

class Faults : public ProgramTest
{
protected:
    Faults()
    {
        PutHill();
        Put("wall.txt", "# wall\n1 1 4\n9 1 4\n");
        Put("ring.txt", "0 0 1\n9 0 1\n9 9 1\n4 3 2\n0 9 1\n");
        EXPECT_EQ(Run("build hill.txt --breaklines wall.txt -o hill.tin").status, 0);
    }

    static std::string GridOfPoints(int side)
    {
        std::string text;
        for (int i = 0; i < side * side; ++i) {
            text += std::to_string(i % side) + " " + std::to_string(i / side) + " " +
                    std::to_string(i * 7919 % 100) + "\n";
        }
        return text;
    }

    // One line of the program's own, and nothing of a sanitizer's or the system's.
    static void ExpectOneLine(const Result& result)
    {
        EXPECT_EQ(result.err.rfind("qsvtin: ", 0), 0u) << result.err;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
};

TEST_F(Faults, AFullDiskIsToldForEveryFormatAndReport)
{
    for (const char* const extension : {"png", "svg", "pdf", "obj", "ply", "stl"}) {
        const std::string target = std::string("full.") + extension;
        fs::create_symlink("/dev/full", Path(target));
        const std::string picture = std::strchr("psp", extension[0]) && std::strcmp(extension, "ply") != 0 &&
                                            std::strcmp(extension, "stl") != 0
                                        ? "render hill.tin --size 200x200 -o " + target
                                        : "convert hill.tin " + target + " --ascii";
        for (const std::string& command : {picture, "build hill.txt -o kept.tin -o " + target}) {
            Put("kept.tin", "kept");
            ExpectRefusal(command, 1, "No space left");
            EXPECT_EQ(Get("kept.tin"), "kept");
        }
    }
    for (const std::string command :
         {"build hill.txt -o x.obj", "info hill.tin", "check hill.tin", "height hill.tin 1 1",
          "area hill.tin --json", "pick hill.tin 800,500", "convert hill.tin x.obj",
          "edit hill.tin --delete 4 -o x.tin", "join hill.tin -o x.tin", "polygon ring.txt -o x.ply"}) {
        SCOPED_TRACE(command);
        const Result result = Run(command, "/dev/full");
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find("cannot write the report"), std::string::npos) << result.err;
        ExpectOneLine(result);
    }
    const Result help = Run("--help", "/dev/full");
    EXPECT_EQ(help.status, 1);
    ExpectOneLine(help);
}

TEST_F(Faults, APlaceThatCannotBeWrittenIsNamed)
{
    ExpectRefusal("build hill.txt -o /proc/hill.obj", 1, "cannot write /proc/hill.obj");
    ExpectRefusal("render hill.tin -o /proc/hill.png", 1, "cannot write /proc/hill.png");
    ExpectRefusal("convert hill.tin .", 2, "");
    fs::create_directory(Path("folder.tin"));
    ExpectRefusal("convert hill.tin folder.tin", 1, "it is a folder");
    ExpectRefusal("info folder.tin", 1, "is a directory");

    // Root may write everywhere, unless it gives that up.
    Put("kept.obj", "kept");
    fs::permissions(Path("kept.obj"), fs::perms(0444));
    fs::create_directory(Path("closed"));
    fs::permissions(Path("closed"), fs::perms(0555));
    const std::string likeOthers = geteuid() == 0 ? "setpriv --bounding-set=-dac_override " : "";
    for (const std::string target : {"kept.obj", "closed/new.obj", "closed/new.tin"}) {
        const Result result = Shell(likeOthers + "'" QSVTIN_PROGRAM "' convert hill.tin " + target);
        EXPECT_EQ(result.status, 1) << target;
        EXPECT_NE(result.err.find("cannot write " + target + ": Permission denied"), std::string::npos)
            << result.err;
        ExpectOneLine(result);
    }
    EXPECT_EQ(Get("kept.obj"), "kept");
}

// A reader that leaves ends the program as it ends every other; where the signal is ignored, with a line.
TEST_F(Faults, AReaderThatLeavesEndsTheProgramAfterItsFilesAreWhole)
{
    const std::string program = "'" QSVTIN_PROGRAM "' ";
    ASSERT_EQ(Run("build hill.txt -o whole.obj").status, 0);
    const std::string whole = Get("whole.obj");
    for (const std::string ignored : {"", "trap '' PIPE; "}) {
        const Result result = Shell(ignored + "{ " + program +
                                    "build hill.txt -o left.obj; echo $? >status; } | true; cat status");
        EXPECT_EQ(Get("left.obj"), whole);
        fs::remove(Path("left.obj"));
        if (!ignored.empty() && result.out != "0\n") {   // the reader may leave after the last word
            EXPECT_EQ(result.out, "1\n");
            EXPECT_NE(result.err.find("cannot write the report: Broken pipe"), std::string::npos)
                << result.err;
            ExpectOneLine(result);
        }
    }
    std::string places;
    for (int i = 0; i < 50000; ++i) places += "5 5\n";
    Put("places.txt", places);
    const Result result = Shell("trap '' PIPE; { " + program +
                                "height hill.tin - <places.txt; echo $? >status; } | head -n 1; cat status");
    EXPECT_EQ(result.out, "9\n1\n");
    ExpectOneLine(result);
    EXPECT_EQ(Shell("{ " + program + "height hill.tin - <places.txt; } | head -n 1").out, "9\n");
}

#ifndef QSV_SANITIZED   // sanitizers need all the addresses there are
TEST_F(Faults, MemoryThatRunsOutIsToldAndNothingIsLost)
{
    Put("grid.txt", GridOfPoints(150));
    ASSERT_EQ(Run("build grid.txt -o site.tin -o site.obj").status, 0);
    const std::string whole = Get("site.tin");
    int told = 0;
    bool done = false;
    for (int kilobytes = 8000; !done && kilobytes < 2000000; kilobytes += kilobytes < 100000 ? 400 : 100000) {
        SCOPED_TRACE(kilobytes);
        Put("site.tin", "old");
        const Result result = Shell("ulimit -v " + std::to_string(kilobytes) +
                                    "; '" QSVTIN_PROGRAM "' build grid.txt -o site.tin -o site.obj");
        done = result.status == 0;
        if (done) {
            EXPECT_EQ(Get("site.tin"), whole);
            break;
        }
        EXPECT_EQ(Get("site.tin"), "old");
        if (result.err.rfind("qsvtin: ", 0) == 0) {   // below that not even the program itself fits
            EXPECT_EQ(result.status, 1);
            EXPECT_NE(result.err.find("out of memory"), std::string::npos) << result.err;
            ExpectOneLine(result);
            ++told;
        } else {
            EXPECT_EQ(told, 0) << "status " << result.status << " " << result.err;
        }
    }
    EXPECT_TRUE(done);
    EXPECT_GT(told, 0);
}
#endif

// Commands that are nearly right.
class Nonsense
{
public:
    explicit Nonsense(std::uint64_t seed) : m_dice(seed) {}

    std::string Command()
    {
        static const std::vector<std::vector<std::string>> aTemplate = {
            {"build", "hill.txt", "--breaklines", "wall.txt", "--trim-angle", "5", "--eps", "0.01", "-o",
             "o.tin"},
            {"build", "hill.txt", "--order", "xyz", "--skip-bad", "--json", "-o", "o.svg"},
            {"polygon", "ring.txt", "--name", "pond", "-o", "o.ply"},
            {"info", "hill.tin", "--tin", "1", "--json"},
            {"check", "hill.tin", "--json"},
            {"height", "hill.tin", "1", "1", "--nearest"},
            {"area", "hill.tin", "--json"},
            {"render", "hill.tin", "--view", "205,30", "--perspective", "--size", "200x150", "--skirt", "-1",
             "-o", "o.png"},
            {"pick", "hill.tin", "100,70", "--size", "200x150", "--exaggerate", "2"},
            {"edit", "hill.tin", "--insert", "5,4,3", "--delete", "4", "--trim-angle", "5", "--skirt", "0",
             "--merge", "hill.tin", "-o", "o.tin"},
            {"convert", "hill.tin", "o.stl", "--ascii", "--title", "hill"},
            {"convert", "bad.tin", "o.obj", "--relink", "--format", "1"},
            {"join", "hill.tin", "bad.tin", "-o", "o.tin", "--format", "1"},
            {"view", "hill.tin", "--breaklines", "wall.txt", "--exaggerate", "2", "--title", "hill", "-o",
             "o.html"},
            {"manual", "--help"},
            {"completion", "bash"},
        };
        std::vector<std::string> word = Pick(aTemplate);
        for (int n = 1 + m_dice.Below(3); n > 0; --n) {
            const std::ptrdiff_t at = 1 + m_dice.Below(static_cast<int>(word.size()) - 1);
            switch (m_dice.Below(6)) {
            case 0: word.erase(word.begin() + at); break;
            case 1: word.insert(word.begin() + at, Option()); break;
            case 2: word.insert(word.begin() + at, Value()); break;
            default: word[static_cast<std::size_t>(at)] = m_dice.Below(3) == 0 ? Option() : Value();
            }
            if (word.size() < 2) break;
        }
        std::string command;
        for (const std::string& w : word) command += "'" + w + "' ";
        return command + "</dev/null";
    }

private:
    template <class T>
    const T& Pick(const std::vector<T>& list)
    {
        return list[static_cast<std::size_t>(m_dice.Below(static_cast<int>(list.size())))];
    }

    static std::vector<std::string> Words(const char* text)
    {
        std::istringstream words(text);
        return {std::istream_iterator<std::string>(words), {}};
    }

    const std::string& Option()
    {
        static const std::vector<std::string> aOption = Words(
            "--breaklines --order --trim-angle --eps --skip-bad --json -o --format --name --ascii --title "
            "--tin --nearest --view --size --exaggerate --skirt --merge --insert --delete --relink --help "
            "-- - --no-edges -x --output= --perspective --units --surface --strings --codes --texture "
            "--grid-sphere");
        return Pick(aOption);
    }

    const std::string& Value()
    {
        static const std::vector<std::string> aValue = [] {
            std::vector<std::string> words = Words(
                "0 -1 1e308 -1e-320 nan -inf 99999999999999999999 2147483648 0x10 .5 1e15 1,2 1,2,3 "
                "nan,nan,nan 1e15,-1e15,1e15 5,5 -5,-5,-5 205,30 0,90 360,1 0,0 100x100 99999x99999 x , "
                "%s%n%n \xFF\xFE zyx pnezd é foot hill.tin bad.tin hill.txt wall.txt ring.txt "
                "garbage.tin garbage.txt garbage.obj garbage.ply garbage.stl empty.txt empty.tin empty.stl "
                "huge.tin huge.ply huge.txt folder missing.tin /dev/null o.tin o.png o.svg o.pdf o.obj "
                "O.PLY o.dwg o.xml o.dxf folder/o.tin missing/o.obj");
            words.insert(words.end(), {"", std::string(300, 'n')});
            return words;
        }();
        return Pick(aValue);
    }

    Dice m_dice;
};

// QSV_NONSENSE=10000 in the environment tries more commands, QSV_NONSENSE_SEED others.
TEST_F(Faults, NonsenseIsRefusedInWords)
{
    Dice dice(3);
    std::string garbage;
    for (int i = 0; i < 3000; ++i) garbage += static_cast<char>(dice.Below(256));
    for (const char* const name :
         {"garbage.tin", "garbage.txt", "garbage.obj", "garbage.ply", "garbage.stl"}) {
        Put(name, garbage);
    }
    for (const char* const name : {"empty.txt", "empty.tin", "empty.stl"}) Put(name, "");
    Put("huge.txt", "1e15 -1e15 1e15\n-1e15 1e15 0\n1e15 1e15 1e-300\n0 0 1e308\n1e14 3 3\n");
    Put("huge.ply",
        "ply\nformat ascii 1.0\nelement vertex 2000000000\nproperty float x\nend_header\n1 2 3\n");
    Put("huge.tin", std::string("\xFF\xFF\xFF\x7F", 4) + std::string(40, '\1'));
    std::string bad = Get("hill.tin");
    for (int i = 0; i < 12; ++i) {
        bad[bad.size() - 1 - static_cast<std::size_t>(dice.Below(300))] = static_cast<char>(dice.Below(256));
    }
    Put("bad.tin", bad);
    fs::create_directory(Path("folder"));
    const std::string hill = Get("hill.tin"), text = Get("hill.txt");

    const char* const wanted = std::getenv("QSV_NONSENSE");
    const char* const seed = std::getenv("QSV_NONSENSE_SEED");
    Nonsense nonsense(seed ? std::strtoull(seed, nullptr, 10) : 11);
    int succeeded = 0, refused = 0;
    for (int n = wanted ? std::atoi(wanted) : 60; n > 0; --n) {
        const std::string command = nonsense.Command();
        SCOPED_TRACE(command);
        const Result result = Run(command);
        ASSERT_TRUE(result.status >= 0 && result.status <= 2) << result.status << result.err;
        (result.status == 0 ? succeeded : refused) += 1;
        std::istringstream lines(result.err);
        bool any = false;
        for (std::string line; std::getline(lines, line); any = true) {
            ASSERT_EQ(line.rfind("qsvtin: ", 0), 0u) << result.err;
        }
        ASSERT_EQ(any || result.status == 0, true) << "refused without a word";
        if (Get("hill.tin") != hill) Put("hill.tin", hill);   // it may have been named as an output
        if (Get("hill.txt") != text) Put("hill.txt", text);
        for (const auto& file : fs::directory_iterator(m_folder)) {
            ASSERT_EQ(file.path().string().find("qsvtin-part"), std::string::npos) << "left behind";
        }
    }
    EXPECT_GT(succeeded, 0);
    EXPECT_GT(refused, succeeded);
}

}   // namespace
