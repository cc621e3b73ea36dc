// Prints every bit of a few meshes that are full of ties: what two compilers print must be equal.
#include <cstdint>
#include <cstdio>

#include <qsv_3dprocess.h>

namespace {

// Knuth's 64-bit linear congruential generator: integers only, the same everywhere.
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

private:
    std::uint64_t m_n;
};

void AddVertex(CPolyline& line, double x, double y, double z)
{
    CVertex vertex;
    vertex.x = x;
    vertex.y = y;
    vertex.z = z;
    line.AddVertex(vertex);
}

void PrintMesh(const char* szName, CTin& tin)
{
    std::printf("%s: %d vertices, %d triangles\n", szName, tin.GetPointSize(), tin.GetTriSize());
    for (int i = 0; i < tin.GetPointSize(); ++i) {
        const CXYZ& v = tin.m_aVertex[i];
        std::printf("%a %a %a\n", v.x, v.y, v.z);
    }
    for (int i = 0; i < tin.GetTriSize(); ++i) {
        const CTriangle& t = tin.m_aTri[i];
        std::printf("%d %d %d  %d %d %d\n", t.m_nVertex[0], t.m_nVertex[1], t.m_nVertex[2], t.m_nNeighbor[0],
                    t.m_nNeighbor[1], t.m_nNeighbor[2]);
    }
}

// A square grid turned by the angle of a 3-4-5 triangle, far from the origin: nearly every circle test is a
// tie that rounding decides.
void TurnedGrid()
{
    CTin tin;
    Numbers numbers(1);
    for (int i = 0; i < 25; ++i) {
        for (int j = 0; j < 25; ++j) {
            tin.AddPoint(200000.0 + 0.6 * i - 0.8 * j, 4000000.0 + 0.8 * i + 0.6 * j, numbers.Next(100));
        }
    }
    std::printf("result %d\n", tin.CreateTin(0.0));
    PrintMesh("turned grid", tin);
}

// Scattered points with breaklines that cross the triangles, trimmed; then heights all over it.
void Survey()
{
    CTin tin;
    Numbers numbers(2);
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
    std::printf("result %d\n", tin.CreateTin(0.05));
    PrintMesh("survey", tin);

    int nTri = 0;
    for (int i = 0; i < 2000; ++i) {
        const double x = 21530000.0 + numbers.Next(1000) / 3.0;
        const double y = 6782000.0 + numbers.Next(1000) / 7.0;
        double z = 0.0;
        const int nFound = tin.InterpolateForPlane(nTri < 0 ? 0 : nTri, x, y, z, nTri);
        std::printf("%d %d %a\n", nFound, nTri, z);
    }
    std::printf("area %a, in plan %a\n", tin.CalAllArea(), tin.CalAllAreaXY());
}

}   // namespace

int main()
{
    TurnedGrid();
    Survey();
    return 0;
}
