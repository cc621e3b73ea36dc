// The same bits everywhere: hashes of what the library makes of fixed inputs, a line a result.
//   golden_bits               prints the lines
//   golden_bits <file>        compares with those of a file and names what differs
//   golden_bits --values      prints every number behind the hashes, to find where two machines part
// The inputs are made of whole numbers and fractions that are exact. Directions sort the vertices and angles
// trim, so inputs have no angles that nearly tie: the last bit of atan2 and acos is the C library's own. What a
// result takes from sine, cosine or arc functions (rotations, the sphere of angles) is therefore not hashed; the
// tests hold it to values within a tolerance.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include <qsv_3dprocess.h>

namespace {

bool bPrintsValues = false;

// Knuth's 64-bit linear congruential generator: integers only.
class Numbers
{
public:
    explicit Numbers(std::uint64_t nSeed) : m_n(nSeed) {}
    /// A multiple of 1/1024 from 0 up to below nUpTo.
    double Next(int nUpTo)
    {
        m_n = m_n * 6364136223846793005u + 1442695040888963407u;
        const auto nDrawn = static_cast<std::uint32_t>(m_n >> 32) % static_cast<std::uint32_t>(nUpTo * 1024);
        return nDrawn / 1024.0;
    }
    int Index(int nEnd) { return static_cast<int>(Next(nEnd)); }

private:
    std::uint64_t m_n;
};

// FNV-1a, 64 bits, over the bytes of one result, lowest byte first.
class Bits
{
public:
    Bits& operator<<(int n)
    {
        if (bPrintsValues) std::printf(" %d", n);
        return Mix(static_cast<std::uint32_t>(n), 4);
    }
    Bits& operator<<(double d)
    {
        if (bPrintsValues) std::printf(" %a", d);
        std::uint64_t n = 0x7FF8000000000000u;   // any value that is not a number is as good as another
        if (!std::isnan(d)) std::memcpy(&n, &d, sizeof n);
        return Mix(n, 8);
    }
    Bits& operator<<(const CXYZ& v) { return *this << v.x << v.y << v.z; }
    Bits& operator<<(const std::string& bytes)
    {
        for (const char c : bytes) {
            Mix(static_cast<unsigned char>(c), 1);
        }
        return *this;
    }
    std::string Hash() const
    {
        char szHash[17];
        std::snprintf(szHash, sizeof szHash, "%08x%08x", static_cast<unsigned>(m_nHash >> 32),
                      static_cast<unsigned>(m_nHash & 0xFFFFFFFFu));
        return szHash;
    }

private:
    Bits& Mix(std::uint64_t n, int nBytes)
    {
        for (int i = 0; i < nBytes; ++i) {
            m_nHash = (m_nHash ^ ((n >> (8 * i)) & 0xFF)) * 1099511628211u;
        }
        return *this;
    }

