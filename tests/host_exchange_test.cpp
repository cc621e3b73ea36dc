// Surfaces and drawings of other programs: LandXML, DXF and GeoJSON, written and read.

#include "tests/support/fixtures.h"
#include "tests/support/program.h"

#include "qsv_3dprocess.h"

#include <algorithm>

namespace {

// What stands around the surfaces of a LandXML file.
std::string LandXml(const std::string& units, const std::string& surfaces)
{
    return "<?xml version=\"1.0\"?>\n<LandXML version=\"1.2\">\n<Units>" + units + "</Units>\n<Surfaces>\n" +
           surfaces + "</Surfaces>\n</LandXML>\n";
}

const char* const kMetric = "<Metric linearUnit=\"meter\" areaUnit=\"squareMeter\"/>";

// A square of two triangles with its corners at 0 and 10, one of them clockwise, heights 1 to 4.
std::string Square(const std::string& name, const std::string& more = {})
{
    return "<Surface name=\"" + name + "\"><Definition surfType=\"TIN\" area2DSurf=\"101\">\n<Pnts>" + more +
           "<P id=\"7\">0 0 1</P><P id=\"9\">0 10 2</P><P id=\"a\">10 10 3</P><P id=\"08\">10 0 "
           "4</P></Pnts>\n"
           "<Faces><F>7 9 a</F><F>7 08 a</F><F i=\"1\">9 a 08</F></Faces></Definition></Surface>\n";
}

class Exchange : public ProgramTest
{
protected:
    Exchange()
    {
        // Digits that a shorter form would lose, and a breakline that crosses edges.
        Put("far.txt",
            "21530180.123456789 6783126.1 1\n21530190.25 6783126.5 2.1\n21530180.125 6783136.75 3\n"
            "21530190.3 6783136.7 4\n21530185.5 6783130.5 0.3\n");
        Put("ditch.txt", "# ditch & dam\n21530182.1 6783127.3 -1\n21530189.7 6783129.9 -1.1\n");
        EXPECT_EQ(Run("build far.txt --breaklines ditch.txt -o far.tin -o far.xml -o far.dxf -o far.geojson")
                      .status,
                  0);
    }
};

TEST_F(Exchange, LandXmlKeepsEveryBitNumberAndLine)
{
    ASSERT_EQ(Run("convert far.xml back.tin").status, 0);
    ASSERT_EQ(Run("build far.xml --name far -o again.tin").status, 0);
    const std::string bytes = Get("far.tin");
    EXPECT_GT(ReadTin("far.tin").m_aVertex.GetSize(), 7) << "the breakline crosses edges";
    EXPECT_TRUE(Get("back.tin") == bytes) << "the triangles as stored";
    EXPECT_TRUE(Get("again.tin") == bytes) << "triangulated from points and breakline";
    EXPECT_NE(Get("far.xml").find("name=\"ditch &amp; dam\""), std::string::npos);
    EXPECT_NE(Get("far.xml").find("<P id=\"1\">6783126.1 21530180.123456787 1</P>"), std::string::npos);

    // A collection is a file of several surfaces, and back again.
    Put("two.xml", LandXml(kMetric, Square("upper") + Square("lower")));
    ASSERT_EQ(Run("convert two.xml two.tin").status, 0);
    ASSERT_EQ(Run("convert two.tin copy.xml").status, 0);
    ASSERT_EQ(Run("convert copy.xml copy.tin").status, 0);
    EXPECT_TRUE(Get("copy.tin") == Get("two.tin"));
    EXPECT_EQ(Report("info copy.xml --surface lower")["tins"][0]["number"], 2);
}

// Outlines of thin triangles, of holes and of pieces in holes; none of their rings becomes a breakline.
TEST_F(Exchange, LandXmlKeepsTheOutline)
{
    std::ostringstream grid;   // turned, so that its outer rows are straight but for rounding
    grid.precision(17);
    for (const Site& s : GridSites(12, 12, 1000.0, 0.1)) grid << s.x << " " << s.y << " 1\n";
    Put("grid.txt", grid.str());
    const auto ring = [](const char* kind, double low, double high) {
        const std::string a = std::to_string(low) + " ", b = std::to_string(high) + " ";
        return "<Boundary bndType=\"" + std::string(kind) + "\"><PntList2D>" + a + a + a + b + b + b + b + a +
               "</PntList2D></Boundary>";
    };
    std::string points = "<DataPoints><PntList3D>";
    for (int i = 0; i < 400; ++i) {
        points += std::to_string(i % 20) + " " + std::to_string(i / 20) + " " + std::to_string(i % 7) + "\n";
    }
    Put("hole.xml",
        LandXml(kMetric, "<Surface name=\"s\"><SourceData><Boundaries>" + ring("outer", 0.7, 18.2) +
                             ring("island", 4.6, 13.7) + ring("void", 3.1, 15.3) + ring("island", 7.9, 10.2) +
                             ring("void", 6.6, 11.4) + "</Boundaries>" + points +
                             "</PntList3D></DataPoints></SourceData></Surface>"));
    const struct {
        const char* input;
        std::vector<const char*> rings;
    } aCase[] = {{"grid.txt", {"outer"}},
                 {"far.txt --breaklines ditch.txt --trim-angle 60", {"outer", "outer", "outer"}},
                 {"hole.xml", {"outer", "void", "island", "void", "island"}}};
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.input);
        const auto first = Report(std::string("build ") + c.input + " --name s -o a.tin -o a.xml");
        const auto again = Report("build a.xml --name s -o b.tin -o b.xml");
        EXPECT_TRUE(Get("a.tin") == Get("b.tin"));
        EXPECT_EQ(first["breaklines"], again["breaklines"]);
        std::size_t at = 0;
        for (const char* const kind : c.rings) {
            at = Get("b.xml").find("<Boundary bndType=\"" + std::string(kind) + "\" edgeTrim=\"false\">",
                                   at + 1);
            EXPECT_NE(at, std::string::npos) << kind;
        }
        EXPECT_EQ(Get("b.xml").find("<Boundary ", at + 1), std::string::npos);
    }
}

