// The three forms of file: their bytes, what comes back, and what damaged ones do.
#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "support/fixtures.h"
#include "support/mesh_oracle.h"
#include "support/scratch_folder.h"

namespace {

using Bytes = std::string;
using Tins = CArray<CTin, CTin&>;

// "03 00 f0 3f" as bytes.
Bytes Hex(const std::string& strHex)
{
    Bytes aByte;
    std::istringstream stream(strHex);
    for (std::string strByte; stream >> strByte;) {
        aByte.push_back(static_cast<char>(std::stoi(strByte, nullptr, 16)));
    }
    return aByte;
}

Bytes Text(Bytes aByte, size_t nField)
{
    aByte.resize(nField);
    return aByte;
}

Bytes Int(int n)
{
    const unsigned u = static_cast<unsigned>(n);
    return {static_cast<char>(u), static_cast<char>(u >> 8), static_cast<char>(u >> 16),
            static_cast<char>(u >> 24)};
}

// The worked example of docs/file_formats.md: one triangle with its outline.
CTin Example()
{
    CTin tin = Assembled({{0, 0, 1}, {1, 0, 2.5}, {0, 1, -1}}, {{0, 1, 2}});
    tin.m_strName = "hill";
    for (int k = 0; k < 3; ++k) {
        tin.m_aBoundary.Add(k);
    }
    tin.m_aTri[0].m_bSelect = 1;
    tin.m_aVertex[1].tu = 1.0f;
    tin.m_aVertex[2].tv = 0.5f;
    return tin;
}

const Bytes kMeshBytes = Hex("03 00 00 00"
                             " 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 f0 3f"
                             " 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 00 00 00 00 00 00 00 00 04 40"
                             " 00 00 00 00 00 00 00 00 00 00 00 00 00 00 f0 3f 00 00 00 00 00 00 f0 bf"
                             " 01 00 00 00"
                             " 00 00 00 00 01 00 00 00 02 00 00 00 ff ff ff ff ff ff ff ff ff ff ff ff"
                             " 03 00 00 00"
                             " 00 00 00 00 01 00 00 00 02 00 00 00");
const Bytes kReservedBytes(24, '\0');
const Bytes kTextureBytes =
    Hex("03 00 00 00 00 00 00 00 00 00 00 00 00 00 80 3f 00 00 00 00 00 00 00 00 00 00 00 3f");

Bytes Header(int nVersion, int nTins)
{
    return Text(nVersion == 1 ? "TIN_1.00" : "TIN_2.00", 32) + Int(nTins);
}

// One file of each form that holds the example.
Bytes ExampleFile(int nVersion)
{
    switch (nVersion) {
    case 0: return kMeshBytes + kReservedBytes;
    case 1: return Header(1, 1) + Text("hill", 256) + Int(7) + kMeshBytes + kReservedBytes;
    default: return Header(2, 1) + Text("hill", 256) + kMeshBytes + kTextureBytes;
    }
}

// One file, written and read in one of the three forms.
class TinFile : public ScratchFolder
{
protected:
    void Put(const Bytes& aByte) const { ScratchFolder::Put("tin", aByte); }
    Bytes Get() const { return ScratchFolder::Get("tin"); }
    CString Name() const { return Path("tin").c_str(); }

