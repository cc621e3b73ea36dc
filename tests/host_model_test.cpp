// Models of other programs: OBJ, PLY and STL, written and read.

#include "tests/support/program.h"

#include "qsv_3dprocess.h"

#include <cmath>
#include <filesystem>

namespace {

class Model : public ProgramTest
{
protected:
    Model()
    {
        Put("far.txt", "21530180.125 6783126.5 1\n21530190.25 6783126.5 2.1\n21530180.125 6783136.75 3\n"
                       "21530190.25 6783136.75 4\n21530185.5 6783130.5 0.3\n");
    }

    // The TIN that is made of a model; the test fails when that does not succeed.
    CTin Import(const std::string& file, const std::string& bytes) const
    {
        Put(file, bytes);
        const Result result = Run("convert " + file + " imported.tin");
        EXPECT_EQ(result.status, 0) << result.err;
        return ReadTin("imported.tin");
    }
};

// The corners of all triangles, each with its full coordinates.
std::vector<double> Corners(const CTin& tin)
{
    std::vector<double> corners;
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (const int v : tin.m_aTri[t].m_nVertex) {
            corners.insert(corners.end(), {tin.m_aVertex[v].x, tin.m_aVertex[v].y, tin.m_aVertex[v].z});
        }
    }
    return corners;
}

TEST_F(Model, ComesBackFromEveryFormat)
{
    ASSERT_EQ(Run("build far.txt -o far.tin").status, 0);
    const CTin tin = ReadTin("far.tin");
    for (const std::string way : {"a.obj", "a.ply", "a.ply --ascii", "a.stl --ascii", "a.stl"}) {
        SCOPED_TRACE(way);
        const std::string file = way.substr(0, way.find(' '));
        ASSERT_EQ(Run("convert far.tin " + way).status, 0);
        ASSERT_EQ(Run("convert " + file + " back.tin").status, 0);
        ASSERT_EQ(Run("check back.tin").status, 0);
        const CTin back = ReadTin("back.tin");
        EXPECT_STREQ(back.m_strName, "a");
        ASSERT_EQ(back.m_aVertex.GetSize(), 5) << "equal vertices are one";
        const std::vector<double> expected = Corners(tin), found = Corners(back);
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i) {
            // Binary STL has 7 digits, here of places relative to an origin near the survey.
            EXPECT_NEAR(found[i], expected[i], way == "a.stl" ? 1e-6 : 0.0);
        }
        for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
            for (int k = 0; k < 3; ++k)
                EXPECT_EQ(back.m_aTri[t].m_nNeighbor[k], tin.m_aTri[t].m_nNeighbor[k]);
        }
    }
}

TEST_F(Model, BinaryStlKeepsItsDigitsAndSaysSo)
{
    ASSERT_EQ(Run("build far.txt -o far.tin").status, 0);
    const Result far = Run("convert far.tin far.stl");
    EXPECT_NE(far.err.find("relative to 21530180 6783126"), std::string::npos) << far.err;
    EXPECT_EQ(Get("far.stl").substr(0, 52), "qsvtin; coordinates are relative to 21530180 6783126");
    EXPECT_EQ(Get("far.stl").size(), 84u + 50u * 4u);
    // The first corner of the first triangle behind header, count and normal: a float of few units.
    float x = 0.0f;
    std::memcpy(&x, Get("far.stl").data() + 84 + 12, sizeof x);
    EXPECT_LT(std::fabs(x), 11.0f);

    Put("near.txt", "100 200 1\n110 200 1\n100 210 1\n");
    ASSERT_EQ(Run("build near.txt -o near.tin").status, 0);
    EXPECT_EQ(Run("convert near.tin near.stl").err, "");
    std::memcpy(&x, Get("near.stl").data() + 84 + 12, sizeof x);
    EXPECT_GE(x, 100.0f) << "near zero, survey coordinates";
}

