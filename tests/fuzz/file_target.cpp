// Reading TIN files of every form, and then everything that can be done with what was read. The first byte
// chooses the reader, the next ones feed the operations, the rest is the file.

#include "tests/fuzz/scratch_file.h"
#include "tests/fuzz/target.h"
#include "tests/fuzz/tin_operations.h"

#include <cstring>

namespace {

constexpr std::size_t kChoices = 64;   // bytes in front of the file

void UseInEveryWay(CTin& tin, const std::uint8_t* pChoices)
{
    FuzzInput input(pChoices, kChoices);
    CTin other;
    AskEverything(tin, input);
    for (const TinOperation& operation : TinOperations()) {
        if (operation.eKind == TinOperation::Changes) {
            CTin copy(tin);
            FuzzInput again(pChoices, kChoices);
            operation.fnDo(copy, other, again);
            if (IsSmall(copy)) {
                AskEverything(copy, again);
            }
        }
    }
}

void Read(int nWay, const std::string& bytes, CArray<CTin, CTin&>& aTin)
{
    static const ScratchFile file(".tin");
    if (nWay < 2) {
        CMemFile section(bytes.data(), static_cast<UINT>(bytes.size()));
        aTin.SetSize(1);
        nWay == 0 ? aTin[0].ReadBIN_VER1_SUB(section) : aTin[0].ReadBIN_VER2_SUB(section);
        return;
    }
    file.Put(bytes);
    const CString path = file.Path().c_str();
    if (nWay == 2) {
        aTin.SetSize(1);
        aTin[0].ReadBIN_VER0(path);
    } else if (nWay == 3) {
        CTin::ReadBIN_VER1(path, aTin);
    } else {
        CTin::ReadBIN_VER2(path, aTin);
    }
}

CTin Square()
{
    CTin tin;
    for (int i = 0; i < 9; ++i) {
        tin.AddPoint(i % 3 * 4.0, i / 3 * 4.0, i % 4);
    }
    tin.CreateTin(0.0);
    return tin;
}

template <class WRITE>
std::string BytesOf(WRITE fnWrite)
{
    CMemFile file;
    fnWrite(file);
    return std::string(reinterpret_cast<const char*>(file.GetBytes()),
                       static_cast<std::size_t>(file.GetLength()));
}

std::string Seed(int nWay, const std::string& file)
{
    std::string seed(kChoices, '\0');
    for (std::size_t i = 1; i < kChoices; ++i) {
        seed[i] = static_cast<char>(37 * i);
    }
    seed[0] = static_cast<char>(nWay);
    return seed + file;
}

}   // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pByte, std::size_t nBytes)
{
    if (nBytes < kChoices) {
        return 0;
    }
    CArray<CTin, CTin&> aTin;
    Read(pByte[0] % 5, FuzzInput(pByte + kChoices, nBytes - kChoices).Rest(), aTin);
    for (int i = 0; i < aTin.GetSize() && i < 4; ++i) {
        if (IsSmall(aTin[i])) {
            UseInEveryWay(aTin[i], pByte);
        }
    }
    return 0;
}

std::vector<std::string> Seeds()
{
    CTin square = Square(), fan = square;
    fan.DelVertex(4);
    fan.UpdateBoundary();
    const std::string one1 = BytesOf([&](CFile& file) { square.WriteBIN_VER1_SUB(file); });
    const std::string one2 = BytesOf([&](CFile& file) { square.WriteBIN_VER2_SUB(file); });
    const std::string two2 = BytesOf([&](CFile& file) { fan.WriteBIN_VER2_SUB(file); });
    const std::string mesh = one1.substr(260);   // a section without name and marker is a single-TIN file
    const auto header = [](const char* szMagic, char nCount) {
        std::string bytes(36, '\0');
        bytes.replace(0, std::strlen(szMagic), szMagic);
        bytes[32] = nCount;
        return bytes;
    };
    std::string huge = header("TIN_2.00", 1);
    huge.replace(32, 4, "\xFF\xFF\xFF\x7F");
    return {Seed(0, one1),
            Seed(1, one2),
            Seed(2, mesh),
            Seed(3, header("TIN_1.00", 1) + one1),
            Seed(4, header("TIN_2.00", 2) + one2 + two2),
            Seed(4, huge),
            Seed(2, std::string("\xFF\xFF\xFF\x7F", 4) + std::string(36, '\1'))};
}