    static int Write(int nVersion, const CString& strPath, Tins& aTin)
    {
        return nVersion == 0   ? aTin[0].WriteBIN_VER0(strPath)
               : nVersion == 1 ? CTin::WriteBIN_VER1(strPath, aTin)
                               : CTin::WriteBIN_VER2(strPath, aTin);
    }
    static int Read(int nVersion, const CString& strPath, Tins& aTin)
    {
        if (nVersion == 0) {
            aTin.SetSize(1);
            return aTin[0].ReadBIN_VER0(strPath);
        }
        return nVersion == 1 ? CTin::ReadBIN_VER1(strPath, aTin) : CTin::ReadBIN_VER2(strPath, aTin);
    }
};

// Files hold neither a selection nor breaklines.
void ExpectSameMesh(const CTin& tin, CTin wanted)
{
    for (int t = 0; t < wanted.GetTriSize(); ++t) {
        wanted.m_aTri[t].m_bSelect = 0;
    }
    wanted.m_aBreakLine.RemoveAll();
    ASSERT_EQ(Dump(tin), Dump(wanted));
    for (int v = 0; v < wanted.GetPointSize(); ++v) {
        ASSERT_EQ(std::memcmp(&tin.m_aVertex[v].x, &wanted.m_aVertex[v].x, 3 * sizeof(double)), 0) << v;
    }
}

using FileBytes = TinFile;
using RoundTrip = TinFile;
using DamagedFile = TinFile;
using MissingFile = TinFile;

TEST_F(FileBytes, AreAsTheExampleShows)
{
    Tins aTin;
    CTin example = Example();
    aTin.Add(example);
    for (int nVersion = 0; nVersion <= 2; ++nVersion) {
        SCOPED_TRACE(nVersion);
        EXPECT_EQ(Write(nVersion, Name(), aTin), 1);
        EXPECT_EQ(Get(), ExampleFile(nVersion));
    }
}

// The hexadecimal lines of the page, "offset | bytes | meaning", are the file that the library writes.
TEST_F(FileBytes, OfTheDocumentationAreTrue)
{
    std::ifstream page(QSV_SOURCE_DIR "/docs/file_formats.md");
    ASSERT_TRUE(page.is_open());
    Bytes aByte;
    bool bExample = false;
    for (std::string strLine; std::getline(page, strLine);) {
        bExample = bExample || strLine.find("## Worked example") == 0;
        const size_t nFrom = strLine.find('`'), nTo = strLine.find('`', nFrom + 1);
        if (bExample && strLine.find("| ") == 0 && nTo != std::string::npos) {
            aByte = aByte + Hex(strLine.substr(nFrom + 1, nTo - nFrom - 1));
        }
    }
    EXPECT_EQ(aByte, ExampleFile(0));
}

TEST_F(FileBytes, OfNothingAreCounts)
{
    CTin empty;
    EXPECT_EQ(empty.WriteBIN_VER0(Name()), 1);
    EXPECT_EQ(Get(), Bytes(36, '\0'));
    EXPECT_EQ(empty.ReadBIN_VER0(Name()), 1);
    for (const int nVersion : {1, 2}) {
        Tins aTin;
        EXPECT_EQ(Write(nVersion, Name(), aTin), 1);
        EXPECT_EQ(Get(), Header(nVersion, 0));
        aTin.SetSize(3);
        EXPECT_EQ(Read(nVersion, Name(), aTin), 1);
        EXPECT_EQ(aTin.GetSize(), 0);
    }
}

// A surface of more bytes than are moved at a time, with coordinates that only bits can hold.
CTin Rich(int nPoints, const char* szName)
{
    CTin tin = Built(RandomSites(nPoints, 21));
    tin.m_strName = szName;
    tin.UpdateTextureCoord();
    const double aOdd[] = {-0.0,
                           5e-324,
                           -std::numeric_limits<double>::infinity(),
                           1.0 / 3.0,
                           -std::numeric_limits<double>::quiet_NaN(),
                           std::numeric_limits<double>::max()};
    for (const double d : aOdd) {
        tin.m_aVertex.Add(CXYZ(d, d, d));
    }
    tin.m_aTri[5].m_bSelect = 1;
    tin.m_aBreakLine.SetSize(2);
    return tin;
}

TEST_F(RoundTrip, KeepsEveryBit)
{
    Tins aWritten;
    for (const char* szName : {"first", "", "Höhe"}) {
        CTin tin = Rich(szName[0] == 'f' ? 5000 : 40, szName);
        aWritten.Add(tin);
    }
    for (int nVersion = 0; nVersion <= 2; ++nVersion) {
        SCOPED_TRACE(nVersion);
        ASSERT_EQ(Write(nVersion, Name(), aWritten), 1);
        Tins aRead;
        ASSERT_EQ(Read(nVersion, Name(), aRead), 1);
        ASSERT_EQ(aRead.GetSize(), nVersion == 0 ? 1 : 3);
        for (int i = 0; i < aRead.GetSize(); ++i) {
            SCOPED_TRACE(i);
            CTin &tin = aRead[i], &wanted = aWritten[i];
            ExpectSameMesh(tin, wanted);
            EXPECT_EQ(tin.m_strName, nVersion == 0 ? CString("0") : wanted.m_strName);
            for (int v = 0; v < tin.GetPointSize(); ++v) {
                EXPECT_EQ(tin.m_aVertex[v].tu, nVersion == 2 ? wanted.m_aVertex[v].tu : 0.0f);
                EXPECT_EQ(tin.m_aVertex[v].tv, nVersion == 2 ? wanted.m_aVertex[v].tv : 0.0f);
            }
            wanted.UpdateTinRange();
            EXPECT_EQ(tin.m_MinXYZ.z, wanted.m_MinXYZ.z);
            EXPECT_EQ(tin.m_MaxXYZ.x, wanted.m_MaxXYZ.x);
            wanted.UpdateDepth();
            ASSERT_EQ(tin.m_aDepthOrder.GetSize(), tin.GetTriSize());
            EXPECT_EQ(std::memcmp(tin.m_aDepthOrder.GetData(), wanted.m_aDepthOrder.GetData(),
                                  sizeof(int) * static_cast<size_t>(tin.GetTriSize())),
                      0);
        }
    }
}

TEST_F(RoundTrip, ReadersTakeTheOlderForms)
{
    const CTin wanted = Example();
    for (int nReader = 1; nReader <= 2; ++nReader) {
        for (int nVersion = 0; nVersion <= nReader; ++nVersion) {
            SCOPED_TRACE(testing::Message() << "reader " << nReader << ", form " << nVersion);
            Put(ExampleFile(nVersion));
            Tins aTin;
            aTin.SetSize(4);
            ASSERT_EQ(Read(nReader, Name(), aTin), 1);
            ASSERT_EQ(aTin.GetSize(), 1);
            ExpectSameMesh(aTin[0], wanted);
            EXPECT_EQ(aTin[0].m_strName, nVersion == 0 ? "0" : "hill");
            EXPECT_EQ(aTin[0].m_aVertex[1].tu, nVersion == 2 ? 1.0f : 0.0f);
        }
    }
}

// The magic ends with a zero byte; what only starts like it goes down the chain, and as a single TIN these
// letters announce 1.6 thousand million vertices.
TEST_F(RoundTrip, AMagicMustMatchToItsEnd)
{
    Bytes aLonger = ExampleFile(2);
    aLonger[8] = 'b';
    const struct {
        int nReader;
        Bytes aByte;
    } aCase[] = {{2, aLonger}, {1, ExampleFile(2)}, {2, Text("tin_2.00", 64)}};
    for (const auto& c : aCase) {
        Put(c.aByte);
        Tins aTin;
        EXPECT_EQ(Read(c.nReader, Name(), aTin), 0);
        ASSERT_EQ(aTin.GetSize(), 1) << "the element the last reader was given";
        EXPECT_EQ(aTin[0].GetPointSize(), 0);
    }
}

TEST(Sections, FollowEachOtherInAnyFile)
{
    CTin aTin[2] = {Rich(3000, "one"), Example()};
    for (const int nVersion : {1, 2}) {
        CMemFile file;
        const char aBefore[] = "before", aBehind[] = "behind";
        file.Write(aBefore, 6);
        for (CTin& tin : aTin) {
            EXPECT_EQ(nVersion == 1 ? tin.WriteBIN_VER1_SUB(file) : tin.WriteBIN_VER2_SUB(file), 1);
        }
        file.Write(aBehind, 6);
        file.SeekToBegin();
        char aRead[7] = {};
        EXPECT_EQ(file.Read(aRead, 6), 6u);
        for (const CTin& wanted : aTin) {
            CTin tin;
            EXPECT_EQ(nVersion == 1 ? tin.ReadBIN_VER1_SUB(file) : tin.ReadBIN_VER2_SUB(file), 1);
            ExpectSameMesh(tin, wanted);
            EXPECT_EQ(tin.m_strName, wanted.m_strName);
        }
        EXPECT_EQ(file.Read(aRead, 7), 6u) << "nothing behind the sections was taken";
        EXPECT_STREQ(aRead, aBehind);
    }
}

std::string NameThroughFile(const std::string& strName)
{
    CTin tin;
    tin.m_strName = strName.c_str();
    CMemFile file;
    tin.WriteBIN_VER2_SUB(file);
    EXPECT_EQ(file.GetBytes()[255], 0);
    file.SeekToBegin();
    EXPECT_EQ(tin.ReadBIN_VER2_SUB(file), 1);
    return tin.m_strName.GetString();
}

TEST(Names, AreCutBetweenCharacters)
{
    const std::string strA(250, 'a');
    EXPECT_EQ(NameThroughFile(strA + "12345"), strA + "12345");
    EXPECT_EQ(NameThroughFile(strA + "1234567"), strA + "12345");
    EXPECT_EQ(NameThroughFile(strA + "123\xC3\xA4"), strA + "123\xC3\xA4");
    EXPECT_EQ(NameThroughFile(strA + "1234\xC3\xA4"), strA + "1234");
    EXPECT_EQ(NameThroughFile(strA + "12\xF0\x9F\x98\x80" + "b"), strA + "12");
    EXPECT_EQ(NameThroughFile(std::string(300, '\xA4')), std::string(255, '\xA4')) << "not UTF-8";

    const Bytes aSection = Bytes(256, 'n') + Bytes(16, '\0');   // no terminator
    CMemFile file(aSection.data(), static_cast<UINT>(aSection.size()));
    CTin tin;
    EXPECT_EQ(tin.ReadBIN_VER2_SUB(file), 1);
    EXPECT_EQ(tin.m_strName, std::string(256, 'n').c_str());
}

// --- damaged files

// How much of the example stands in tin when only nArrived bytes of its mesh came.
void ExpectMeshUpTo(const CTin& tin, int nArrived)
{
    const CTin whole = Example();
    ASSERT_EQ(tin.m_aVertex.GetSize(), nArrived >= 4 ? 3 : 0);
    for (int v = 0; v < tin.m_aVertex.GetSize(); ++v) {
        const CXYZ wanted = nArrived >= 4 + 24 * (v + 1) ? whole.m_aVertex[v] : CXYZ();
        EXPECT_EQ(tin.m_aVertex[v].x, wanted.x);
        EXPECT_EQ(tin.m_aVertex[v].y, wanted.y);
        EXPECT_EQ(tin.m_aVertex[v].z, wanted.z);
    }
    ASSERT_EQ(tin.m_aTri.GetSize(), nArrived >= 80 ? 1 : 0);
    if (tin.m_aTri.GetSize() == 1) {
        EXPECT_EQ(tin.m_aTri[0].m_nVertex[2], nArrived >= 104 ? 2 : -1);
    }
    ASSERT_EQ(tin.m_aBoundary.GetSize(), nArrived >= 108 ? 3 : 0);
    for (int i = 0; i < tin.m_aBoundary.GetSize(); ++i) {
        EXPECT_EQ(tin.m_aBoundary[i], nArrived >= 108 + 4 * (i + 1) ? i : 0);
    }
    EXPECT_EQ(tin.m_aDepthOrder.GetSize(), 0);
    EXPECT_EQ(tin.m_MaxXYZ.x, 0.0);
    EXPECT_EQ(tin.m_dEPS, 1e-6);
}

TEST_F(DamagedFile, CutShortAnywhereKeepsWhatArrived)
{
    const int aMeshAt[] = {0, 36 + 256 + 4, 36 + 256};
    CTin before = Rich(10, "before");
    for (int nVersion = 0; nVersion <= 2; ++nVersion) {
        const Bytes aWhole = ExampleFile(nVersion);
        for (int n = 0; n < static_cast<int>(aWhole.size()); ++n) {
            SCOPED_TRACE(testing::Message() << "form " << nVersion << " cut to " << n << " bytes");
            Put(aWhole.substr(0, static_cast<size_t>(n)));
            Tins aTin;
            aTin.Add(before);
            EXPECT_EQ(Read(nVersion, Name(), aTin), 0);
            ASSERT_EQ(aTin.GetSize(), nVersion == 0 || n >= 36 ? 1 : 0);
            if (aTin.GetSize() == 1) {
                ExpectMeshUpTo(aTin[0], n - aMeshAt[nVersion]);
                EXPECT_EQ(aTin[0].m_strName, nVersion == 0 || n < 36 + 256 ? "0" : "hill");
            }
        }
    }
}

TEST_F(DamagedFile, KeepsTexturesAndTinsThatArrived)
{
    // Two TINs; the second ends within the texture coordinates, after tu of vertex 1.
    Bytes aByte = Header(2, 3);
    for (int i = 0; i < 2; ++i) {
        aByte = aByte + Text("hill", 256) + kMeshBytes + kTextureBytes;
    }
    aByte.resize(aByte.size() - 11);
    Put(aByte);
    Tins aTin;
    EXPECT_EQ(CTin::ReadBIN_VER2(Name(), aTin), 0);
    ASSERT_EQ(aTin.GetSize(), 3);
    ExpectSameMesh(aTin[0], Example());
    EXPECT_EQ(aTin[0].m_aDepthOrder.GetSize(), 1);
    EXPECT_EQ(aTin[1].m_aVertex[1].tu, 1.0f);
    EXPECT_EQ(aTin[1].m_aVertex[2].tv, 0.0f);
    EXPECT_EQ(aTin[1].m_aDepthOrder.GetSize(), 0);
    EXPECT_EQ(aTin[2].m_strName, "0");
    EXPECT_EQ(aTin[2].GetPointSize(), 0);
}

// Counts replaced in a whole file. Unless such a count were refused before room is made for it, these would ask
// for up to 100 GB.
TEST_F(DamagedFile, CountsThatCannotBeAreRefused)
{
    const int aMeshAt[] = {0, 36 + 256 + 4, 36 + 256};
    for (int nVersion = 0; nVersion <= 2; ++nVersion) {
        std::vector<int> aCountAt = {aMeshAt[nVersion], aMeshAt[nVersion] + 76, aMeshAt[nVersion] + 104};
        if (nVersion > 0) {
            aCountAt.push_back(32);
        }
        if (nVersion == 2) {
            aCountAt.push_back(aMeshAt[2] + 120);
        }
        for (const int nAt : aCountAt) {
            for (const int nCount : {-1, INT_MIN, INT_MAX, 1000001}) {
                SCOPED_TRACE(testing::Message()
                             << "form " << nVersion << ", " << nCount << " at byte " << nAt);
                Bytes aByte = ExampleFile(nVersion);
                aByte.replace(static_cast<size_t>(nAt), 4, Int(nCount));
                Put(aByte);
                Tins aTin;
                EXPECT_EQ(Read(nVersion, Name(), aTin), 0);
                ASSERT_EQ(aTin.GetSize(), nAt == 32 && nVersion > 0 ? 0 : 1);
                if (aTin.GetSize() == 1) {
                    EXPECT_EQ(aTin[0].GetPointSize(), nAt == aMeshAt[nVersion] ? 0 : 3);
                    EXPECT_EQ(aTin[0].GetTriSize(), nAt <= aMeshAt[nVersion] + 76 ? 0 : 1);
                }
            }
        }
    }
}

TEST_F(DamagedFile, TextureCoordinatesForMoreVerticesThanThereAreAreRefused)
{
    for (const int nCount : {0, 2, 3, 4, -1}) {
        SCOPED_TRACE(nCount);
        const Bytes aByte = Text("", 256) + kMeshBytes + Int(nCount) + Bytes(8 * 4, 0x3f);
        CMemFile file(aByte.data(), static_cast<UINT>(aByte.size()));
        CTin tin;
        EXPECT_EQ(tin.ReadBIN_VER2_SUB(file), nCount >= 0 && nCount <= 3 ? 1 : 0);
        EXPECT_EQ(tin.m_aVertex[0].tu > 0.0f, nCount == 2 || nCount == 3);
        EXPECT_EQ(tin.m_aVertex[2].tu > 0.0f, nCount == 3);
    }
}

// A host's own file that can do no more than hand out bytes.
class OnlyReads : public CFile
{
public:
    explicit OnlyReads(const Bytes& aByte) : m_memory(aByte.data(), static_cast<UINT>(aByte.size())) {}
    UINT Read(void* pBuffer, UINT nCount) override { return m_memory.Read(pBuffer, nCount); }
    ULONGLONG GetLength() const override
    {
        ADD_FAILURE() << "asked for its length";
        return 0;
    }

private:
    CMemFile m_memory;
};

TEST_F(DamagedFile, SectionOfUnknownLengthGrowsWithWhatArrives)
{
    const int nMillion = 1000001;
    for (const int nCount : {INT_MAX, 2 * nMillion}) {
        const Bytes aHead = Text("", 256) + Int(nCount);
        OnlyReads file(aHead + Bytes(24 * 5 + 7, 0x3f));
        CTin tin;
        EXPECT_EQ(tin.ReadBIN_VER2_SUB(file), 0);
        EXPECT_EQ(tin.GetPointSize(), 5);
    }
    OnlyReads whole(Text("", 256) + Int(nMillion) + Bytes(24u * nMillion, 0x3f) + Bytes(12, '\0'));
    CTin tin;
    EXPECT_EQ(tin.ReadBIN_VER2_SUB(whole), 1);
    EXPECT_EQ(tin.GetPointSize(), nMillion);
    EXPECT_GT(tin.m_aVertex[nMillion - 1].z, 0.0);
}

TEST_F(MissingFile, EmptiesWhatShouldHoldIt)
{
    const CString strNowhere("/nowhere/at all/tin.bin");
    Tins aTin;
    CTin rich = Rich(10, "rich");
    rich.SetEPS(0.5);
    aTin.Add(rich);
    EXPECT_EQ(rich.ReadBIN_VER0(strNowhere), 0);
    EXPECT_EQ(rich.GetPointSize(), 0);
    EXPECT_EQ(rich.m_strName, "0");
    EXPECT_EQ(rich.m_dEPS, 1e-6);
    EXPECT_EQ(rich.ReadBIN_VER0(testing::TempDir().c_str()), 0) << "a folder";
    for (const int nVersion : {1, 2}) {
        aTin.SetSize(2);
        EXPECT_EQ(Read(nVersion, strNowhere, aTin), 0);
        EXPECT_EQ(aTin.GetSize(), 0);
        EXPECT_EQ(Write(nVersion, strNowhere, aTin), 0);
    }
    EXPECT_EQ(rich.WriteBIN_VER0(strNowhere), 0);
}

}   // namespace
