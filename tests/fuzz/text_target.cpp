// What qsvtin reads: points, breaklines, models and drawings of other programs, and the surfaces it makes of them.
// The first byte chooses the reader.

#include "host/failure.h"
#include "host/input/breakline_text.h"
#include "host/input/survey.h"
#include "host/input/survey_text.h"
#include "host/input/tins.h"
#include "host/report/build_report.h"
#include "host/terrain/boundary.h"
#include "host/terrain/loaded.h"
#include "host/terrain/polygon.h"
#include "host/terrain/prepare.h"
#include "host/terrain/soundness.h"
#include "host/terrain/terrain.h"
#include "tests/fuzz/fuzz_input.h"
#include "tests/fuzz/scratch_file.h"
#include "tests/fuzz/target.h"

#include <algorithm>

namespace {

using namespace qsvtin;

constexpr std::size_t kMostPoints = 300;   // that a surface is made of

void BuildFrom(const SurveyData& survey, double eps)
{
    const PreparedSurvey prepared = PrepareSurvey(survey, eps);
    if (prepared.vertices.size() > kMostPoints) return;
    Terrain terrain = BuildTerrain(prepared, eps, 0.0);
    CheckTerrain(prepared, terrain);
    CutToBoundaries(terrain, survey.boundaries);
    const BuildReport report = MakeBuildReport(survey, prepared, terrain);
    ReportAsText(report);
    ReportAsJson(report);
}

void ReadPoints(FuzzInput& input)
{
    static const char* const aOrder[] = {"", "xyz", "pnezd", "zyx", "-d-yxz"};
    const auto order = OrderFromLetters(aOrder[input.Below(5)]);
    SurveyData survey;
    TextFile text("points", input.Rest());
    survey.pointFiles.push_back(ReadSurveyPoints(text, order, survey.badLines));
    BuildFrom(survey, 1e-6);
}

void ReadLines(FuzzInput& input)
{
    const double eps = input.Below(2) == 0 ? 1e-6 : 0.5;
    SurveyData survey;
    TextFile text("lines", input.Rest());
    survey.breaklines = ReadBreaklines(text, survey.badLines).lines;
    if (survey.breaklines.size() == 1 && survey.breaklines[0].points.size() <= kMostPoints) {
        FillPolygon(survey.breaklines[0]);
    }
    BuildFrom(survey, eps);
}

void ReadModel(const ScratchFile& file, FuzzInput& input)
{
    file.Put(input.Rest());
    const TinFile read = ReadTins(file.Path());
    for (int i = 0; i < read.tins.GetSize() && i < 4; ++i) {
        CheckSoundness(read.tins[i]);
        RequireUsable(read, i);
        LocalTerrain(read.tins[i], true);
    }
}

// Files that hold what a surface was surveyed from, its triangles, or both.
void ReadDrawing(const ScratchFile& file, FuzzInput& input)
{
    if (input.Below(2) == 0) {
        ReadModel(file, input);
        return;
    }
    file.Put(input.Rest());
    SurveySources sources;
    sources.points = {file.Path()};
    BuildFrom(ReadSurvey(sources), 1e-6);
}

std::string Seed(int way, const std::string& text)
{
    return std::string(1, static_cast<char>(way)) + text;
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pByte, std::size_t nBytes)
{
    static const ScratchFile aModel[] = {ScratchFile(".obj"), ScratchFile(".ply"), ScratchFile(".stl"),
                                         ScratchFile(".tin")};
    static const ScratchFile aDrawing[] = {ScratchFile(".xml"), ScratchFile(".dxf")};
    FuzzInput input(pByte, nBytes);
    const int way = input.Below(8);
    try {
        if (way == 0) {
            ReadPoints(input);
        } else if (way == 1) {
            ReadLines(input);
        } else if (way < 6) {
            ReadModel(aModel[way - 2], input);
        } else {
            ReadDrawing(aDrawing[way - 6], input);
        }
    } catch (const Failure&) {
        // The refusal of a user's file.
    }
    return 0;
}

std::vector<std::string> Seeds()
{
    const std::string ply =
        "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty "
        "float z\nelement face 1\nproperty list uchar int vertex_indices\nend_header\n";
    std::string binary =
        "ply\nformat binary_big_endian 1.0\nelement vertex 3\nproperty char x\nproperty uchar "
        "y\nproperty short z\nelement face 1\nproperty list uchar uchar vertex_index\nend_header\n";
    binary += std::string("\0\0\0\0\1\0\0\0\0\1\0\0\3\0\1\2", 16);
    std::string stl(80, ' ');
    stl += std::string("\1\0\0\0", 4) + std::string(24, '\0');
    stl += std::string("\0\0\x80\x3f\0\0\0\0\0\0\0\0\0\0\0\0\0\0\x80\x3f\0\0\0\0\0\0", 26);
    const std::string landXml =
        "<LandXML><Units><Imperial linearUnit=\"foot\"/></Units><Surfaces><Surface name=\"a\"><SourceData>"
        "<Boundaries><Boundary bndType=\"outer\"><PntList3D>0 0 1 0 9 1 9 0 1</PntList3D></Boundary>"
        "<Boundary bndType=\"void\"><PntList2D>1 1 2 1 1 2</PntList2D></Boundary></Boundaries>"
        "<DataPoints><PntList3D>0 0 1\n8 8 2</PntList3D></DataPoints><Breaklines><Breakline name=\"b\">"
        "<PntList3D>3 1 2 1 3 4</PntList3D></Breakline></Breaklines><Contours><Contour elev=\"5\">"
        "<PntList2D>3 3 4 4</PntList2D></Contour></Contours></SourceData><Definition area2DSurf=\"5\"><Pnts>"
        "<P id=\"1\">0 0 1</P><P id=\"b\">0 1 1</P><P id=\"3\">1 1 1</P><P id=\"4\">1 0 1</P></Pnts><Faces>"
        "<F>1 b 3 4</F><F i=\"1\">1 3 4</F></Faces></Definition></Surface></Surfaces></LandXML>";
    std::string dxf =
        "0 SECTION 2 HEADER 9 $INSUNITS 70 2 0 ENDSEC 0 SECTION 2 ENTITIES 0 POINT 8 a 10 0 20 9 "
        "0 LINE 10 1 20 1 11 4 21 1 0 LWPOLYLINE 90 2 70 1 38 3 10 5 20 5 10 6 20 5 42 .5 "
        "0 POLYLINE 70 8 0 VERTEX 10 1 20 8 30 4 0 VERTEX 10 3 20 8 0 SEQEND "
        "0 3DFACE 8 a 10 0 20 0 30 1 11 1 21 0 31 1 12 1 22 1 32 1 13 0 23 1 33 1 0 ENDSEC 0 EOF ";
    std::replace(dxf.begin(), dxf.end(), ' ', '\n');
    return {
        Seed(0, std::string(1, '\0') +
                    "# point;north;east;height\n1;0;0;1\n2;10;0;1\n3;10;10;2.5\n4;0;10;1e0\n5;5;5;9\n"),
        Seed(0, std::string(1, '\1') + "0 0 1\r\n1 0 1\r\n0,5 1 2\r\nnan 3 4\n1 1 1\n0 1 1\n"),
        Seed(0, std::string(1, '\2') + "P1,0,0,1,\"a, b\"\nP2,1,0,1,c\nP3,0,1,1,d\n"),
        Seed(1, std::string(1, '\0') + "# wall\n0 0 4\n9 0 4\n9 9 1\n0 9 2\n0 0 4\n"),
        Seed(1, std::string(1, '\1') + "> a\n1 1 4\n9 1 4\n\n> b\n0 9 1\n9 0 2\n5 5\n\n1 1 4\n"),
        Seed(2, "v 0 0 1\nv 1 0 1\nv 0 1 1\nv 1 1 2\nf 1 2 3\nf 2/1 -1//2 3/1/1\n"),
        Seed(3, ply + "0 0 1\n1 0 1\n0 1 1\n3 0 1 2\n"),
        Seed(3, binary),
        Seed(4, "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 "
                "0\nendloop\nendfacet\nendsolid a\n"),
        Seed(4, stl),
        Seed(5, "TIN_2.00"),
        Seed(6, std::string(1, '\0') + landXml),
        Seed(6, std::string(1, '\1') + landXml),
        Seed(7, std::string(1, '\0') + dxf),
        Seed(7, std::string(1, '\1') + dxf),
    };
}
