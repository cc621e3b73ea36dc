// The public interface as sequences of calls with arguments of every kind, on objects whose members were
// damaged between the calls.

#include "tests/fuzz/target.h"
#include "tests/fuzz/tin_operations.h"

#include <climits>
#include <cstring>

namespace {

constexpr int kMostCalls = 100;

// Gives access to what subclasses may call.
class Projection : public CProjection
{
public:
    void UseProtected(FuzzInput& input)
    {
        constexpr int kMost = 20;
        static double a[kMost * kMost], b[kMost * kMost], c[kMost * kMost];
        static int ip[kMost];
        const int n = input.Below(kMost + 1);
        for (int i = 0; i < n * n; ++i) {
            a[i] = input.Number();
            b[i] = input.Number();
        }
        MatrixMul2(n, a, b, c);
        ApplyMatrix(n, a, b);
        matinv(n, a, c);
        lu(n, c, ip);
        NorToScr(a[0], a[1], b[0], b[1]);
        ScrToNor(b[0], b[1], a[0], a[1]);
    }
};

void UseProjection(Projection& projection, FuzzInput& input)
{
    double v[6];
    for (double& d : v) {
        d = input.Number();
    }
    int nInside = 0;
    switch (input.Below(10)) {
    case 0: projection.InitMatrix(static_cast<MATRIX_MODE>(input.Index(2))); break;
    case 1: projection.SetPrjMatrix(v[0], v[1], v[2], v[3], v[4], v[5]); break;
    case 2: projection.Translate(v[0], v[1], v[2]); break;
    case 3: projection.Scale(v[0], v[1], v[2]); break;
    case 4: projection.RotateX(v[0]); break;
    case 5: projection.RotateY(v[0]); break;
    case 6: projection.RotateZ(v[0]); break;
    case 7: projection.UseProtected(input); break;
    case 8: projection.m_TransMatrix[input.Below(16)] = v[0]; break;
    default: projection.BeginTrans(input.Below(2));
    }
    projection.Transform(v[0], v[1], v[2], v[3], v[4], v[5], nInside, input.Below(3));
    projection.Inverse(v[3], v[4], v[5], v[0], v[1], v[2]);
}

CPolyline AnglesOf(FuzzInput& input)
{
    CPolyline line(input.Below(32), input.Index(4));
    for (int n = input.Below(6); n > 0; --n) {
        CVertex v;
        v.x = input.Number() * 25.0;
        v.y = input.Number() * 25.0;
        line.AddVertex(v);
    }
    if (input.Below(2) == 0) {
        line.Close();
    }
    return line;
}

void UseSphere(CGrid3DSphere& sphere, FuzzInput& input)
{
    CXYZ p;
    CPolyline line = AnglesOf(input);
    switch (input.Below(6)) {
    case 0: {
        double v[6];
        for (double& d : v) {
            d = input.Number();
        }
        // Coarse steps most of the time: a million points take their time.
        const double dStep = input.Below(64) == 0 ? v[4] : 10.0 + v[4],
                     dChord = input.Below(64) == 0 ? v[5] : 0.1;
        sphere.Create3DGridSphere(CXYZ(v[0], v[1], v[2]), v[3], dStep, dStep / 2.0,
                                  static_cast<ZENITH_MODE>(input.Index(6)), dChord);
        break;
    }
    case 1:
        sphere.DevidePolyHV(line, line);
        sphere.CalcPolyHV2XYZ(line, line);
        break;
    case 2: sphere.MakeGridLine(static_cast<GRID_LINE>(input.Index(2)), input.Number(), line); break;
    case 3:
        sphere.SetZenithMode(static_cast<ZENITH_MODE>(input.Index(6)));
        sphere.SetNumberFormat(static_cast<NUMBER_FORMAT>(input.Index(3)));
        sphere.SetTextAlign(input.Index(11));
        break;
    case 4: {
        const int nLabel = input.Index(sphere.m_aLabel.GetSize());
        const double x = input.Number(), y = input.Number();
        const int nWidth = input.Index(200), nHeight = input.Index(200);
        sphere.PlaceLabel(nLabel, x, y, nWidth, nHeight);
        sphere.HideLabel(input.Index(sphere.m_aLabel.GetSize()));
        break;
    }
    default: {
        CGrid3DSphere copy(sphere);
        sphere.InitData();
        sphere = copy;
    }
    }
    double dV = 0.0, dH = 0.0;
    const double d = input.Number();
    sphere.GetXYZ(d, input.Number(), p);
    sphere.GetVH(p, dV, dH);
    CGrid3DSphere::GetReading(d, static_cast<ZENITH_MODE>(input.Index(6)));
    CDist(d, static_cast<DIST_UNIT>(input.Index(3))).GetText(static_cast<NUMBER_FORMAT>(input.Index(3)));
}

void UseBase(FuzzInput& input)
{
    CArray<double> aKey;
    CArray<int> aIndex;
    for (int n = input.Below(32); n > 0; --n) {
        aKey.Add(input.Number());
    }
    QuickSortKey(aKey, aIndex, input.Below(3));
    double dH = input.Number(), dV = input.Number();
    CXYZ p(dH, dV, input.Number());
    CCalcXYZHV::CalcHV(p, dH, dV);
    CCalcXYZHV::CalcXYZ(dH, dV, input.Number(), p);
    CString text(input.Rest().c_str());
    text += text.Left(input.Index(10));
    text.GetAt(input.Index(10));
    text.Compare(text.Left(3));
}

// Random bytes with the same sequence everywhere.
std::string Noise(unsigned nState, std::size_t nBytes)
{
    std::string bytes;
    for (std::size_t i = 0; i < nBytes; ++i) {
        nState = nState * 1664525u + 1013904223u;
        bytes += static_cast<char>(nState >> 24);
    }
    return bytes;
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pByte, std::size_t nBytes)
{
    FuzzInput input(pByte, nBytes);
    CTin aTin[2];
    Projection projection;
    CGrid3DSphere sphere;
    const auto& aOperation = TinOperations();
    for (int i = 0; i < kMostCalls && !input.IsEmpty(); ++i) {
        CTin &tin = aTin[i % 8 == 7 ? 1 : 0], &other = aTin[i % 8 == 7 ? 0 : 1];
        const int nWhat = input.Byte();
        if (nWhat < 170) {
            aOperation[static_cast<std::size_t>(nWhat) % aOperation.size()].fnDo(tin, other, input);
        } else if (nWhat < 220) {
            Damage(tin, input);
        } else if (nWhat < 235) {
            UseProjection(projection, input);
        } else if (nWhat < 250) {
            UseSphere(sphere, input);
        } else if (nWhat < 255) {
            AskEverything(tin, input);
        } else {
            UseBase(input);
        }
        for (CTin& each : aTin) {
            if (!IsSmall(each)) {
                each.InitData();
            }
        }
    }
    return 0;
}

std::vector<std::string> Seeds()
{
    std::vector<std::string> aSeed;
    for (unsigned n = 1; n <= 12; ++n) {
        aSeed.push_back(Noise(n, 40 * n));
    }
    const auto numberOf = [](const char* szName) {
        const auto& aOperation = TinOperations();
        std::size_t n = 0;
        while (std::strcmp(aOperation[n].szName, szName) != 0) {
            ++n;
        }
        return static_cast<char>(n);
    };
    // Twenty places of the grid, a breakline across them, a TIN of it all, and then anything.
    std::string built = {numberOf("feeding in bulk"), 20, 20};
    for (int i = 0; i < 60; ++i) {
        built += static_cast<char>(i * 7 % 160);
    }
    built += {1, 1, numberOf("AddBreakLine"), 2, 0, 0, 0, 15, 15, 15, 1, numberOf("CreateTin"), 1};
    for (unsigned n = 20; n < 28; ++n) {
        aSeed.push_back(built + Noise(n, 100));
    }
    return aSeed;
}