// Formats without room for lines, and commands that would have to follow them, say so.
TEST_F(Exchange, ConvertKeepsTheLinesOfAModel)
{
    Put("m.obj", "v 0 0 0\nv 2 -4 0\nv 4 0 1\nv 2 4 0\nf 1 2 3\nf 1 3 4\nl 1 3\nl 1 2 3 4 1\n");
    EXPECT_NE(Run("convert m.obj a.xml").err.find("the file says meter; --units"), std::string::npos);
    for (const char* const to : {"a.obj", "a.xml --units foot", "a.dxf", "a.geojson", "a.svg"}) {
        EXPECT_EQ(Run("convert m.obj " + std::string(to)).err, "") << to;
    }
    EXPECT_NE(Get("a.obj").find("\nl 1 3\nl 1 2 3 4 1\n"), std::string::npos);
    EXPECT_EQ(JsonOf(Get("a.geojson"))["features"].size(), 5u) << "two triangles, the outline, two lines";
    const auto built = Report("build a.xml -o b.tin");
    EXPECT_EQ(built["vertices"], 4);
    EXPECT_EQ(built["breaklines"], 2);
    EXPECT_EQ(built["breaklines_closed"], 1);
    EXPECT_NE(Run("convert a.xml a.ply").err.find("breaklines of the survey left out: 2;"),
              std::string::npos);
    const std::string leftOut = "qsvtin: m.obj: breaklines left out: 2;";
    for (const char* const command :
         {"convert m.obj a.tin", "edit m.obj --skirt -1 -o a.obj", "join m.obj -o a.tin"}) {
        const Result result = Run(command);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err.rfind(leftOut, 0), 0u) << command << result.err;
    }
}

