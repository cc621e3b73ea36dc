#ifndef QSV_TIN_TIN_H
#define QSV_TIN_TIN_H

#include "base/polyline.h"
#include "base/rotation.h"
#include "base/xyz.h"
#include "platform/afx_array.h"
#include "platform/afx_file.h"
#include "platform/afx_string.h"
#include "platform/export.h"
#include "tin/breakline.h"
#include "tin/triangle.h"

/// Triangulated irregular network: a terrain surface made of points, triangles and breaklines.
///
/// Triangulation works in plan (x to the right, y up); heights are carried along. Vertices and triangles
/// are addressed by zero-based index into the arrays below; -1 means none. Triangles of a finished TIN
/// run counter-clockwise in plan (but for slivers that are flat within the tolerance) and are linked to their
/// neighbours (see CTriangle for the slots).
///
/// **Typical use.** Feed points and breaklines (AddPoint, AddBreakLine), call CreateTin, then query, edit,
/// draw or save. The host reads the data members directly; when it writes them, it keeps them consistent.
/// Should it not, or should a file be damaged, every operation still ends and stays within the arrays: a
/// reference to a missing vertex reads as the zero record, a neighbour that does not exist counts as none.
///
/// **Results.** Failures are result codes, described with each member together with the state they leave.
/// Nothing throws but std::bad_alloc, when memory runs out.
///
/// **Memory.** Members that read only allocate nothing, but for those that fill an array or a polyline of the
/// caller, GetNumVtOnBoundary, the writers and copies. After std::bad_alloc every member may still be called,
/// and the object be assigned or destroyed. What it then holds, by the groups below:
/// - input: all that was fed before; of a breakline perhaps points, but no line;
/// - CreateTin, CreateTinObal: vertices and breaklines as they were fed, and no triangle: try again with less;
/// - CreateTinForPolygon, readers: what was made or read so far;
/// - edits: all vertices where they were (of DelVertex: perhaps without the deleted one), triangles that may be
///   half changed (FindMeshFaults tells; a copy made before is the way back);
/// - writers: the object is untouched, the file incomplete;
/// - display: the mesh is untouched; orders and normals are to be made anew;
/// - assignment: a part of the source.
///
/// **Units.** Coordinates and lengths in the host's linear unit, angles in radians.
///
/// **Threads.** Objects share nothing: two of them may be used by two threads at once. Operations marked
/// "reads only" may run on one object in several threads as long as none runs that writes. So may copying it
/// and writing it to files. Among the questions these do write: FindNextTriWithPt the walking direction
/// (FindNextTriWithPt2 does not), GetRange of the whole TIN and UpdateTinRange the range, the Select members
/// the selection.
class QSV_API CTin
{
public:
    /// @name Life cycle
    /// @{

    /// An empty TIN, as after InitData.
    CTin();
    /// A copy, as by assignment: the tolerances of the new object are the defaults.
    CTin(const CTin& src);
    /// Takes over the content of src, tolerances included; src is left empty or stale, fit only to be
    /// assigned or destroyed. This is how an array of TINs grows without losing their tolerances.
    CTin(CTin&& src) noexcept;
    ~CTin();   ///< releases the arrays

    /// Empties the object: name "0", no vertices, triangles, boundary, breaklines or drawing order, range
    /// zero, default tolerances (1e-6 and 1e-12).
    /// @note The normals (m_aTriNormal, m_aVtNormal) stay until UpdateNormal, DelTri or an assignment.
    void InitData();
    /// Deep copy of everything but the tolerances, the bulk counter and the walking direction, which
    /// return to their defaults. Assigning an object to itself changes nothing.
    CTin& operator=(const CTin& src);
    /// Copies boundary, triangles and breaklines of src, keeping this object's vertices; meant for a TIN
    /// whose vertices begin with those of src.
    /// @return 1; 0 when this object has fewer vertices than src (nothing changes)
    int CopyTINInfo(CTin& src);

