#include "tests/fuzz/tin_operations.h"

#include <utility>

namespace {

CXYZ PlaceOf(FuzzInput& input)
{
    const double x = input.Number(), y = input.Number(), z = input.Number();
    return CXYZ(x, y, z);
}

CPolyline LineOf(FuzzInput& input)
{
    CPolyline line;
    for (int n = input.Below(8); n > 0; --n) {
        const CXYZ p = PlaceOf(input);
        CVertex v;
        v.x = p.x;
        v.y = p.y;
        v.z = p.z;
        line.AddVertex(v);
    }
    if (input.Below(3) == 0) {
        line.Close();
    }
    return line;
}

int TriOf(const CTin& tin, FuzzInput& input)
{
    return input.Index(tin.m_aTri.GetSize());
}

int VertexOf(const CTin& tin, FuzzInput& input)
{
    return input.Index(tin.m_aVertex.GetSize());
}

void AskRecords(CTin& tin, CTin&, FuzzInput& input)
{
    const int nTri = TriOf(tin, input);
    double a[9];
    int n[3];
    CXYZ corner;
    tin.GetVertex(nTri, a[0], a[1], a[2], a[3], a[4], a[5], a[6], a[7], a[8]);
    for (int k = -1; k <= 3; ++k) {
        const CXYZ* const p = tin.GetVertex(nTri, k);
        corner = p != nullptr ? *p : corner;
    }
    tin.GetNextTri(nTri, n[0], n[1], n[2]);
    tin.CheckPtUsed(VertexOf(tin, input));
}

void AskLocation(CTin& tin, CTin&, FuzzInput& input)
{
    const CXYZ p = PlaceOf(input);
    const int nStart = TriOf(tin, input);
    int nState = 0, nSide = 0, nTri = 0;
    double z = 0.0;
    tin.FindTri(nStart, p.x, p.y, nState, nSide);
    tin.FindTri(nStart, VertexOf(tin, input), nState, nSide);
    tin.InterpolateForPlane(nStart, p.x, p.y, z, nTri);
    tin.CalZonPlane(nStart, p.x, p.y, z);
    tin.PtInTri(nStart, p.x, p.y);
    tin.PtInTriIncludeBack(nStart, p.x, p.y);
    tin.PtInTin(p.x, p.y);
    tin.PtInTinIncludeBack(p.x, p.y);
}

void AskNearest(CTin& tin, CTin&, FuzzInput& input)
{
    const CXYZ p = PlaceOf(input);
    double a[4];
    tin.NearestOutsideTin(p.x, p.y, a[0], a[1], a[2], a[3]);
}

void AskAroundVertex(CTin& tin, CTin&, FuzzInput& input)
{
    const int nVt = VertexOf(tin, input);
    int nFrom = input.Index(tin.m_aTri.GetSize()), nTri = 0, nSlot = 0;
    for (int i = 0; i < 20 && tin.FindTriWithPt(nVt, nFrom, nTri, nSlot) != 0; ++i) {}
    const int nTriCount = input.Index(tin.m_aTri.GetSize());
    tin.FindFirstTriWithPt(nVt, nTri, nSlot, nTriCount);
    nTri = TriOf(tin, input);
    nSlot = input.Index(3);
    const int nDir = input.Below(3);
    for (int i = 0; i < 20 && tin.FindNextTriWithPt2(nTri, nSlot, nDir) != 0; ++i) {}
}

void AskShape(CTin& tin, CTin&, FuzzInput& input)
{
    const int nTri = TriOf(tin, input), nSlot = input.Index(3);
    double d = 0.0;
    tin.GetLength(nTri, nSlot);
    tin.GetAngleXY(nTri, nSlot, d);
    tin.GetMinAngle(nTri);
    tin.GetMinAngle2(nTri, d);
    tin.Get2ndAngle(nTri, d);
    tin.GetMaxLengthXY(nTri, d);
    tin.GetMaxLength(nTri, d);
    tin.GetTriSedeLengthXY(nTri, nSlot, d);
    tin.CheckTurn(nTri);
    CXYZ a = PlaceOf(input), b = PlaceOf(input), c = PlaceOf(input);
    tin.CheckTurn(a, b, c);
}

void AskMeasures(CTin& tin, CTin&, FuzzInput& input)
{
    const int nTri = TriOf(tin, input);
    double a[6];
    CXYZ normal;
    CRot rot;
    tin.GetRange(nTri, a[0], a[1], a[2], a[3], a[4], a[5]);
    tin.CalTriArea(nTri);
    tin.CalTriAreaXY(nTri);
    tin.CalAllArea();
    tin.CalAllAreaXY();
    tin.GetNVec(nTri, normal);
    tin.SetRotForNV_Z(normal, rot);
    rot.Rotate(normal, normal);
    tin.GetNVec(normal);
}

void AskBoundary(CTin& tin, CTin&, FuzzInput& input)
{
    const int nTri = TriOf(tin, input);
    CArray<int> aSlot, aPos;
    CPolyline ring;
    tin.GetVtOnBoundary(nTri, aSlot, aPos);
    tin.GetNumVtOnBoundary(nTri);
    tin.GetBoundary(ring);
    ring.CheckTurn();
}

void AskDisplay(CTin& tin, CTin&, FuzzInput& input)
{
    const CXYZ p = PlaceOf(input);
    CArray<int> aList;
    double z = 0.0;
    int nTri = 0;
    tin.FindTriWithDepth(p.x, p.y);
    tin.InterpolateForDepth(p.x, p.y, z, nTri);
    const int nMode = input.Index(3), nOrder = input.Below(3);
    tin.GetSortList(nMode, aList, nOrder);
}

void AskFaults(CTin& tin, CTin&, FuzzInput& input)
{
    CArray<CMeshFault> aFault;
    FindMeshFaults(tin, aFault, input.Index(20));
    for (int i = 0; i < aFault.GetSize(); ++i) {
        GetMeshFaultText(aFault[i].m_eKind);
    }
}

void Divide(CTin& tin, CTin&, FuzzInput& input)
{
    const int nWay = input.Below(3), nVt = VertexOf(tin, input);
    int nTri = TriOf(tin, input);
    int nTriCount = input.Below(8) != 0 ? tin.m_aTri.GetSize() : input.Index(tin.m_aTri.GetSize());
    if (nWay == 0) {
        tin.DivideTri(nVt, nTriCount, nTri);
    } else if (nWay == 1) {
        tin.DivideTriInside(nVt, nTriCount, nTri);
    } else {
        tin.DivideTriOnSide(nVt, nTriCount, nTri, input.Index(3));
    }
}

void FeedInBulk(CTin& tin, CTin&, FuzzInput& input)
{
    tin.BeginAddPoint(input.Below(40) - 4);
    for (int n = input.Below(24); n > 0; --n) {
        const CXYZ p = PlaceOf(input);
        tin.AddPoint2(p.x, p.y, p.z);
    }
    if (input.Below(4) == 0) {
        CPolyline line = LineOf(input);
        tin.AddBreakLine2(line);
    }
    if (input.Below(8) != 0) {
        tin.EndAddPoint();
    }
}

void StoreAndLoad(CTin& tin, CTin& other, FuzzInput& input)
{
    CMemFile file;
    if (input.Below(2) == 0) {
        tin.WriteBIN_VER1_SUB(file);
        file.SeekToBegin();
        other.ReadBIN_VER1_SUB(file);
    } else {
        tin.WriteBIN_VER2_SUB(file);
        file.SeekToBegin();
        other.ReadBIN_VER2_SUB(file);
    }
}

void GrowArrayOfTins(CTin& tin, CTin& other, FuzzInput&)
{
    CArray<CTin, CTin&> aTin;
    aTin.Add(tin);
    aTin.Add(other);
    aTin.Add(aTin[0]);
    aTin.InsertAt(1, other);
    aTin.RemoveAt(0);
    tin = aTin[1];
}

}   // namespace