TEST_F(Model, IsReadAsOtherProgramsWriteIt)
{
    // A quadrilateral, corners with texture and normal, numbers counted from the end, things unknown.
    const CTin obj =
        Import("a.obj", "mtllib x.mtl\no roof\nv 0 0 1\nv 4 0 1 1.0\nv 4 4 1\r\nv 0 4 1\nvn 0 0 1\n"
                        "f 1/1/1 2//1 3/2 4\nv 8 0 2\nf -4 -1 -3\nl 1 2\n");
    EXPECT_EQ(obj.m_aVertex.GetSize(), 5);
    ASSERT_EQ(obj.m_aTri.GetSize(), 3);
    EXPECT_EQ(obj.m_aTri[1].m_nVertex[2], 3);
    EXPECT_EQ(obj.m_aTri[2].m_nVertex[0], 1);
    EXPECT_EQ(obj.m_aTri[2].m_nNeighbor[0], 0) << "linked along 4 0 - 4 4";

    // Big-endian, another order of properties, a list in front of the one that matters.
    std::string ply =
        "ply\nformat binary_big_endian 1.0\nelement vertex 3\nproperty uchar red\nproperty float y\n"
        "property float x\nproperty short z\nelement face 1\nproperty list uchar uchar other\n"
        "property list ushort uint vertex_index\nend_header\n";
    const auto put = [&](std::initializer_list<int> bytes) {
        for (const int byte : bytes) ply += static_cast<char>(byte);
    };
    put({255, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFE});   // y 0, x 0, z -2
    put({255, 0, 0, 0, 0, 0x40, 0x80, 0, 0, 0, 7});   // y 0, x 4, z 7
    put({255, 0x40, 0, 0, 0, 0, 0, 0, 0, 1, 0});      // y 2, x 0, z 256
    put({2, 9, 9, 0, 3, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 2});
    const CTin big = Import("b.ply", ply);
    EXPECT_EQ(Corners(big), (std::vector<double>{0, 0, -2, 4, 0, 7, 0, 2, 256}));

    const CTin ascii =
        Import("c.ply", "ply\nformat ascii 1.0\ncomment x\nelement vertex 3\nproperty float x\nproperty "
                        "float y\nproperty float z\nelement face 1\nproperty list uchar int "
                        "vertex_indices\nend_header\n0 0 1 4 0 1\n0 4 1\n3 0 1 2\n");
    EXPECT_EQ(Corners(ascii), (std::vector<double>{0, 0, 1, 4, 0, 1, 0, 4, 1}));

    const CTin stl =
        Import("d.stl", "solid s\n facet normal 0 0 0\n  outer loop\n   vertex 0 0 1\n   vertex 4 0 1\n"
                        "   vertex 0 4 1\n  endloop\n endfacet\nfacet normal 0 0 1\nouter loop\nvertex 4 0 "
                        "1\nvertex 4 4 1e0\nvertex 0 4 1\nendloop\nendfacet\nendsolid\n");
    EXPECT_EQ(stl.m_aVertex.GetSize(), 4);
    EXPECT_EQ(stl.m_aTri[0].m_nNeighbor[2], 1);
}

TEST_F(Model, TrianglesThatAreNoneGoAndThoseTurnedOverTurnBack)
{
    Put("a.obj", "v 0 0 1\nv 4 0 1\nv 0 4 1\nf 1 3 2\nf 1 1 2\n");
    const Result result = Run("convert a.obj a.tin");
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.err.find("1 triangles that use a vertex twice are left out"), std::string::npos)
        << result.err;
    EXPECT_NE(result.err.find("run clockwise and are turned over"), std::string::npos) << result.err;
    EXPECT_EQ(Run("check a.tin").status, 0);
    // Where they run either way, nobody knows which is up; check tells.
    Put("b.obj", "v 0 0 1\nv 4 0 1\nv 0 4 1\nv 9 9 1\nf 1 3 2\nf 2 4 3\n");
    EXPECT_EQ(Run("convert b.obj b.tin").err, "");
    EXPECT_EQ(Run("check b.tin").status, 1);
}