// The same line from a text, a surface, a drawing and a model, to build with, draw and fill.
TEST_F(Exchange, LinesComeFromEveryKindOfFile)
{
    ASSERT_EQ(Run("build far.txt --breaklines ditch.txt -o lines.obj").status, 0);
    Put("ring.txt", "0 0 1\n8 0 1\n8 6 2\n3 2 1\n0 6 3\n0 0 1\n");
    ASSERT_EQ(Run("build --breaklines ring.txt -o ring.xml -o ring.dxf -o ring.obj").status, 0);
    std::vector<std::string> drawn, built, filled;
    for (const std::string extension : {".txt", ".xml", ".dxf", ".obj"}) {
        const std::string lines = extension == ".txt"   ? "ditch.txt"
                                  : extension == ".obj" ? "lines.obj"
                                                        : "far" + extension;
        EXPECT_EQ(Run("render far.tin --size 300x200 -o a.png --breaklines " + lines).status, 0);
        drawn.push_back(Get("a.png"));
        EXPECT_EQ(Run("build far.txt --name a -o a.tin --breaklines " + lines).status, 0);
        built.push_back(Get("a.tin"));
        EXPECT_EQ(Run("polygon ring" + extension + " --name a -o a.tin").status, 0);
        filled.push_back(Get("a.tin"));
        EXPECT_TRUE(drawn.back() == drawn[0] && built.back() == built[0] && filled.back() == filled[0])
            << lines;
    }
    EXPECT_EQ(Run("render far.tin --size 300x200 -o a.png").status, 0);
    EXPECT_FALSE(Get("a.png") == drawn[0]);
    ExpectRefusal("render far.tin -o a.png --breaklines far.tin", 1, "far.tin is a TIN file, no text");
    ExpectRefusal("polygon ring.dxf -o ring.dxf", 2, "would overwrite the input");
    Put("point.obj", "v 0 0 0\nl 1\n");
    ExpectRefusal("render far.tin -o a.png --breaklines point.obj", 1,
                  "point.obj:2: a line needs two corners");
    Put("point.ply", "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\nproperty float y\n"
                     "property float z\nend_header\n0 0 0\n");
    ExpectRefusal("build far.txt -o a.png --breaklines point.ply", 1, "point.ply holds no lines");
}

TEST_F(Exchange, LandXmlStatesTheTimeThatIsSet)
{
    const struct {
        const char* epoch;
        const char* stated;
    } aCase[] = {{"", "date=\"1970-01-01\" time=\"00:00:00\""},
                 {"1700000000", "date=\"2023-11-14\" time=\"22:13:20\""},
                 {"99999999999999999999", "date=\"1970-01-01\" time=\"00:00:00\""}};
    for (const auto& c : aCase) {
        const std::string epoch = std::string("SOURCE_DATE_EPOCH=") + c.epoch;
        ASSERT_EQ(Shell(epoch + " '" QSVTIN_PROGRAM "' convert far.tin dated.xml").status, 0);
        EXPECT_NE(Get("dated.xml").find(c.stated), std::string::npos) << epoch;
    }
}