    std::uint64_t m_nHash = 14695981039346656037u;
};

std::string strLines;

void Record(const char* szName, const Bits& bits)
{
    if (bPrintsValues) std::printf("\n^ %s\n", szName);
    strLines += std::string(szName) + " " + bits.Hash() + "\n";
}

void RecordMesh(const char* szName, int nResult, CTin& tin)
{
    Bits bits;
    bits << nResult << tin.GetPointSize() << tin.GetTriSize();
    for (int i = 0; i < tin.GetPointSize(); ++i) {
        bits << tin.m_aVertex[i];
    }
    for (int i = 0; i < tin.GetTriSize(); ++i) {
        for (int k = 0; k < 3; ++k) {
            bits << tin.m_aTri[i].m_nVertex[k] << tin.m_aTri[i].m_nNeighbor[k];
        }
    }
    for (int i = 0; i < tin.m_aBoundary.GetSize(); ++i) {
        bits << tin.m_aBoundary[i];
    }
    Record(szName, bits);
}

void AddVertex(CPolyline& line, double x, double y, double z)
{
    CVertex vertex;
    vertex.x = x;
    vertex.y = y;
    vertex.z = z;
    line.AddVertex(vertex);
}

// A square grid turned by the angle of a 3-4-5 triangle, far from the origin: nearly every circle test is a
// tie that rounding decides. One corner more than a square has breaks the ties between directions.
void TurnedGrid()
{
    CTin tin;
    Numbers numbers(1);
    for (int i = 0; i < 25; ++i) {
        for (int j = 0; j < 25; ++j) {
            tin.AddPoint(200000.0 + 0.6 * i - 0.8 * j, 4000000.0 + 0.8 * i + 0.6 * j, numbers.Next(100));
        }
    }
    tin.AddPoint(200031.7, 4000041.3, 1.0);
    const int nResult = tin.CreateTin(0.0);
    RecordMesh("turned grid", nResult, tin);
}

// Scattered points with breaklines that cross the triangles.
int BuildSurvey(CTin& tin, Numbers& numbers, double dAngle)
{
    for (int i = 0; i < 1500; ++i) {
        const double x = numbers.Next(1000);
        const double y = numbers.Next(1000);
        tin.AddPoint(21530000.0 + x / 3.0, 6782000.0 + y / 7.0, numbers.Next(50));
    }
    for (int nLine = 0; nLine < 5; ++nLine) {
        CPolyline line;
        for (int k = 0; k < 12; ++k) {
            const double y = 6782015.0 + 25.3 * nLine + numbers.Next(10);
            const double z = numbers.Next(50);
            AddVertex(line, 21530010.0 + 25.1 * k, y, z);
        }
        tin.AddBreakLine(line);
    }
    return tin.CreateTin(dAngle);
}

void Queries(CTin& tin, Numbers& numbers)
{
    Bits heights, outline, areas, normals;
    tin.UpdateBoundary();
    int nTri = 0;
    for (int i = 0; i < 2000; ++i) {
        const double x = 21530000.0 + numbers.Next(1000) / 3.0;
        const double y = 6782000.0 + numbers.Next(1000) / 7.0;
        double z = 0.0, ox = 0.0, oy = 0.0, oz = 0.0, dist = 0.0;
        heights << tin.InterpolateForPlane(nTri < 0 ? 0 : nTri, x, y, z, nTri) << nTri << z;
        if (i % 20 == 0) outline << tin.NearestOutsideTin(x, y, ox, oy, oz, dist) << ox << oy << oz << dist;
    }
    Record("heights", heights);
    Record("nearest places on the outline", outline);

    areas << tin.CalAllArea() << tin.CalAllAreaXY();
    tin.UpdateNormal();
    CXYZ mean;
    normals << tin.GetNVec(mean) << mean;
    for (int i = 0; i < tin.GetTriSize(); ++i) {
        areas << tin.CalTriArea(i) << tin.CalTriAreaXY(i);
        normals << tin.m_aTriNormal[i];
    }
    for (int i = 0; i < tin.GetPointSize(); ++i) {
        normals << tin.m_aVtNormal[i];
    }
    Record("areas", areas);
    Record("normals", normals);
}

void Display(CTin& tin)
{
    Bits order, texture;
    tin.UpdateDepth2();
    for (int i = 0; i < tin.m_aDepthOrder.GetSize(); ++i) {
        order << tin.m_aDepthOrder[i];
    }
    tin.UpdateTextureCoord();
    for (int i = 0; i < tin.GetPointSize(); ++i) {
        texture << double{tin.m_aVertex[i].tu} << double{tin.m_aVertex[i].tv};
    }
    Record("painting order", order);
    Record("texture coordinates", texture);
}

std::string TakeBytesOf(const char* szFile)
{
    std::ifstream file(szFile, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    file.close();
    std::remove(szFile);
    return bytes;
}

void Files(CTin& tin)
{
    const char* const szFile = "golden_bits.tin";
    CArray<CTin, CTin&> aTin;
    tin.m_strName = "survey";
    aTin.Add(tin);
    aTin.Add(tin);
    Bits single, first, second;
    single << tin.WriteBIN_VER0(szFile) << TakeBytesOf(szFile);
    first << CTin::WriteBIN_VER1(szFile, aTin) << TakeBytesOf(szFile);
    second << CTin::WriteBIN_VER2(szFile, aTin);
    CArray<CTin, CTin&> aRead;
    second << CTin::ReadBIN_VER2(szFile, aRead) << aRead.GetSize() << TakeBytesOf(szFile);
    Record("file of one TIN", single);
    Record("collection file, version 1", first);
    Record("collection file, version 2", second);
    if (aRead.GetSize() == 2) RecordMesh("read back", 1, aRead[1]);
}

void Edits(CTin& tin, Numbers& numbers)
{
    Bits results;
    for (int i = 0; i < 60; ++i) {
        const double x = 21530000.0 + numbers.Next(1000) / 3.0;
        const double y = 6782000.0 + numbers.Next(1000) / 7.0;
        results << tin.DivideTri(x, y, numbers.Next(50)) << tin.DelVertex(numbers.Index(1500));
    }
    Record("results of edits", results);
    RecordMesh("edited", 1, tin);
    tin.AddVPlane(-20.0);
    RecordMesh("walls", 1, tin);
}

// Jagged banks along both sides of a river.
void Polygon()
{
    CPolyline line;
    Numbers numbers(4);
    for (int i = 0; i < 400; ++i) {
        const int nAlong = i < 200 ? i : 399 - i;
        const double y = (i < 200 ? 0.0 : 9.0) + numbers.Next(8) + nAlong / 3.0;
        const double x =
            nAlong + numbers.Next(1) / 2.0;   // one draw a statement: arguments come in any order
        AddVertex(line, x, y, numbers.Next(50));
    }
    CTin tin;
    const int nResult = tin.CreateTinForPolygon(line);
    RecordMesh("polygon", nResult, tin);
}

// Points all around a place; they end where they were, only the triangles come from angles.
void Surroundings()
{
    CTin tin;
    Numbers numbers(5);
    for (int i = 0; i < 300; ++i) {
        const double x = numbers.Next(20) - 10.0;
        const double y = numbers.Next(20) - 10.0;
        tin.AddPoint(x, y, numbers.Next(20) - 10.0);
    }
    const int nResult = tin.CreateTinObal();
    RecordMesh("surroundings", nResult, tin);
}

// A view along a direction whose sines and cosines are fractions.
void Projection()
{
    CProjection projection;
    projection.InitMatrix(MODEL_MATRIX);
    const double aTurn[16] = {0.6, -0.8, 0, 0, 0.48, 0.36, 0.8, 0, -0.64, -0.48, 0.6, 0, 0, 0, 0, 1};
    std::memcpy(projection.m_ModelMatrix, aTurn, sizeof aTurn);
    projection.Scale(1.1, 1.1, 2.3);
    projection.Translate(-7.3, 1.9, -1000.0);
    projection.SetPrjMatrix(-70.1, 90.3, 60.7, -55.9, 100.0, 3000.0);
    Bits there, back;
    there << projection.BeginTrans(1);
    for (int i = 0; i < 16; ++i) {
        back << projection.m_InvMatrix[i];
    }
    Numbers numbers(6);
    for (int i = 0; i < 500; ++i) {
        const double x = numbers.Next(400) - 200.0;
        const double y = numbers.Next(400) - 200.0;
        double u = 0.0, v = 0.0, w = 0.0, rx = 0.0, ry = 0.0, rz = 0.0;
        int nInside = 0;
        there << projection.Transform(x, y, numbers.Next(50), u, v, w, nInside, 1) << nInside << u << v << w;
        back << projection.Inverse(u, v, w, rx, ry, rz) << rx << ry << rz;
    }
    Record("projection", there);
    Record("projection, back", back);
}

// Line by line, so that all results that differ are named.
int Compare(std::istream& golden)
{
    int nDiffer = 0, nLines = 0;
    std::string strHere = strLines, strThere;
    for (; std::getline(golden, strThere); ++nLines) {
        if (!strThere.empty() && strThere.back() == '\r') strThere.pop_back();
        const std::string strLine = strHere.substr(0, strHere.find('\n'));
        strHere.erase(0, strLine.size() + 1);
        if (strLine != strThere) {
            std::cout << "here:  " << strLine << "\nthere: " << strThere << "\n";
            ++nDiffer;
        }
    }
    std::cout << nLines << " results compared, " << nDiffer << " differ\n";
    return nLines > 0 && nDiffer == 0 && strHere.empty() ? 0 : 1;
}

}   // namespace

int main(int argc, char** argv)
{
    const std::string strArgument = argc > 1 ? argv[1] : "";
    bPrintsValues = strArgument == "--values";
    TurnedGrid();
    CTin tin, trimmed;
    Numbers numbers(2), others(2);
    RecordMesh("survey", BuildSurvey(tin, numbers, 0.0), tin);
    RecordMesh("trimmed", BuildSurvey(trimmed, others, 0.2), trimmed);
    Queries(tin, numbers);
    Display(tin);
    Files(tin);
    Edits(tin, numbers);
    Polygon();
    Surroundings();
    Projection();
    if (strArgument.empty()) std::cout << strLines;
    if (strArgument.empty() || bPrintsValues) return 0;
    std::ifstream golden(strArgument);
    return Compare(golden);
}