    /// Number of vertices. Reads only.
    int GetPointSize();
    /// Number of triangles. Reads only.
    int GetTriSize();
    /// Coordinates of the three vertices of triangle nTri, in slot order. Reads only.
    /// @return 1; 0 when nTri is out of range (nothing is written)
    int GetVertex(int nTri, double& x1, double& y1, double& z1, double& x2, double& y2, double& z2,
                  double& x3, double& y3, double& z3);
    /// The vertex record in slot nSlot of triangle nTri, valid until the vertex array is next resized.
    /// Reads only.
    /// @return null when nTri, nSlot or the vertex index that stands there is out of range
    CXYZ* GetVertex(int nTri, int nSlot);
    /// The three neighbours of triangle nTri in slot order, -1 for the outside. Reads only.
    /// @return 1; 0 when nTri is out of range (nothing is written)
    int GetNextTri(int nTri, int& nTri1, int& nTri2, int& nTri3);
    /// @}

    /// @name Input of points and breaklines
    /// Two points coincide when their x and y each differ by at most m_dEPS, bounds included; heights are
    /// never compared. Coordinates should be finite and below 1e100, so that products of three are finite too:
    /// nothing breaks over others, but nothing is promised of a mesh built from them, whatever the result.
    /// @{

    /// Sets m_dEPS to eps and m_dEPS2 to eps * eps. A negative tolerance lets no points coincide; areas are
    /// compared with its square all the same.
    void SetEPS(double eps);
    /// Adds a point unless one stands there already.
    /// @return index of the first vertex that coincides with (x, y), whose height stays; else of the new
    ///         vertex
    /// Cost: a scan of all vertices. For many points there is AddPoints (tin/add_points.h), with the same
    /// result, and BeginAddPoint with AddPoint2, which merge nothing.
    int AddPoint(double x, double y, double z);
    /// Starts bulk feeding at index 0: resizes the vertex array to nSize, keeping the first vertices until
    /// they are overwritten.
    void BeginAddPoint(int nSize);
    /// Stores a point at the next bulk position without looking for one that coincides; the array grows
    /// when BeginAddPoint reserved too few. @return its index
    int AddPoint2(double x, double y, double z);
    /// Ends bulk feeding: cuts the vertex array to the points fed.
    void EndAddPoint();
    /// Adds a breakline, feeding its vertices through AddPoint. A line whose last vertex repeats its first
    /// in plan, or that is marked closed, becomes a ring; the repeated vertex is dropped.
    /// @return index of the breakline; -1 for a line of fewer than two vertices (a single one is still
    ///         added as a point)
    /// Cost: that of AddPoint for each vertex. For many lines feed the vertices to AddPoints, and add the
    /// indices that it gives to m_aBreakLine.
    int AddBreakLine(CPolyline& line);
    /// The same, feeding the vertices through AddPoint2, for use between BeginAddPoint and EndAddPoint.
    int AddBreakLine2(CPolyline& line);
    /// Sets the range to that of all vertices.
    /// @return 1; 0 when there are none (the range becomes zero)
    int UpdatePtRange();
    /// @}

    /// @name Triangles and point location
    /// @{