const std::vector<TinOperation>& TinOperations()
{
    using Kind = TinOperation::Kind;
    static const std::vector<TinOperation> aOperation = {
        {"records", Kind::Asks, AskRecords},
        {"location", Kind::Asks, AskLocation},
        {"nearest", Kind::Asks, AskNearest},
        {"around a vertex", Kind::Asks, AskAroundVertex},
        {"shape", Kind::Asks, AskShape},
        {"measures", Kind::Asks, AskMeasures},
        {"boundary", Kind::Asks, AskBoundary},
        {"display", Kind::Asks, AskDisplay},
        {"faults", Kind::Asks, AskFaults},
        {"AddPoint", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) {
             const CXYZ p = PlaceOf(input);
             tin.AddPoint(p.x, p.y, p.z);
         }},
        {"feeding in bulk", Kind::Changes, FeedInBulk},
        {"AddBreakLine", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) {
             CPolyline line = LineOf(input);
             tin.AddBreakLine(line);
         }},
        {"CreateTin", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) { tin.CreateTin(input.Below(3) - 1); }},
        {"CreateTinObal", Kind::Changes, [](CTin& tin, CTin&, FuzzInput&) { tin.CreateTinObal(); }},
        {"CreateTinForPolygon", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) { tin.CreateTinForPolygon(LineOf(input)); }},
        {"splitting", Kind::Changes, Divide},
        {"DivideTri at a place", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) {
             const CXYZ p = PlaceOf(input);
             tin.DivideTri(p.x, p.y, p.z);
         }},
        {"AddTri", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) {
             const int a = VertexOf(tin, input), b = VertexOf(tin, input), c = VertexOf(tin, input);
             tin.AddTri(a, b, c);
         }},
        {"DelTri", Kind::Changes, [](CTin& tin, CTin&, FuzzInput& input) { tin.DelTri(TriOf(tin, input)); }},
        {"DelTriWithAngle", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) {
             const double dAngle = input.Number();
             tin.DelTriWithAngle(dAngle, input.Below(2));
         }},
        {"selection, and the walk whose turn is a member", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) {
             tin.SelectTriWithAngle(input.Number());
             tin.SelectTriWithLength(input.Number());
             int nTri = 0, nSlot = 0;
             for (int i = 0; i < 20 && tin.FindNextTriWithPt(nTri, nSlot) != 0; ++i) {}
         }},
        {"DelVertex", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) { tin.DelVertex(VertexOf(tin, input)); }},
        {"AddVPlane", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) { tin.AddVPlane(input.Number()); }},
        {"AddTIN", Kind::Changes,
         [](CTin& tin, CTin& other, FuzzInput& input) { tin.AddTIN(input.Below(4) == 0 ? tin : other); }},
        {"CopyTINInfo", Kind::Changes,
         [](CTin& tin, CTin& other, FuzzInput& input) {
             tin.CopyTINInfo(input.Below(4) == 0 ? tin : other);
         }},
        {"UpdateTopology", Kind::Changes, [](CTin& tin, CTin&, FuzzInput&) { tin.UpdateTopology(); }},
        {"UpdateBoundary", Kind::Changes, [](CTin& tin, CTin&, FuzzInput&) { tin.UpdateBoundary(); }},
        {"ranges", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput&) {
             double a[6];
             tin.UpdatePtRange();
             tin.UpdateTinRange();
             tin.GetRange(a[0], a[1], a[2], a[3], a[4], a[5]);
         }},
        {"UpdateDepth", Kind::Changes, [](CTin& tin, CTin&, FuzzInput&) { tin.UpdateDepth(); }},
        {"UpdateDepth2", Kind::Changes, [](CTin& tin, CTin&, FuzzInput&) { tin.UpdateDepth2(); }},
        {"UpdateNormal", Kind::Changes, [](CTin& tin, CTin&, FuzzInput&) { tin.UpdateNormal(); }},
        {"UpdateTextureCoord", Kind::Changes, [](CTin& tin, CTin&, FuzzInput&) { tin.UpdateTextureCoord(); }},
        {"SetEPS", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) { tin.SetEPS(input.Below(2) == 0 ? 1e-6 : input.Number()); }},
        {"storing", Kind::Changes, StoreAndLoad},
        {"copies", Kind::Changes,
         [](CTin& tin, CTin& other, FuzzInput&) {
             CTin copy(tin);
             CTin moved(std::move(copy));
             other = moved;
         }},
        {"an array of TINs", Kind::Changes, GrowArrayOfTins},
        {"InitData", Kind::Changes,
         [](CTin& tin, CTin&, FuzzInput& input) { input.Below(8) == 0 ? tin.InitData() : void(); }},
    };
    return aOperation;
}

