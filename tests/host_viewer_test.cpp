// The data in the page of "qsvtin view"; what a browser makes of it is looked at by tests/viewer/check_page.

#include "host/failure.h"
#include "host/terrain/loaded.h"
#include "host/viewer/page.h"
#include "host/viewer/page_text.h"
#include "tests/support/program.h"

#include <cstring>
#include <vector>

namespace {

using namespace qsvtin;

class Viewer : public ProgramTest
{
protected:
    nlohmann::json TerrainInPage(const Terrain& terrain, const PageOptions& options) const
    {
        SafeFile file(Path("page.html"));
        WritePage(terrain, options, file);
        file.Finish();
        file.TakePlace();
        return DataOf(Get("page.html"));
    }

    static nlohmann::json DataOf(const std::string& page)
    {
        const std::size_t around = kPageBeforeTerrain.size() + kPageAfterTerrain.size();
        const std::string data = page.substr(kPageBeforeTerrain.size(), page.size() - around);
        EXPECT_EQ(data.find('<'), std::string::npos) << "would end the script";
        return JsonOf(data);
    }
};

// A decoder of its own: value by value, as RFC 4648 tells.
template <class Number>
std::vector<Number> Decoded(const std::string& base64)
{
    EXPECT_EQ(base64.size() % 4, 0u);
    const std::string digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    unsigned bits = 0, count = 0;
    for (const char c : base64) {
        if (c == '=') break;
        bits = bits << 6 | static_cast<unsigned>(digits.find(c));
        count += 6;
        if (count >= 8) bytes += static_cast<char>(bits >> (count -= 8) & 0xFFu);
    }
    std::vector<Number> numbers(bytes.size() / sizeof(Number));
    if (!numbers.empty()) std::memcpy(numbers.data(), bytes.data(), numbers.size() * sizeof(Number));
    return numbers;
}

TEST_F(Viewer, PageHoldsEveryDigit)
{
    CTin tin;
    const double x0 = 4123456.789, y0 = 5765432.1;
    for (const auto& p : {CXYZ(x0, y0, 1.1), CXYZ(x0 + 10.3, y0, 2.2), CXYZ(x0, y0 + 7.7, -3.3),
                          CXYZ(x0 + 9.0, y0 + 9.0, 0.1)}) {
        tin.AddPoint(p.x, p.y, p.z);
    }
    ASSERT_EQ(tin.CreateTin(0.0), 1);
    Breakline line;
    line.points = {{x0 + 1.0, y0 + 0.1, 5.0}, {x0 + 2.0, y0 + 0.3, 6.0}};
    const auto data = TerrainInPage(LocalTerrain(tin, true), {"A </script> \"hill\"", 2.5, {line, line}});
    EXPECT_EQ(data["title"], "A </script> \"hill\"");
    EXPECT_EQ(data["exaggeration"], 2.5);
    EXPECT_EQ(data["tints"].size(), 33u);

    const double originX = data["origin"][0], originY = data["origin"][1];
    EXPECT_EQ(originX, 4123456.0);
    const auto vertices = Decoded<double>(data["vertices"]);
    ASSERT_EQ(vertices.size(), 12u);
    for (int v = 0; v < 4; ++v) {
        const double* const at = &vertices[static_cast<std::size_t>(3 * v)];
        EXPECT_EQ(at[0] + originX, tin.m_aVertex[v].x);
        EXPECT_EQ(at[1] + originY, tin.m_aVertex[v].y);
        EXPECT_EQ(at[2], tin.m_aVertex[v].z);
    }
    const auto corners = Decoded<std::int32_t>(data["triangles"]);
    ASSERT_EQ(corners.size(), static_cast<std::size_t>(3 * tin.GetTriSize()));
    for (int t = 0; t < tin.GetTriSize(); ++t) {
        for (int k = 0; k < 3; ++k)
            EXPECT_EQ(corners[static_cast<std::size_t>(3 * t + k)], tin.m_aTri[t].m_nVertex[k]);
    }
    ASSERT_EQ(data["lines"].size(), 2u);
    const auto points = Decoded<double>(data["lines"][1]);
    ASSERT_EQ(points.size(), 6u);
    EXPECT_EQ(points[3] + originX, line.points[1].x);
    EXPECT_EQ(points[5], 6.0);
}

// As in pictures: a line high above the hill is seen on it, from triangle to triangle, and ends where it ends.
TEST_F(Viewer, LaysLinesOnTheGround)
{
    Put("hill.txt", "0 0 0\n10 0 10\n10 10 10\n0 10 0\n");
    Put("line.txt", "2 5 500\n18 5 500\n");
    ASSERT_EQ(Run("build hill.txt -o hill.tin").status, 0);
    if (!HasViewer()) {
        ExpectRefusal("view hill.tin --breaklines line.txt -o hill.html", 1, "install npm");
        return;
    }
    ASSERT_EQ(Run("view hill.tin --breaklines line.txt -o hill.html").status, 0);
    const auto data = DataOf(Get("hill.html"));
    ASSERT_EQ(data["lines"].size(), 1u);
    const auto points = Decoded<double>(data["lines"][0]);
    ASSERT_EQ(points.size(), 9u) << "two ends and a corner at the diagonal";
    for (std::size_t i = 0; i < 3; ++i) {
        const double x = i == 0 ? 2.0 : i == 1 ? 5.0 : 10.0;
        EXPECT_NEAR(points[3 * i], x, 1e-9);
        EXPECT_NEAR(points[3 * i + 2], x, 1e-9) << "the hill is z = x";
    }
}

TEST_F(Viewer, TellsWhatIsWrong)
{
    Put("hill.txt", "0 0 1\n10 0 1\n0 10 1\n");
    ASSERT_EQ(Run("build hill.txt -o hill.tin").status, 0);
    if (!HasViewer()) {
        ExpectRefusal("view hill.tin -o hill.html", 1, "install npm");
        return;
    }
    Put("bad.txt", "1 2 3\nx\n");
    ExpectRefusal("view hill.tin -o hill.png", 2, "end its name in .html");
    ExpectRefusal("view hill.tin --exaggerate 0 -o hill.html", 2, "from 1 to 10");
    ExpectRefusal("view hill.tin --breaklines bad.txt -o hill.html", 1, "bad.txt:2");
    ExpectRefusal("view none.tin -o hill.html", 1, "none.tin");
    Put("lines.html", "1 1 1\n2 2 1\n");
    ExpectRefusal("view hill.tin --breaklines lines.html -o lines.html", 2, "would overwrite the input");
    EXPECT_EQ(Get("lines.html"), "1 1 1\n2 2 1\n");
    EXPECT_EQ(Get("hill.html"), "");
    EXPECT_EQ(Run("view hill.tin -o hill.html").status, 0);
    EXPECT_NE(Get("hill.html").find("Copyright"), std::string::npos) << "the licence of what is bundled";
}

}   // namespace
