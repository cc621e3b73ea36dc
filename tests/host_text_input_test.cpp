#include "host/failure.h"
#include "host/input/breakline_text.h"
#include "host/input/survey_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace {

using namespace qsvtin;

struct Points {
    PointFile file;
    std::vector<BadLine> bad;
};

Points ReadPoints(const std::string& text, const std::string& order = "")
{
    Points read;
    TextFile file("survey.txt", text);
    read.file = ReadSurveyPoints(file, OrderFromLetters(order), read.bad);
    return read;
}

void ExpectPoint(const PointFile& file, std::size_t index, double x, double y, double z, int line)
{
    ASSERT_LT(index, file.points.size());
    EXPECT_EQ(file.points[index].x, x);
    EXPECT_EQ(file.points[index].y, y);
    EXPECT_EQ(file.points[index].z, z);
    EXPECT_EQ(file.lines[index], line);
}

// The same two points as instruments, spreadsheets and editors write them.
TEST(SurveyText, ReadsEverySeparatorAndLineEnd)
{
    const char* const aText[] = {
        "10.5 -20 3\n11.5 -21 4\n",
        "10.5,-20,3\n11.5,-21,4",
        "10.5\t-20\t3\r\n11.5\t-21\t4\r\n",
        "10.5;-20;3\r11.5;-21;4\r",
        "\357\273\27710.5 -20 3 oak, big; old\n11.5\t  -21 4\n",
        "  10.5 , -2e1 , +3 \n\"11.5\",\"-21\",\"4\"\n",
        "# a comment\n\n10.5 -20 3\n11.5 -21 4 # the wall\n",
        "10,5;-20;3\r\n\"11,5\";-21;4,0",
        "10,5\t-20,000\t3\n11,5\t-21\t4\n",
        "10,5 -20 3\n11,5 -21 4,\n",
    };
    for (const char* const text : aText) {
        SCOPED_TRACE(text);
        const Points read = ReadPoints(text);
        EXPECT_TRUE(read.bad.empty());
        ASSERT_EQ(read.file.points.size(), 2u);
        const int first = text[0] == '#' ? 3 : 1;
        ExpectPoint(read.file, 0, 10.5, -20.0, 3.0, first);
        ExpectPoint(read.file, 1, 11.5, -21.0, 4.0, first + 1);
    }
}

// Every case holds the point x 1000, y 2000, z 30.
TEST(SurveyText, FindsTheColumns)
{
    const struct {
        const char* text;
        const char* order;
        const char* columns;
    } aCase[] = {
        {"1000 2000 30\n", "", "x y z (assumed; --order to change)"},
        {"2000 1000 30\n", "yxz", "y x z (--order)"},
        {"7,2000,1000,30,oak\n", "pnezd", "point y x z description (--order)"},
        {"A7,1000,2000,30\n", "penz", "point x y z (--order)"},
        {"7,2000,1000,30,oak\n", "P,N,E,Z,D", "point y x z description (--order)"},
        {"1000 9 2000 9 30\n", "x-y-z", "x - y - z (--order)"},
        {"Point;Northing;Easting;Elevation;Code\nP1;2000;1000;30;oak\n", "",
         "point y x z description (heading)"},
        {"Nr;Rechtswert;Hochwert;H\303\266he\n7;1000,0;2000,0;30\n", "",
         "point x y z (heading), decimals behind a comma"},
        {"Y [m]\tX [m]\tH [m]\n2000\t1000\t30\n", "", "y x z (heading)"},
        {"East North Elev\n1000,2000,30\n", "", "x y z (heading)"},
        {"# point,northing,easting,elevation,desc (feet)\n1,2000,1000,30,oak\n", "",
         "point y x z description (named in a comment)"},
        {"# the x and y of the z\n1000 2000 30\n", "", "x y z (assumed; --order to change)"},
        {"1000,2000,30,45\n", "",
         "x y z (assumed, but the first column looks like a point number; --order to change)"},
        {"Nummer Rechts Hoch Hoehe\n7 1000 2000 30\n", "pxyz", "point x y z (--order)"},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.text);
        const Points read = ReadPoints(c.text, c.order);
        EXPECT_TRUE(read.bad.empty());
        EXPECT_EQ(read.file.columns, c.columns);
        ASSERT_EQ(read.file.points.size(), 1u);
        EXPECT_EQ(read.file.points[0].x, 1000.0);
        EXPECT_EQ(read.file.points[0].y, 2000.0);
        EXPECT_EQ(read.file.points[0].z, 30.0);
    }
    for (const char* const order : {"", "xy", "xyzz", "exnz", "abd"}) {
        EXPECT_FALSE(OrderFromLetters(order)) << order;
    }
}