    /// Appends a triangle without neighbours; the caller links it and answers for its orientation.
    /// @return its index; -1 when a vertex index is out of range (nothing is added)
    int AddTri(int nVt1, int nVt2, int nVt3);
    /// Removes a triangle; later ones move down by one, links to it become -1. Vertices stay. Keeps
    /// m_aTriNormal parallel when it was. Cost: linear in the triangles.
    /// @return 1; 0 when nTri is out of range
    /// @note Removing the only triangle empties the whole object (InitData), vertices and all.
    int DelTri(int nTri);
    /// Turn of three points in plan: 1 clockwise, -1 counter-clockwise, 0 when the doubled area is within
    /// m_dEPS2 of zero. Reads only.
    int CheckTurn(CXYZ& p1, CXYZ& p2, CXYZ& p3);
    /// The same for the vertices of triangle nTri in slot order; -2 when nTri is out of range. Reads only.
    int CheckTurn(int nTri);
    /// Finds the triangle at a plan position by walking there from triangle nStartTri.
    /// @param nState  -2 no result (bad start, or the walk gave up after as many moves as triangles);
    ///                -1 outside the TIN; 0 inside the triangle; 1 at a vertex; 2 on an edge
    /// @param nSide   state 1: the vertex slot; state 2: the edge, from slot nSide to the next; state -1:
    ///                the outer edge of the last triangle the walk reached; else 0
    /// @return the triangle, or -1 in the states below 0
    /// A position whose doubled area with an edge is at most m_dEPS2 counts as on the line of that edge, and
    /// there as at one of its ends when it differs from it by at most m_dEPS in x and in y.
    /// Visibility walk that takes the first edge in slot order, no allocation, products and
    /// comparisons only (Devillers, Pion, Teillaud, "Walking in a triangulation", 2002). Reads only.
    /// @note The walk ends where it leaves the surface. Where the outline is notched or has holes (a trimmed
    ///       TIN), a position behind the notch is therefore outside as seen from some starts: start near it
    ///       (CHeightFinder::GetStartTri), and ask PtInTin where a wrong -1 would matter. A position that is not
    ///       a number counts as inside nStartTri.
    int FindTri(int nStartTri, const double& x, const double& y, int& nState, int& nSide);
    /// The same for the plan position of vertex nVt; (0, 0) when nVt is out of range. Reads only.
    int FindTri(int nStartTri, int nVt, int& nState, int& nSide);
    /// Finds the next triangle that uses vertex nVt, scanning from triangle nFrom (below 0: from the first).
    /// Calls with the same nFrom variable list all of them in index order. Reads only.
    /// @return 1, with the triangle, the slot of the vertex and nFrom behind the triangle; 0 when no more
    ///         triangle uses it (nTri and nSlot then mean nothing)
    int FindTriWithPt(int nVt, int& nFrom, int& nTri, int& nSlot);
    /// Sets the range to that of the vertices that triangles use.
    /// @return 1; 0 when there is no triangle (the range becomes zero)
    int UpdateTinRange();
    /// @}

    /// @name Construction
    /// @{

    /// Builds the TIN of all points and breaklines fed: convex hull, insertion of every point with
    /// Delaunay swapping (Lawson 1977), breaklines as chains of edges, then trimming.
    /// @param dAngle  above 0: thin outer triangles are trimmed by DelTriWithAngle(dAngle, 1)
    /// @return 1: every finite point is a vertex of the mesh or coincides with one; m_aBoundary is the hull,
    ///         counter-clockwise. 0: fewer than 3 points or more than 268,435,455, no three that span a
    ///         surface, or a coordinate that is not finite and so spoils the hull; the object is emptied
    /// Breaklines are followed as far as the surface allows; see docs/algorithms/breaklines.md. The range becomes
    /// that of all points; drawing order and normals are to be made anew.
    /// Cost: near linear; 88 bytes a point meanwhile. Points of a grid in no order are an exception: most fall on
    /// edges, where only a walk from the point before tells which triangle takes them, some square root of n triangles
    /// long. Feed a grid by its rows, or along a curve that leads from neighbour to neighbour.
    int CreateTin(double dAngle);
    /// Inserts vertex nVt while a mesh is being built.
    /// @param nTriCount  triangles in use; advanced by those added
    /// @param nLastTri   triangle to search from; receives the one found
    /// @return 1; 0 when the vertex lies outside or at an existing vertex, or an argument is out of range
    ///         (nothing changes)
    int DivideTri(int nVt, int& nTriCount, int& nLastTri);
    /// Splits triangle nTri into three at vertex nVt inside it, then swaps edges until Delaunay. Grows the
    /// triangle array when it has no room. Does nothing when an argument is out of range.
    void DivideTriInside(int nVt, int& nTriCount, int nTri);
    /// Splits the triangles on both sides of edge nSide of triangle nTri (one on the outside) at vertex
    /// nVt on that edge; otherwise as DivideTriInside.
    void DivideTriOnSide(int nVt, int& nTriCount, int nTri, int nSide);
    /// @}