void AskEverything(CTin& tin, FuzzInput& input)
{
    CTin none;
    for (const TinOperation& operation : TinOperations()) {
        if (operation.eKind == TinOperation::Asks) {
            operation.fnDo(tin, none, input);
        }
    }
}

void Damage(CTin& tin, FuzzInput& input)
{
    const int nKind = input.Below(16);
    if (nKind < 8 && !tin.m_aTri.IsEmpty()) {   // most of what can be wrong is wrong in the triangles
        CTriangle& tri = tin.m_aTri[input.Byte() % tin.m_aTri.GetSize()];
        const int nSlot = input.Below(3);
        if (nKind < 3) {
            tri.m_nVertex[nSlot] = VertexOf(tin, input);
        } else if (nKind < 7) {
            tri.m_nNeighbor[nSlot] = TriOf(tin, input);
        } else {
            tri.m_bSelect = input.Index(4);
        }
        return;
    }
    switch (nKind) {
    case 8:
        if (!tin.m_aVertex.IsEmpty()) {
            tin.m_aVertex[input.Byte() % tin.m_aVertex.GetSize()] = PlaceOf(input);
        }
        break;
    case 9: tin.m_aVertex.SetSize(input.Below(32)); break;
    case 10: tin.m_aTri.SetSize(input.Below(32)); break;
    case 11: tin.m_aBoundary.Add(VertexOf(tin, input)); break;
    case 12: tin.m_aDepthOrder.InsertAt(0, TriOf(tin, input), 1 + input.Below(3)); break;
    case 13:
        tin.m_aTriNormal.SetSize(input.Below(32));
        tin.m_aVtNormal.SetSize(input.Below(32));
        break;
    case 14: {
        CBreakLine line;
        line.m_bClose = input.Index(2);
        for (int n = input.Below(6); n > 0; --n) {
            line.m_aVertexIndex.Add(VertexOf(tin, input));
        }
        tin.m_aBreakLine.Add(line);
        break;
    }
    default:
        tin.m_dEPS = input.Number();
        tin.m_dEPS2 = input.Number();
        tin.m_nOptimDepth = input.Index(4);
        tin.m_nWalkDir = input.Index(2);
        tin.m_nAddPtCount = input.Below(64) - 4;   // the count of points fed is the size that the array gets
        tin.m_MinXYZ = PlaceOf(input);
        tin.m_MaxXYZ = PlaceOf(input);
    }
}

bool IsSmall(const CTin& tin)
{
    constexpr int kMost = 150;
    return tin.m_aVertex.GetSize() <= kMost && tin.m_aTri.GetSize() <= kMost &&
           tin.m_aBoundary.GetSize() <= 4 * kMost && tin.m_aDepthOrder.GetSize() <= 4 * kMost &&
           tin.m_aBreakLine.GetSize() <= 16;
}