TEST_F(Model, RefusesWhatIsDamaged)
{
    Put("kept.tin", "kept");
    const std::string ply =
        "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float "
        "z\nelement face 1\nproperty list uchar int vertex_indices\nend_header\n";
    const std::string binary =
        "ply\nformat binary_little_endian 1.0\nelement vertex 4000000000\nproperty double "
        "x\nend_header\n12345678";
    const struct {
        const char* file;
        std::string bytes;
        const char* message;
    } aCase[] = {
        {"a.obj", "v 0 0 1\nv 4 0 1\nv 0 4\nf 1 2 3\n", "a.obj:3: a vertex needs x, y and z"},
        {"a.obj", "v 0 0 1\nv 4 0 1\nv 0 4 nan\nf 1 2 3\n", "a.obj:3: \"nan\" is no coordinate"},
        {"a.obj", "v 0 0 1\nv 4 0 1\nv 0 4 1e99\nf 1 2 3\n", "a.obj:3: \"1e99\" is no coordinate"},
        {"a.obj", "v 0 0 1\nv 4 0 1\nv 0 4 1\nf 1 2 4\n", "a.obj:4: there is no vertex 4"},
        {"a.obj", "v 0 0 1\nv 4 0 1\nv 0 4 1\nf 1 2 -4\n", "there is no vertex -4"},
        {"a.obj", "v 0 0 1\nv 4 0 1\nv 0 4 1\nf 1 2 99999999999\n", "is no number of a vertex"},
        {"a.obj", "v 0 0 1\nv 4 0 1\nf 1 2\n", "a face needs three corners"},
        {"a.obj", "v 0 0 1\nv 4 0 1\nv 0 4 1\n", "a.obj has no triangles"},
        {"a.obj", std::string(500, '\0'), "not a text file"},
        {"a.ply", "", "a.ply is no PLY file"},
        {"a.ply", "plyx\n", "a.ply is no PLY file"},
        {"a.ply", "ply\nformat ascii 1.0\nelement vertex 3\n", "cut short in its header"},
        {"a.ply", "ply\nformat klingon 1.0\nend_header\n", "unknown format, \"klingon\""},
        {"a.ply", "ply\nelement vertex -3\nend_header\n", "\"-3\" of an element"},
        {"a.ply", "ply\nproperty float x\nend_header\n", "in front of any element"},
        {"a.ply", "ply\nelement vertex 3\nproperty quad x\nend_header\n", "unknown type \"quad\""},
        {"a.ply", ply + "0 0 1 4 0 1 0 4 1 3 0 1\n", "cut short"},
        {"a.ply", ply + "0 0 1 4 0 1 0 4 1 3 0 1 3\n", "refers to no vertex"},
        {"a.ply", ply + "0 0 1 4 0 1 0 4 1 3 0 1 -1\n", "refers to no vertex"},
        {"a.ply", ply + "0 0 1 4 0 inf 0 4 1 3 0 1 2\n", "vertex 1 has no usable x, y and z"},
        {"a.ply", ply + "0 0 1 4 0 1 0 4 one 3 0 1 2\n", "\"one\" is not a number"},
        {"a.ply", binary, "cut short"},
        {"a.stl", "", "is no STL file"},
        {"a.stl", std::string(100, 'x'), "is no STL file"},
        {"a.stl", std::string(80, ' ') + std::string("\1\0\0\0", 4) + std::string(49, 'x'),
         "is no STL file, or cut short"},
        {"a.stl", std::string(80, ' ') + std::string("\1\0\0\0", 4) + std::string(50, '\xFF'),
         "no usable number"},
        {"a.stl", "solid\nfacet\nvertex 0 0 0\nvertex 1 0 0\nendfacet\n",
         "a.stl:5: a facet needs three vertices"},
        {"a.stl", "solid\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nvertex 0 2 0\n", "this is one more"},
        {"a.stl", "solid\nvertex 0 0 0\nvertex 1 0 0\n", "cut short"},
        {"a.stl", "solid\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nendfacet\n", "the solid does not end"},
        {"a.stl", "solid\nvertex 0 0\n", "a.stl:2: a vertex needs x, y and z"},
        {"a.stl", "solid\nendsolid\n", "a.stl has no triangles"},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.bytes.substr(0, 200));
        Put(c.file, c.bytes);
        ExpectRefusal(std::string("convert ") + c.file + " kept.tin", 1, c.message);
        EXPECT_EQ(Get("kept.tin"), "kept");
    }
    Put("a.obj", "v 0 0 1\nv 4 0 1\nv 0 4 1\nf 1 2 3\n");
    ExpectRefusal("convert a.obj a.dwg", 2, "cannot tell the format");
    ExpectRefusal("convert a.obj missing/a.tin", 1, "there is no folder missing");
}

}   // namespace