TEST_F(Exchange, LandXmlIsReadAsOtherProgramsWriteIt)
{
    // Prefixes, ISO 8859-1, ids that are no numbers from 1 on, an invisible face, a comment within a list.
    std::string text = LandXml(kMetric, Square("H\xF6he", "<!-- two --><P id=\"x\">5 <!-- - -->-5 0</P>"));
    text.replace(0, text.find('\n'), "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>");
    for (const char* const name : {"LandXML", "Units", "Metric", "Surfaces", "Surface ", "Definition", "Pnts",
                                   "P ", "Faces", "F>", "F ", "P>", "Surface>"}) {
        for (const std::string start : {"<", "</"}) {
            for (std::size_t at = 0; (at = text.find(start + name, at)) != std::string::npos; ++at) {
                text.insert(at + start.size(), "lx:");
            }
        }
    }
    Put("prefix.xml", text);
    const Result converted = Run("convert prefix.xml square.tin");
    ASSERT_EQ(converted.status, 0) << converted.err;
    EXPECT_NE(converted.err.find("1 invisible faces are left out"), std::string::npos) << converted.err;
    const CTin tin = ReadTin("square.tin");
    EXPECT_STREQ(tin.m_strName, "H\xC3\xB6he");
    ASSERT_EQ(tin.m_aVertex.GetSize(), 5);
    EXPECT_EQ(tin.m_aVertex[0].x, -5.0) << "east is second";
    EXPECT_EQ(tin.m_aVertex[4].y, 10.0);
    ASSERT_EQ(tin.m_aTri.GetSize(), 2);
    EXPECT_EQ(Run("check square.tin").status, 0) << "both triangles face up";
    const auto info = Report("info prefix.xml");
    EXPECT_EQ(info["unit"], "meter");
    EXPECT_EQ(info["tins"][0]["plan_area"], 100.0);
    EXPECT_EQ(info["tins"][0]["stated_plan_area"], 101.0);
}

TEST_F(Exchange, UnitsStayOrAreConvertedOnRequest)
{
    const struct {
        const char* units;
        const char* asked;
        const char* unit;
        double side;
        double highest = 0.0;   // where it is not 4 of the unit of the plan
    } aCase[] = {
        {kMetric, "", "meter", 10.0},
        {kMetric, "--units foot", "foot", 10.0 / 0.3048},
        {"<Imperial linearUnit=\"foot\"/>", "--units meter", "meter", 3.048},
        {"<Imperial linearUnit=\"USSurveyFoot\"/>", "", "USSurveyFoot", 10.0},
        {"<Imperial linearUnit=\"USSurveyFoot\"/>", "--units meter", "meter", 12000.0 / 3937.0},
        {"", "--units foot", "foot", 10.0},
        {"<Imperial linearUnit=\"USSurveyFoot\" elevationUnit=\"feet\"/>", "", "USSurveyFoot", 10.0},
        {"<Imperial linearUnit=\"inch\" elevationUnit=\"feet\"/>", "", "inch", 10.0, 4 * 12.0},
        {"<Metric linearUnit=\"meter\" elevationUnit=\"kilometer\"/>", "--units foot", "foot", 10.0 / 0.3048,
         4000.0 / 0.3048},
        {"<Metric linearUnit=\"millimeter\" areaUnit=\"squareMeter\"/>", "", "millimeter", 10.0},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(std::string(c.units) + c.asked);
        Put("a.xml", LandXml(c.units, Square("s")));
        const Result converted = Run(std::string("convert a.xml b.xml ") + c.asked);
        ASSERT_EQ(converted.status, 0);
        EXPECT_EQ(converted.err.find("heights are in ") != std::string::npos, c.highest != 0.0);
        const auto info = Report("info b.xml");
        const auto& tin = info["tins"][0];
        EXPECT_EQ(info["unit"], c.unit);
        EXPECT_DOUBLE_EQ(tin["range"]["x"][1].get<double>(), c.side);
        EXPECT_DOUBLE_EQ(tin["range"]["z"][1].get<double>(), c.highest != 0.0 ? c.highest : c.side * 0.4);
        EXPECT_DOUBLE_EQ(tin["stated_plan_area"].get<double>(), c.side * c.side) << "in another unit of area";
    }
    Put("feet.xml", LandXml("<Imperial linearUnit=\"foot\"/>",
                            "<Surface name=\"s\"><SourceData><DataPoints><PntList3D>0 0 0\n0 100 0 100 0 10"
                            "</PntList3D></DataPoints></SourceData></Surface>"));
    EXPECT_DOUBLE_EQ(Report("build feet.xml --units meter -o c.tin")["range"]["z"][1].get<double>(), 3.048);
    ExpectRefusal("build feet.xml far.xml -o c.tin", 2, "pass --units to convert");
    ExpectRefusal("build feet.xml --units yard -o c.tin", 2, "--units yard is no known unit");
}