TEST(SurveyText, SaysWhatIsWrongWithALineAndReadsTheOthers)
{
    const Points read = ReadPoints("0 0 1\n"
                                   "1 0 abc\n"
                                   "1 0\n"
                                   "nan 0 1\n"
                                   "0 1e999 1\n"
                                   "0 1 1e16\n"
                                   "0.0 0 3\n"
                                   "21,5 1 2\n"
                                   "0 1,234.5 2\n"
                                   "0x10 1 2\n"
                                   "\n"
                                   "0 1 2\n");
    ASSERT_EQ(read.file.points.size(), 3u);
    ExpectPoint(read.file, 2, 0.0, 1.0, 2.0, 12);
    const struct {
        int line;
        const char* reason;
    } aExpected[] = {
        {2, "\"abc\" is not a number"},
        {3, "2 columns found, 3 needed (x y z)"},
        {4, "\"nan\" is not a finite number"},
        {5, "\"1e999\" is not a finite number"},
        {6, "\"1e16\" is too large for a coordinate"},
        {8, "\"21,5\" is not a number (write decimals with a point)"},
        {9, "\"1,234.5\" is not a number (write thousands without a mark)"},
        {10, "\"0x10\" is not a number"},
    };
    ASSERT_EQ(read.bad.size(), std::size(aExpected));
    for (std::size_t i = 0; i < read.bad.size(); ++i) {
        EXPECT_EQ(read.bad[i].line, aExpected[i].line);
        EXPECT_EQ(read.bad[i].reason, aExpected[i].reason);
    }
    EXPECT_EQ(ReadPoints("0 0 1\n0,5 1 2\n0 1.5 2\n0 1 2,5\n").bad.at(0).reason,
              "\"1.5\" is not a number (decimals before it stand behind a comma)");
    EXPECT_EQ(ReadPoints("\"1,000\",\"2,000\",\"30\"\n").bad.size(), 1u) << "perhaps thousands";
    EXPECT_EQ(ReadPoints("lon,lat,hgt\n0,1,2\n").bad.at(0).reason,
              "\"lon\" is not a number (a heading in words unknown here? --order tells the columns)");
}

TEST(SurveyText, RefusesWhatIsNoText)
{
    for (const std::string& text : {std::string("\xFF\xFE"
                                                "1"),
                                    std::string("1 2 3\n\0", 7), std::string("<?xml version=\"1.0\"?>")}) {
        EXPECT_THROW(TextFile("survey.txt", text), Failure);
    }
    for (const char* const text : {"", "\n\n", "# only a comment\n", "x y z\n"}) {
        EXPECT_THROW(ReadPoints(text), Failure) << text;
    }
    EXPECT_EQ(Quoted("a\tb\x1B[31m"), "\"a?b?[31m\"") << "no control characters reach the terminal";
    EXPECT_EQ(Quoted(std::string(100, 'x')).size(), 45u);
}

// Whatever a file holds, every line with something on it is a point, a bad line or the one heading, and all
// coordinates are fit to compute with.
TEST(SurveyText, AccountsForEveryLineOfDamagedFiles)
{
    const std::string good =
        "Point,East,North,Height,Code\n1,1000.25,2000.5,30.125,\"oak, old\"\n2,1001,2001,3.1e1,\n";
    std::mt19937 random(2718);
    for (int round = 0; round < 3000; ++round) {
        std::string text = good;
        for (unsigned hits = random() % 8; hits > 0; --hits) {
            const std::size_t at = random() % text.size();
            const char aByte[] = {static_cast<char>(1 + random() % 255), ',', '.', '-', 'e', '"', '\n', '9'};
            if (random() % 4 == 0)
                text.erase(at, 1 + random() % 5);
            else
                text.insert(at, 1, aByte[random() % sizeof aByte]);
        }
        SCOPED_TRACE(text);
        TextFile lines("survey.txt", text);
        std::size_t filled = 0;
        for (std::string_view line; lines.NextLine(line);) {
            filled += Trimmed(line).empty() || Trimmed(line).front() == '#' ? 0 : 1;
        }
        Points read;
        try {
            read = ReadPoints(text);
        } catch (const Failure&) {
            EXPECT_LE(filled, 1u) << "nothing but a heading";
            continue;
        }
        const std::size_t accounted = read.file.points.size() + read.bad.size();
        EXPECT_TRUE(accounted == filled || accounted + 1 == filled) << accounted << " of " << filled;
        for (const Position& p : read.file.points) {
            EXPECT_TRUE(std::fabs(p.x) <= 1e15 && std::fabs(p.y) <= 1e15 && std::fabs(p.z) <= 1e15);
        }
    }
}

TEST(BreaklineText, BlocksEndAtEmptyLinesAndMarksAndAreNamedByComments)
{
    TextFile text("lines.txt", "# a file of lines\n"
                               "# 1: wall\n"
                               "0 0 1\n"
                               "1 0 1\n"
                               "\n"
                               "\n"
                               "# 2: ditch\n"
                               "0 5 1\n"
                               "# the gate\n"
                               "1 5 oops\n"
                               "2 5 1\n"
                               "> bank\n"
                               "7 7 7\n"
                               ">\n"
                               "8 8 8\n"
                               "9 9 9\n");
    std::vector<BadLine> bad;
    const BreaklineFile file = ReadBreaklines(text, bad);
    const std::vector<Breakline>& lines = file.lines;
    EXPECT_EQ(file.columns, "x y z (assumed; a heading such as x y z to change)");
    ASSERT_EQ(lines.size(), 4u);
    const std::string aName[] = {"1: wall", "2: ditch", "bank", ""};
    const std::vector<int> aLines[] = {{3, 4}, {8, 11}, {13}, {15, 16}};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(lines[i].file, "lines.txt");
        EXPECT_EQ(lines[i].number, static_cast<int>(i) + 1);
        EXPECT_EQ(lines[i].name, aName[i]);
        EXPECT_EQ(lines[i].lines, aLines[i]);
        EXPECT_EQ(lines[i].points.size(), aLines[i].size());
    }
    EXPECT_EQ(lines[3].points[1].z, 9.0);
    ASSERT_EQ(bad.size(), 1u);
    EXPECT_EQ(bad[0].line, 10);

    TextFile empty("lines.txt", "# nothing\n>\n\n");
    EXPECT_THROW(ReadBreaklines(empty, bad), Failure);
}

}   // namespace