    /// @name Walking around a vertex
    /// @{

    /// First triangle, of triangles 0 .. nTriCount-1, that uses vertex nVt, and the slot. Reads only.
    /// @return 1; 0 when none does (nTri is then the number of triangles searched)
    int FindFirstTriWithPt(int nVt, int& nTri, int& nSlot, int nTriCount);
    /// One step around the vertex in slot nSlot of triangle nTri, turning as m_nWalkDir says; at the outside
    /// the direction is reversed, at most once a step: m_nWalkDir is written.
    /// @return 1 with the next triangle and the vertex' slot in it; 0 when there is none on either side (nTri
    ///         is then -1), it does not use the vertex (nTri is that triangle, nSlot stays), or an argument is
    ///         out of range (nothing is written)
    int FindNextTriWithPt(int& nTri, int& nSlot);
    /// The same without bouncing: across the edge that leaves the vertex when nDir is not 0
    /// (clockwise), across the edge that ends at it when nDir is 0. Reads only.
    int FindNextTriWithPt2(int& nTri, int& nSlot, int nDir);
    /// @}

    /// @name Boundaries and polygons
    /// m_aBoundary has two forms: a ring of vertices (CreateTin, CreateTinForPolygon), or pairs of vertices,
    /// one pair an outer edge (UpdateBoundary).
    /// @{

    /// Replaces the vertices of poly by those of m_aBoundary, in its order, and marks poly closed. Reads only.
    void GetBoundary(CPolyline& poly);
    /// Builds the TIN that fills one simple polygon, given in either direction; the object is emptied first.
    /// Ears with the shortest chord are cut first, then edges are swapped until Delaunay. A last vertex that
    /// repeats the first is dropped.
    /// @return 1, m_aBoundary being the ring; 0 when the polygon has fewer than 3 vertices (the object is
    ///         empty), encloses no area, crosses or touches itself within 1e-6 (vertices and boundary stand,
    ///         no triangle), or no ear is left (some triangles stand, not linked). The range stays zero
    ///         (UpdateTinRange)
    /// @note Ears are chosen by chord alone: in a ring of deep narrow bays triangles may end overlapping.
    /// Cost: n log n to test and cut; swapping can take longer in large rings.
    int CreateTinForPolygon(CPolyline poly);
    /// Builds a TIN of points that surround a centre (a tank, a tunnel face): triangulates their directions
    /// seen from the centroid, horizontal angle against vertical angle. Vertices come back as they were,
    /// also on failure; those that breaklines add lie in space on their line. The range is updated.
    /// @return as CreateTin; after 0 breaklines and tolerances are reset, but the vertices stand
    /// @note The surface stays open where the horizontal angle jumps, towards -x. Directions with no x part
    ///       count as horizontal angle 0.
    int CreateTinObal();
    /// Rebuilds m_aBoundary as the pairs (start, end) of all outer edges, in triangle order.
    void UpdateBoundary();
    /// Which vertex slots of triangle nTri stand in m_aBoundary, and at which positions.
    /// @return how many pairs (slot, position) were written; the search ends with the position at which there
    ///         are three or more. -1 when nTri is out of range (both arrays are emptied). Reads only.
    int GetVtOnBoundary(int nTri, CArray<int>& aSlot, CArray<int>& aPos);
    /// How many, as GetVtOnBoundary counts. Reads only.
    int GetNumVtOnBoundary(int nTri);
    /// @}

    /// @name Shape of triangles, trimming
    /// Edge k of a triangle runs from vertex slot k to the next. Angles and the lengths named XY are plan
    /// values. A triangle without extent gives what the arithmetic gives, which may be not a number.
    /// @{