// Two kerbs surveyed side by side and a closed pond, as a controller writes them.
TEST_F(Exchange, CodesStringPointsIntoBreaklines)
{
    const std::string rows =
        "1,0,0,1,KERB1 B\n2,0,5,1,kerb2 beg old\n3,9,0,2,KERB1\n4,9,5,2,KERB2\n5,20,2,3,TREE E\n"
        "6,12,1,2,KERB1 E\n7,15,0,2,KERB1\n8,12,6,2,KERB2.E\n9,20,20,1,POND B\n"
        "10,20,24,1,POND\n11,24,24,1,\"POND C\"\n12,30,0,1,KERB1*ST\n13,30,9,1,KERB1\n";
    Put("p.csv", rows);
    Put("p.txt", [&] {
        std::string blanks = rows;
        std::replace(blanks.begin(), blanks.end(), ',', ' ');
        return blanks;
    }());
    for (const char* const input : {"p.csv", "p.txt"}) {
        SCOPED_TRACE(input);
        const Result result =
            Run(std::string("build ") + input + " --order PNEZD --strings --json -o a.tin -o a.geojson");
        ASSERT_EQ(result.status, 0) << result.err;
        EXPECT_NE(result.err.find("1 points end a line that was not begun"), std::string::npos) << result.err;
        const auto report = JsonOf(result.out);
        EXPECT_EQ(report["points_read"], 2) << "the tree, and the kerb after its end";
        EXPECT_EQ(report["points_merged"], 0);
        EXPECT_EQ(report["breaklines_closed"], 1);
        EXPECT_EQ(report["segments_enforced"], report["segments"]);
        std::string names;
        const auto written = JsonOf(Get("a.geojson"));
        for (const auto& feature : written["features"]) {
            if (feature["properties"]["kind"] != "breakline") continue;
            names += feature["properties"]["name"].get<std::string>() + " " +
                     std::to_string(feature["geometry"]["coordinates"].size()) + ", ";
        }
        EXPECT_EQ(names, "KERB1 3, KERB2 3, POND 4, KERB1 2, ");
    }
    const auto report = Report("build p.csv --order pnezd --codes kerb -o a.tin");
    EXPECT_EQ(report["points_read"], 4) << "the tree and the pond";
    EXPECT_EQ(report["breaklines"], 4) << "the kerb after its end begins one more";
    EXPECT_EQ(Report("build p.csv --order pnezd -o a.tin")["breaklines"], 0) << "only when asked";
}

// A 10 x 10 square of points; a boundary with heights around its lower left quarter, a void without in it.
TEST_F(Exchange, BuildsFromSourceDataWithinItsBoundaries)
{
    const std::string points = "<DataPoints><PntList3D>0 0 1 0 10 1 10 10 1 10 0 1</PntList3D></DataPoints>";
    const std::string lines =
        "<Breaklines><Breakline name=\"flat\" brkType=\"standard\"><PntList2D>1 1 2 2</PntList2D></Breakline>"
        "<Breakline name=\"ridge\"><PntList3D>1 1 2 4 1 2</PntList3D></Breakline></Breaklines>"
        "<Contours><Contour elev=\"1.5\"><PntList2D>6 6 6 8</PntList2D></Contour></Contours>";
    const std::string ring = "<Boundaries><Boundary bndType=\"outer\"><PntList3D>0 0 1 0 5 1 5 5 1 5 0 1"
                             "</PntList3D></Boundary></Boundaries>";
    Put("s.xml", LandXml(kMetric, "<Surface name=\"s\"><SourceData>" + ring + points + lines +
                                      "</SourceData></Surface>"));
    const Result result = Run("build s.xml -o s.tin --json");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("breakline \"flat\" of surface \"s\" has no points with heights"),
              std::string::npos);
    const auto report = JsonOf(result.out);
    EXPECT_EQ(report["points_read"], 4);
    EXPECT_EQ(report["breaklines"], 3) << "ridge, contour, boundary";
    EXPECT_EQ(report["segments_enforced"], report["segments"]);
    EXPECT_DOUBLE_EQ(report["plan_area"].get<double>(), 25.0);
    EXPECT_EQ(Run("check s.tin").status, 0);
    const auto height = Report("height s.tin 1 2.5");
    EXPECT_NE(height.dump().find("2.0"), std::string::npos) << "on the ridge " << height;
}

