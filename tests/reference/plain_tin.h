// A second, plain implementation of the terrain procedures, kept to compare the library with: the same
// input must give the same vertices, triangles, links and results, bit for bit. It searches by scanning,
// recurses where the procedure recurses, and shares no code with the library. Where the library's
// insertion loses points to its tolerances it makes a second pass over them; this one does not.
//
// The records are taken to be sound: every index in them refers to something that is there. An index
// that does not throws std::out_of_range.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

namespace plain {

// std::vector with int sizes and checked access by int index.
template <class T>
struct List : std::vector<T> {
    using std::vector<T>::vector;
    T& operator[](int i) { return this->at(static_cast<std::size_t>(i)); }
    const T& operator[](int i) const { return this->at(static_cast<std::size_t>(i)); }
    int Size() const { return static_cast<int>(this->size()); }
    void SetSize(int n) { this->resize(n > 0 ? static_cast<std::size_t>(n) : 0); }
    void RemoveAt(int i) { this->erase(this->begin() + i); }
};

struct Point {
    double x = 0.0, y = 0.0, z = 0.0;
};

inline Point operator+(const Point& a, const Point& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Point operator-(const Point& a, const Point& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Point operator/(const Point& a, double d)
{
    return {a.x / d, a.y / d, a.z / d};
}
inline double Inn(const Point& a, const Point& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline double Len(const Point& a)
{
    return std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z);
}
inline Point Out(const Point& a, const Point& b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline bool IsFinite(const Point& a)
{
    return std::isfinite(a.x) && std::isfinite(a.y) && std::isfinite(a.z);
}

// Neighbour slot k lies across the edge from vertex slot k+2 to vertex slot k (slots modulo 3).
struct Tri {
    int v[3] = {-1, -1, -1};
    int n[3] = {-1, -1, -1};
    int sel = 0;
};

struct BreakLine {
    List<int> idx;
    int closed = 0;
};

struct Rotation {
    double m[3][3];
    Point Apply(const Point& p) const;
    Rotation Transposed() const;
};

// The former positions of the keys once sorted: ascending when order is 1, else descending; equal keys
// keep their order, keys that are not a number come last.
List<int> SortedOrder(const List<double>& key, int order);

// Turning sense of a closed ring in plan: -1 counter-clockwise, 1 clockwise, 0 neither.
int RingTurn(const List<Point>& ring);

int CalCrossPointXY(double x1, double y1, double z1, double x2, double y2, double z2, double x3, double y3,
                    double x4, double y4, double& x, double& y, double& z, double eps);
int CrossEdgeHeights(const Point& a1, const Point& a2, const Point& b1, const Point& b2, double& x, double& y,
                     double& hA, double& hB, double tol);
Rotation RotForNV_Z(const Point& normal);

struct Tin {
    List<Point> vertex;
    List<Tri> tri;
    List<int> boundary;
    List<BreakLine> breakLine;
    List<int> depthOrder;
    List<Point> triNormal;
    Point minXYZ, maxXYZ;
    double eps = 1e-6, eps2 = 1e-12;
    int optimDepth = 0, walkDir = 1;
    int fewestSteps = 0;   // of a search along a breakline, before it is given up

    // Input
    void InitData();
    void SetEPS(double e);
    int AddPoint(double x, double y, double z);
    void AddBreakLine(const std::vector<Point>& line, int closed);
    void UpdatePtRange();

    // Topology and location
    int AddTri(int a, int b, int c);
    int DelTri(int t);
    int CheckTurn(const Point& p1, const Point& p2, const Point& p3) const;
    int FindTri(int start, double x, double y, int& state, int& side) const;

    // Construction
    int CreateTin(double angle);
    int MakeBoundaryFromPts();
    int MakeConvexHull();
    int MakeTinForConvexHull();
    int Triangulation();
    int DivideTri(int vt, int& triCount, int& lastTri);
    std::vector<int> SplitInside(int p, int& triCount, int t);
    std::vector<int> SplitOnSide(int p, int& triCount, int t, int k);
    void Optimization(int t, int s);
    int CheckOptim(int A, int B, int C, int D) const;
    int SwapTri(int t, int s, int u, int j);
    int CheckSwapTri(int P, int Q, int D, int R) const;

    // Breaklines
    int EnforceBreakLines();
    int BreakLine1(const BreakLine& bl, int& triCount, int& vtCount);
    void CheckBreakLineVt();
    int FindFirstTriWithPt(int vt, int& t, int& slot, int triCount) const;
    int FindTriCrossingBL(const BreakLine& bl, int& seg, int& t, int& slot);
    int FindNextTriWithPt(int& t, int& slot);
    int FindNextTriWithPt2(int& t, int& slot, int dir) const;
    int CheckStateOfBL(const BreakLine& bl, int seg, int t, int slot, Point& cross) const;

    // Shape and trimming
    double GetLength(int t, int k) const;
    int GetAngleXY(int t, int s, double& angle) const;
    int DelTriWithAngle(double angle, int singleOutside);
    int SelectTriWithAngle(double angle);
    int SelectTriWithLength(double length);

    // Polygons and boundaries
    int MakeTinForBoundary();
    int CreateTinForPolygon(std::vector<Point> poly);
    int CreateTinObal();

    // Editing
    void UpdateTopology();
    int DelVertex(int vt);
    void AddVPlane(double z);

    // Queries
    int PtInTri(int t, double x, double y) const;
    void GetRange(int t, Point& low, Point& high) const;
    int GetNVec(int t, Point& normal) const;
    void GetNormals(List<Point>& ofTri, List<Point>& ofVertex) const;

    // Drawing order
    void UpdateDepth2();
    int IsAbobe(int t1, int t2) const;
    int IsBelow(int t1, int t2) const;
    int Obscures(int t1, int t2) const;

    // The corner of triangle t in a slot counted modulo 3.
    const Point& At(int t, int slot) const { return vertex[tri[t].v[slot % 3]]; }
    bool IsTri(int t) const { return t >= 0 && t < tri.Size(); }
    // In triangle t, the first link to one triangle becomes a link to another; t may be none.
    int LinkSlot(int t, int of, int a, int b) const;
    void Relink(int t, int from, int to, int a, int b);
};

}   // namespace plain