    /// Length in space of edge nEdge. Reads only.
    /// @return 0.0 for an index or edge out of range
    /// @note Triangle 0 always measures 0.0; only indices from 1 are accepted.
    double GetLength(int nTri, int nEdge);
    /// Interior angle at vertex slot nSlot. Reads only.
    /// @return 1; 0 with dAngle 0 when an argument is out of range
    int GetAngleXY(int nTri, int nSlot, double& dAngle);
    /// Smallest interior angle; 0.0 when nTri is out of range. Reads only.
    double GetMinAngle(int nTri);
    /// Smallest interior angle. Reads only.
    /// @return its slot, the first of equal ones; -1 when nTri is out of range (dAngle stays)
    int GetMinAngle2(int nTri, double& dAngle);
    /// Middle interior angle. @return its slot; -1 when nTri is out of range (dAngle stays). Reads only.
    int Get2ndAngle(int nTri, double& dAngle);
    /// Longest edge in plan. Reads only.
    /// @return the edge, the first of equal ones; -1 with dLength 0 when nTri is out of range
    int GetMaxLengthXY(int nTri, double& dLength);
    /// Longest edge in space; otherwise as GetMaxLengthXY. Reads only.
    int GetMaxLength(int nTri, double& dLength);
    /// Plan length of edge nEdge. @return 1; 0 when an argument is out of range (dLength stays). Reads only.
    int GetTriSedeLengthXY(int nTri, int nEdge, double& dLength);
    /// Removes outer triangles whose plan angle at an end of an outer edge is at most dAngle, again and
    /// again, until none is left.
    /// @param bSingleOutside  not 0: only triangles with exactly one outer edge go; corners stay
    /// @return always 1
    /// @note Triangle 0 is examined once; whichever triangle stands first afterwards stays.
    /// An angle of exactly 0, or one that is not a number, trims nothing. Where the only triangle goes, the
    /// object is emptied, as by DelTri. Boundary, range and drawing order are not updated. Cost: n log n.
    int DelTriWithAngle(double dAngle, int bSingleOutside);
    /// Selects (m_bSelect) the outer triangles that have an angle of at most dAngle at an end of an outer
    /// edge, and deselects all others. @return how many are selected
    int SelectTriWithAngle(double dAngle);
    /// Selects the outer triangles by length, and deselects all others. @return how many are selected
    /// @note Measured is the edge after the outer one, from slot k to the next where k is the neighbour slot
    ///       of the outer edge, in space; triangle 0 is never selected for a length of 0 or more.
    int SelectTriWithLength(double dLength);
    /// @}

    /// @name Rebuilding, merging, deleting
    /// @{

    /// Rebuilds all neighbour links from the vertex indices. Where more than two triangles hold an edge, the
    /// last one in index order wins for the earlier one. Edges held in the same direction stay unlinked.
    /// Cost: n log n in the triangles.
    void UpdateTopology();
    /// Appends the vertices and triangles of src, which may be this object; the triangles are not selected.
    /// Nothing is joined or linked; boundary, breaklines, range, normals and drawing order stay.
    void AddTIN(CTin& src);
    /// 1 when some triangle uses vertex nVt, else 0. Cost: a scan. Reads only.
    int CheckPtUsed(int nVt);
    /// Removes a vertex and closes the hole, Delaunay in the plane of the surroundings; works on steep and
    /// closed surfaces too. Indices above nVt go down by one, also in m_aBoundary and the breaklines; entries
    /// equal to nVt are removed there. Other vertices keep their coordinates to the bit.
    /// @return 1: the vertex is gone; at the outside, or when no filling fits, the hole stays open.
    ///         0: the hole cannot be filled, nothing changes. A vertex that no triangle uses is just removed;
    ///         an index out of range gives 1 and clears the selection
    /// All selection flags are 0 afterwards. Normals, range and drawing order are not updated. Where no
    /// triangle would be left, the object is emptied, as by DelTri.
    /// @note The plane is that of the mean unit normal of the triangles around the hole: a thin sliver among
    ///       them counts as much as the others.
    /// Cost: linear in the size of the TIN; for many vertices of a terrain, build it anew without them.
    int DelVertex(int nVt);
    /// The rotation that turns normal n onto +z. Reads only.
    void SetRotForNV_Z(CXYZ& n, CRot& rot);
    /// @}