TEST_F(Exchange, DrawingsKeepTrianglesAndBringPointsAndLines)
{
    ASSERT_EQ(Run("convert far.dxf back.tin").status, 0);
    const CTin tin = ReadTin("far.tin"), back = ReadTin("back.tin");
    EXPECT_STREQ(back.m_strName, "TIN");
    ASSERT_EQ(back.m_aTri.GetSize(), tin.m_aTri.GetSize());
    EXPECT_EQ(back.m_aVertex.GetSize(), tin.m_aVertex.GetSize());
    for (int t = 0; t < tin.m_aTri.GetSize(); ++t) {
        for (int k = 0; k < 3; ++k) {
            const CXYZ &a = tin.m_aVertex[tin.m_aTri[t].m_nVertex[k]],
                       &b = back.m_aVertex[back.m_aTri[t].m_nVertex[k]];
            EXPECT_TRUE(a.x == b.x && a.y == b.y && a.z == b.z);
        }
    }

    // In feet, with Windows line ends: points on one layer; lines of every kind on another; a curve, a tilted
    // line, a text and a block's content, which do not count.
    const std::string drawing =
        "0 SECTION 2 HEADER 9 $INSUNITS 70 2 0 ENDSEC 0 SECTION 2 BLOCKS 0 POINT 10 99 20 99 0 ENDSEC "
        "0 SECTION 2 ENTITIES 999 hello "
        "0 POINT 8 SPOT 10 0 20 0 30 1 0 POINT 8 SPOT 10 10 20 0 30 1 0 POINT 8 SPOT 10 10 20 10 30 1 "
        "0 POINT 8 SPOT 10 0 20 10 30 1 0 TEXT 8 SPOT 10 1 20 1 1 oak "
        "0 LINE 8 KERB 10 1 20 1 30 2 11 2 21 1 31 2.5 "
        "0 LWPOLYLINE 8 KERB 90 3 70 1 38 3 10 5 20 5 10 6 20 5 42 0.5 10 6 20 6 "
        "0 LWPOLYLINE 8 KERB 210 1 220 0 230 0 10 5 20 5 10 6 20 5 "
        "0 POLYLINE 8 KERB 66 1 70 8 0 VERTEX 10 1 20 8 30 4 0 VERTEX 10 3 20 8 30 5 0 SEQEND "
        "0 ENDSEC 0 EOF ";
    std::string text;
    for (const char c : drawing) text += c == ' ' ? std::string("\r\n") : std::string(1, c);
    Put("d.dxf", text);
    const Result result = Run("build d.dxf -o d.tin --json");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("passed over: 1 TEXT, 1 tilted LWPOLYLINE"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("1 arcs in polylines are taken as straight"), std::string::npos) << result.err;
    const auto report = JsonOf(result.out);
    EXPECT_EQ(report["points_read"], 4);
    EXPECT_EQ(report["breaklines"], 3);
    EXPECT_EQ(report["breaklines_closed"], 1);
    EXPECT_EQ(report["segments_enforced"], 5);
    EXPECT_EQ(report["unit"], "foot");
    EXPECT_EQ(report["range"]["z"], nlohmann::json({1.0, 5.0}));
    EXPECT_EQ(Report("build d.dxf --surface SPOT -o d.tin")["breaklines"], 0);
}