    /// @name Point in TIN, heights, nearest point
    /// @{

    /// 1 when (x, y) lies in triangle nTri, edges included, else 0, also when nTri is out of range. Exact, no
    /// tolerance; a clockwise triangle holds no point of its interior. Reads only.
    int PtInTri(int nTri, const double& x, const double& y);
    /// 1 when some triangle holds the point, else 0. Cost: a scan; InterpolateForPlane, which walks, is faster
    /// by far. Reads only.
    int PtInTin(const double& x, const double& y);
    /// As PtInTri, for triangles turned either way. Reads only.
    /// @note A triangle without area holds every point of its line.
    int PtInTriIncludeBack(int nTri, const double& x, const double& y);
    /// As PtInTin, for triangles turned either way. Reads only.
    int PtInTinIncludeBack(const double& x, const double& y);
    /// Height at (x, y) of the plane through triangle nTri, also outside of it. Reads only.
    /// @return 1; 0 when the triangle is vertical, or nTri is out of range (z stays)
    int CalZonPlane(int nTri, const double& x, const double& y, double& z);
    /// Height of the surface at a plan position, found by walking the mesh.
    /// @param nStartTri  triangle to walk from; a near one keeps the walk short
    /// @param z          receives the height; written only on success
    /// @param nTri       receives the triangle that holds (x, y), or -1; always written
    /// @return 1; 0 when (x, y) is off the surface, or behind a notch or hole of it as seen from nStartTri (see
    ///         FindTri), nStartTri is out of range, or the triangle is vertical
    /// Positions beyond an outer edge by a doubled area of up to m_dEPS2 still count as on it. Reads only.
    /// For many positions there is CHeightFinder (tin/height_finder.h).
    int InterpolateForPlane(int nStartTri, const double& x, const double& y, double& z, int& nTri);
    /// Nearest point of the outline to a plan position, inside or outside. m_aBoundary must hold pairs
    /// (UpdateBoundary); of a ring, every other edge would be looked at.
    /// @param ox, oy, oz  receive the point: a vertex, or a place on an edge; of equally near ones the first
    /// @param dist        receives its plan distance
    /// @return 1; 0 when m_aBoundary is empty, or (x, y) is not finite or beyond 1e150 (outputs stay)
    /// @note On a sloped edge the candidate is the foot of the perpendicular in space from (x, y, 0), which is
    ///       not the place nearest in plan. Cost: a scan of m_aBoundary. Reads only.
    int NearestOutsideTin(const double& x, const double& y, double& ox, double& oy, double& oz, double& dist);
    /// @}

    /// @name Ranges, areas, normals
    /// @{

    /// Range of the vertices that triangles use; refreshes m_MinXYZ and m_MaxXYZ.
    /// @return 1; 0 with all outputs 0 when there is no triangle
    int GetRange(double& minX, double& maxX, double& minY, double& maxY, double& minZ, double& maxZ);
    /// Range of one triangle. @return 1; 0 when nTri is out of range (outputs stay). Reads only.
    int GetRange(int nTri, double& minX, double& maxX, double& minY, double& maxY, double& minZ,
                 double& maxZ);
    /// Area in space of the triangle of three points, from cross products of the position vectors, never
    /// negative. Reads only.
    /// @note Far from the origin digits are lost; work from a local origin when they matter.
    double CalTriArea(double x1, double y1, double z1, double x2, double y2, double z2, double x3, double y3,
                      double z3);
    /// Area in space of triangle nTri; 0.0 when out of range. Reads only.
    double CalTriArea(int nTri);
    /// Area in plan of triangle nTri; 0.0 when out of range. Reads only.
    double CalTriAreaXY(int nTri);
    /// Area in space of all triangles. Reads only.
    double CalAllArea();
    /// Area in plan of all triangles. Reads only.
    double CalAllAreaXY();
    /// Unit normal of triangle nTri, upwards when it runs counter-clockwise. Reads only.
    /// @return 1; 0 when nTri is out of range (vec stays). Not finite for a triangle without area.
    int GetNVec(int nTri, CXYZ& vec);
    /// Mean unit normal of the TIN. Reads only.
    /// @return 1; 0 with (0, 0, 1) when there is no triangle
    /// @note The sum starts with (0, 0, 1), so the mean leans to the vertical, most for few triangles. With a
    ///       triangle without area it is not a number.
    int GetNVec(CXYZ& vec);
    /// @}

    /// @name Walls and single points
    /// @{

    /// Hangs a vertical wall of two triangles on every outer edge, down (or up) to height z. Foot vertices
    /// are shared where they coincide within m_dEPS in x, y and z, the first of several; a vertex of the TIN
    /// that stands there serves too, and its wall has no height. Links are rebuilt; boundary, range, drawing
    /// order and normals are not updated. Cost: n log n in the size of the TIN.
    void AddVPlane(double z);
    /// Inserts a point into the finished mesh by splitting the triangle or edge it falls on. Edges are not
    /// swapped; boundary, breaklines, range, drawing order and normals are not updated.
    /// @return 1; 0 when the point is off the mesh, or behind a notch or hole of it as seen from triangle 0 (see
    ///         FindTri), or at an existing vertex (nothing changes)
    int DivideTri(const double& x, const double& y, const double& z);
    /// @}

    /// @name Files
    /// Little-endian, the same on every machine; docs/file_formats.md shows the bytes. Writers return 1 once
    /// the file was opened and do not tell a full disk: check the file, or write beside it and rename.
    /// @{

    /// Writes vertices, triangles and boundary as a single-TIN file. Reads only, as all writers.
    /// @return 1; 0 when the file cannot be opened
    int WriteBIN_VER0(CString strPath);
    /// Replaces the content by that of a single-TIN file and brings range and drawing order up to date.
    /// @return 1; 0 when the file is missing (the object is empty), cut short or damaged (the object holds
    ///         what was read so far)
    int ReadBIN_VER0(CString strPath);
    /// Writes all TINs of an array as a collection file of version 1.
    /// @return 1; 0 when the file cannot be opened
    static int WriteBIN_VER1(CString strPath, CArray<CTin, CTin&>& aTin);
    /// Replaces the array by the TINs of a collection file of version 1, or of a single-TIN file.
    /// @return 1; 0 on failure (TINs read in full stay, the one being read as far as it got; behind it empty
    ///         ones may stand for those that were announced)
    static int ReadBIN_VER1(CString strPath, CArray<CTin, CTin&>& aTin);
    /// As WriteBIN_VER1, version 2, which keeps the texture coordinates.
    static int WriteBIN_VER2(CString strPath, CArray<CTin, CTin&>& aTin);
    /// As ReadBIN_VER1; reads files of all three forms.
    static int ReadBIN_VER2(CString strPath, CArray<CTin, CTin&>& aTin);
    /// Writes this TIN's section of a version 1 file at the current position. @return 1
    int WriteBIN_VER1_SUB(CFile& file);
    /// Reads one section of a version 1 file into this object. @return 1; 0 when it is cut short or damaged
    int ReadBIN_VER1_SUB(CFile& file);
    /// Writes this TIN's section of a version 2 file at the current position. @return 1
    int WriteBIN_VER2_SUB(CFile& file);
    /// Reads one section of a version 2 file into this object. @return 1; 0 when it is cut short or damaged
    int ReadBIN_VER2_SUB(CFile& file);
    /// @}

    /// @name Display
    /// @{