TEST_F(Exchange, GeoJsonHoldsTrianglesOutlineAndBreaklines)
{
    const auto json = JsonOf(Get("far.geojson"));
    ASSERT_EQ(json["type"], "FeatureCollection");
    EXPECT_NE(json["coordinate_note"].get<std::string>().find("not WGS 84"), std::string::npos);
    const CTin tin = ReadTin("far.tin");
    int triangles = 0, corners = 0;
    for (const auto& feature : json["features"]) {
        const auto& kind = feature["properties"]["kind"];
        const auto& places = feature["geometry"]["coordinates"];
        if (kind == "triangle") {
            ASSERT_EQ(places[0].size(), 4u);
            EXPECT_EQ(places[0][0], places[0][3]);
            EXPECT_EQ(places[0][0][0].get<double>(), tin.m_aVertex[tin.m_aTri[triangles].m_nVertex[0]].x);
            ++triangles;
        } else if (kind == "outline") {
            corners += static_cast<int>(places.size()) - 1;
        } else {
            EXPECT_EQ(feature["properties"]["name"], "ditch & dam");
            EXPECT_EQ(places, nlohmann::json({{21530182.1, 6783127.3, -1.0}, {21530189.7, 6783129.9, -1.1}}));
        }
    }
    EXPECT_EQ(triangles, tin.m_aTri.GetSize());
    EXPECT_EQ(corners, 4) << "the outline goes once around";

    // Half of a UTF-16 pair is no UTF-8, so it is taken for ISO 8859-1.
    ASSERT_EQ(Run("convert far.tin half.geojson --title '\xED\xA0\x80'").status, 0);
    EXPECT_EQ(JsonOf(Get("half.geojson"))["title"], "\xC3\xAD\xC2\xA0\xC2\x80");
}