    /// Orders the triangles for painting from above, by the sum of their vertex heights, lowest first, into
    /// m_aDepthOrder. Without triangles the old order stays.
    void UpdateDepth();
    /// The same, refined pair by pair so that no triangle is painted over one above it (Newell, Newell,
    /// Sancha, "A solution to the hidden surface problem", 1972). Triangles that overlap in a ring end in some
    /// order. Cost: near linear where few triangles lie over the same ground.
    void UpdateDepth2();
    /// An order of all triangles that leaves the object as it is. Reads only.
    /// @param nMode   key: 0 lowest vertex, 1 highest vertex, 2 sum of the heights
    /// @param nOrder  1 ascending, else descending
    /// @return 1, also without triangles; 0 for another mode (aList is filled with zeros)
    int GetSortList(int nMode, CArray<int>& aList, int nOrder);
    /// The triangle painted last of those that hold (x, y), by m_aDepthOrder, which must be up to date; -1
    /// when none does. Cost: a scan from the top. Reads only.
    int FindTriWithDepth(const double& x, const double& y);
    /// Height at (x, y) on that triangle. Reads only.
    /// @return 1; 0 when no triangle holds the point or it is vertical (z stays; nTri is always written)
    int InterpolateForDepth(const double& x, const double& y, double& z, int& nTri);
    /// Sets m_aTriNormal to the triangles' unit normals and m_aVtNormal, for every vertex, to the plain mean
    /// of the normals of the triangles that use it (not unit length; zero when none does). A triangle without
    /// area makes the normals of its vertices not a number.
    void UpdateNormal();
    /// Sets tu and tv of every vertex to its place in the plan range of the TIN, 0 .. 1, and brings the range
    /// up to date. Without triangles the range becomes zero, and nothing else changes.
    /// @note A range without extent divides by zero; the result may be not a number.
    void UpdateTextureCoord();
    /// @}

    /// @name Data
    /// Read directly by the host.
    /// @{
    CString m_strName;                 ///< name of the TIN; "0" after InitData
    CArray<CXYZ> m_aVertex;            ///< vertices
    CArray<CTriangle> m_aTri;          ///< triangles
    int m_nSpare;                      ///< 0; free for the host, copied by assignment
    CArray<int> m_aDepthOrder;         ///< triangle indices in painting order, lowest first (UpdateDepth)
    double m_dEPS;                     ///< planar tolerance for coordinates; default 1e-6
    double m_dEPS2;                    ///< its square, for doubled areas; default 1e-12
    CArray<CXYZ> m_aTriNormal;         ///< one unit normal a triangle, or empty (UpdateNormal)
    CArray<CXYZ> m_aVtNormal;          ///< one mean normal a vertex, or empty (UpdateNormal)
    int m_nAddPtCount;                 ///< points fed by AddPoint2 since BeginAddPoint
    int m_nOptimDepth;                 ///< nesting level of edge swapping; 0 between operations
    CXYZ m_MinXYZ;                     ///< lower corner of the range
    CXYZ m_MaxXYZ;                     ///< upper corner of the range
    CArray<int> m_aBoundary;           ///< outline: a ring of vertices, or pairs of them (UpdateBoundary)
    CArray<CBreakLine> m_aBreakLine;   ///< breaklines
    int m_nWalkDir;                    ///< turning direction of FindNextTriWithPt: 1 or 0
    /// @}

private:
    int MakeBoundaryFromPts();
    int MakeConvexHull();
    int MakeTinForConvexHull();
    int Triangulation();

    void Optimization(int nTri, int nSide);
    int CheckOptim(int nVtA, int nVtB, int nVtC, int nVtD);
    int SwapTri(int nTri, int nSide, int nTri2, int nSide2);
    int CheckSwapTri(int nVtP, int nVtQ, int nVtD, int nVtR);

    int BreakLine();
    int BreakLine1(CBreakLine& bl, int& nTriCount, int& nVtCount);
    void CheckBreakLineVt();
    int FindTriCrossingBL(CBreakLine& bl, int& nSeg, int& nTri, int& nSlot);
    int CheckStateOfBL(CBreakLine& bl, int& nSeg, int& nTri, int& nSlot, CXYZ& ptCross);

    int MakeTinForBoundary();
    double GetMinAngle(int nVtA, int nVtB, int nVtC);

    int IsAbobe(int nTri1, int nTri2);
    int IsBelow(int nTri1, int nTri2);
    int Obscures(int nTri1, int nTri2);
};

#endif