TEST_F(Exchange, RefusesWhatIsDamagedAndSaysWhere)
{
    const std::string whole = LandXml(kMetric, Square("s"));
    const auto changed = [&](const std::string& from, const std::string& to) {
        std::string text = whole;
        return text.replace(text.find(from), from.size(), to);
    };
    const auto source = [](const std::string& content) {
        return LandXml(kMetric, "<Surface name=\"s\"><SourceData>" + content + "</SourceData></Surface>");
    };
    const std::string drawing = "0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\n0\n10\n1\n20\n2\n";
    const struct {
        const char* command;
        const char* file;
        std::string text;
        const char* message;
    } aCase[] = {
        {"convert", "a.xml", whole.substr(0, whole.size() / 2), "a.xml:6: no well-formed XML"},
        {"convert", "a.xml", "", "a.xml:1: no well-formed XML"},
        {"convert", "a.xml", "<html><body/></html>", "is XML but no LandXML, its root is \"html\""},
        {"convert", "a.xml", LandXml(kMetric, ""), "holds no surface and no points"},
        {"convert", "a.xml", changed("0 10 2", "0 1o 2"), "a.xml:6: point \"9\": \"1o\" is no coordinate"},
        {"convert", "a.xml", changed("0 10 2", "0 1e99 2"), "point \"9\": \"1e99\" is no coordinate"},
        {"convert", "a.xml", changed("0 10 2", "0 nan 2"), "point \"9\": \"nan\" is no coordinate"},
        {"convert", "a.xml", changed("0 10 2", "0 10"), "a.xml:6: point \"9\" ends within a place"},
        {"convert", "a.xml", changed("0 10 2", "0 10 2 3"), "point \"9\" needs three numbers"},
        {"convert", "a.xml", changed("id=\"9\"", "id=\"7\""), "a.xml:6: there are two points \"7\""},
        {"convert", "a.xml", changed("7 08 a", "7 8 a"),
         "a.xml:7: face 2 names point \"8\", which is not there"},
        {"convert", "a.xml", changed("7 08 a", "7 -1 a"), "face 2 names point \"-1\""},
        {"convert", "a.xml", changed("7 08 a", "99999999999999999999 7 a"),
         "names point \"99999999999999999999\""},
        {"convert", "a.xml", changed("7 08 a", "7 a"), "face 2 needs three points"},
        {"convert", "a.xml", changed("\"meter\"", "\"cubit\""), "\"cubit\" is no known unit of length"},
        {"convert", "a.xml", changed("areaUnit", "elevationUnit"),
         "\"squareMeter\" is no known unit of heights"},
        {"convert", "a.xml", source("<DataPoints><PntList3D>0 0 1</PntList3D></DataPoints>"),
         "has no triangles; build a surface of points"},
        {"build", "a.xml", source("<DataPoints name=\"d\"><PntList3D>0 0\n1 0</PntList3D></DataPoints>"),
         "a.xml:5: data point \"d\" ends within a place; give north, east and height"},
        {"build", "a.xml",
         LandXml(
             kMetric,
             "<Surface name=\"s\">\n<Definition><Pnts><P id=\"1\">0 0</P></Pnts></Definition>\n"
             "<SourceData>\n<DataPoints><PntList3D>0 0 1</PntList3D></DataPoints></SourceData></Surface>"),
         "a.xml:6: point \"1\" ends within a place"},
        {"build", "a.xml", source("<Contours><Contour><PntList2D>0 0 1</PntList2D></Contour></Contours>"),
         "a contour needs its height"},
        {"build", "a.xml",
         source("<Boundaries><Boundary><PntList2D>90 90 90 95 95 95</PntList2D></Boundary>"
                "</Boundaries><DataPoints><PntList3D>0 0 1 0 9 1 9 0 1</PntList3D></DataPoints>"),
         "the boundary in the survey leaves no triangle"},
        {"build", "a.xml", whole, "is made of 2 triangles already; qsvtin convert keeps them"},
        {"build", "a.dxf", "", "a.dxf is cut short or no ASCII DXF"},
        {"build", "a.dxf", drawing, "a.dxf is cut short"},
        {"build", "a.dxf", "hello\nworld\n", "a.dxf:1: \"hello\" is no group code"},
        {"build", "a.dxf", "0\nPOINT\n", "a.dxf:2: a section or the end of the file must follow"},
        {"build", "a.dxf", drawing + "30\nx\n0\nENDSEC\n0\nEOF\n", "a.dxf:14: \"x\" is no coordinate"},
        {"build", "a.dxf", "0\nSECTION\n2\nENTITIES\n0\nPOINT\n10\n1\n0\nENDSEC\n0\nEOF\n",
         "a.dxf:6: POINT has no coordinate of code 20"},
        {"build", "a.dxf", "0\nSECTION\n2\nENTITIES\n0\nPOLYLINE\n70\n99999999999\n0\nENDSEC\n0\nEOF\n",
         "a.dxf:8: \"99999999999\" is no whole number"},
        {"build", "a.dxf", "0\nEOF\n", "holds no points, lines or faces"},
        {"convert", "a.dxf", drawing + "0\nENDSEC\n0\nEOF\n", "has no triangles"},
    };
    for (const auto& c : aCase) {
        SCOPED_TRACE(c.text);
        Put("kept.tin", "kept");
        Put(c.file, c.text);
        const bool build = std::string(c.command) == "build";
        ExpectRefusal(std::string(c.command) + " " + c.file + (build ? " -o kept.tin" : " kept.tin"), 1,
                      c.message);
        EXPECT_EQ(Get("kept.tin"), "kept");
    }
    Put("two.xml", LandXml(kMetric, "<Surface name=\"a\"/><Surface name=\"b\"/>"));
    ExpectRefusal("build two.xml -o kept.tin", 2, "holds 2 surfaces; choose with --surface: \"a\", \"b\"");
    ExpectRefusal("build two.xml --surface c -o kept.tin", 2, "--surface takes one of \"a\", \"b\"");
    std::string many;
    for (int i = 0; i < 22; ++i) many += "<Surface name=\"a\"/>";
    Put("many.xml", LandXml(kMetric, many));
    ExpectRefusal("build many.xml -o kept.tin", 2, "\"a\", \"a\" and 2 more");
    ExpectRefusal("build '\x1B[2J.xyz' -o kept.tin", 1, "cannot read  [2J.xyz");
}

}   // namespace
