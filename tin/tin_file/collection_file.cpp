#include <cstring>

#include "tin/tin.h"
#include "tin/tin_file/byte_codec.h"
#include "tin/tin_file/mesh_section.h"

using namespace qsv;

namespace {

enum class Version { One, Two };

constexpr int kHeaderBytes = 32;        // the magic text, the rest zero
constexpr int kMagicBytes = 9;          // with its terminator
constexpr int kNameBytes = 256;         // with its terminator
constexpr int kMarker = 7;              // stands behind the name in version 1; readers pass over it
constexpr int kTextureBytes = 4;        // a float
constexpr int kFewestBytes = 272;       // of a section, with all counts 0: version 2
constexpr int kBelievedTins = 100000;   // about 40 MB of empty objects

const char* MagicOf(Version eVersion)
{
    return eVersion == Version::One ? "TIN_1.00" : "TIN_2.00";
}

// How much of a name goes into its field. A long one is cut between two characters of UTF-8; text in another
// code is cut anywhere.
int StoredLength(const char* szName)
{
    const size_t nLength = std::strlen(szName);
    if (nLength < kNameBytes) {
        return static_cast<int>(nLength);
    }
    for (int n = kNameBytes - 1; n > kNameBytes - 5; --n) {
        if ((static_cast<unsigned char>(szName[n]) & 0xC0) != 0x80) {   // a character starts behind the cut
            return n;
        }
    }
    return kNameBytes - 1;
}

void WriteName(ByteWriter& writer, const CString& strName)
{
    char szField[kNameBytes] = {};
    std::memcpy(szField, strName.GetString(), static_cast<size_t>(StoredLength(strName.GetString())));
    writer.PutBytes(szField, kNameBytes);
}

bool ReadName(ByteReader& reader, CString& strName)
{
    char szField[kNameBytes + 1] = {};   // a field without a terminator is a name as long as the field
    if (!reader.GetBytes(szField, kNameBytes)) {
        return false;
    }
    strName = szField;
    return true;
}

void WriteTextureCoords(ByteWriter& writer, const CTin& tin)
{
    writer.PutInt(tin.m_aVertex.GetSize());
    writer.PutRecords(tin.m_aVertex.GetSize(), 2 * kTextureBytes, [&](int v, unsigned char* pByte) {
        StoreFloat(tin.m_aVertex[v].tu, pByte);
        StoreFloat(tin.m_aVertex[v].tv, pByte + kTextureBytes);
    });
}

bool ReadTextureCoords(ByteReader& reader, CTin& tin)
{
    int nCount = 0;
    if (!reader.GetInt(nCount) || nCount < 0 || nCount > tin.m_aVertex.GetSize()) {
        return false;
    }
    CXYZ* const pVertex = tin.m_aVertex.GetData();
    return reader.GetRecords(2 * std::int64_t{nCount}, kTextureBytes,
                             [&](std::int64_t nFirst, std::int64_t nEnd, const unsigned char* pByte) {
                                 for (std::int64_t i = nFirst; i < nEnd; ++i, pByte += kTextureBytes) {
                                     (i % 2 == 0 ? pVertex[i / 2].tu : pVertex[i / 2].tv) = LoadFloat(pByte);
                                 }
                             });
}

void WriteSection(ByteWriter& writer, const CTin& tin, Version eVersion)
{
    WriteName(writer, tin.m_strName);
    if (eVersion == Version::One) {
        writer.PutInt(kMarker);
    }
    WriteMesh(writer, tin);
    if (eVersion == Version::One) {
        WriteReserved(writer);
    } else {
        WriteTextureCoords(writer, tin);
    }
}

int ReadSection(ByteReader& reader, CTin& tin, Version eVersion)
{
    tin.InitData();
    int nMarker = 0;
    if (!ReadName(reader, tin.m_strName) || (eVersion == Version::One && !reader.GetInt(nMarker)) ||
        !ReadMesh(reader, tin)) {
        return 0;
    }
    if (!(eVersion == Version::One ? ReadReserved(reader) : ReadTextureCoords(reader, tin))) {
        return 0;
    }
    tin.UpdateTinRange();
    tin.UpdateDepth();
    return 1;
}

int WriteCollection(const CString& strPath, CArray<CTin, CTin&>& aTin, Version eVersion)
{
    CFile file;
    if (file.Open(strPath, CFile::modeCreate | CFile::modeWrite) == 0) {
        return 0;
    }
    ByteWriter writer(file);
    char szHeader[kHeaderBytes] = {};
    std::memcpy(szHeader, MagicOf(eVersion), kMagicBytes);
    writer.PutBytes(szHeader, kHeaderBytes);
    writer.PutInt(aTin.GetSize());
    for (int i = 0; i < aTin.GetSize(); ++i) {
        WriteSection(writer, aTin[i], eVersion);
    }
    writer.Finish();
    return 1;
}

int ReadSections(ByteReader& reader, CArray<CTin, CTin&>& aTin, Version eVersion)
{
    int nCount = 0;
    if (!reader.GetInt(nCount)) {
        return 0;
    }
    const Announced eCount = reader.Judge(nCount, kFewestBytes, kBelievedTins);
    if (eCount == Announced::Impossible) {
        return 0;
    }
    aTin.SetSize(eCount == Announced::Reserve ? nCount : 0, -1);
    for (int i = 0; i < nCount; ++i) {
        if (i == aTin.GetSize()) {
            aTin.SetSize(i + 1, -1);
        }
        if (ReadSection(reader, aTin[i], eVersion) == 0) {
            return 0;
        }
    }
    return 1;
}

enum class Outcome { Failed, Read, OtherForm };

Outcome ReadCollection(const CString& strPath, CArray<CTin, CTin&>& aTin, Version eVersion)
{
    aTin.SetSize(0, -1);
    CFile file;
    if (file.Open(strPath, CFile::modeRead) == 0) {
        return Outcome::Failed;
    }
    ByteReader reader(file, file.GetLength());
    char szHeader[kHeaderBytes];
    if (!reader.GetBytes(szHeader, kHeaderBytes)) {
        return Outcome::Failed;
    }
    if (std::memcmp(szHeader, MagicOf(eVersion), kMagicBytes) != 0) {
        return Outcome::OtherForm;
    }
    return ReadSections(reader, aTin, eVersion) != 0 ? Outcome::Read : Outcome::Failed;
}

}   // namespace

int CTin::WriteBIN_VER1_SUB(CFile& file)
{
    ByteWriter writer(file);
    WriteSection(writer, *this, Version::One);
    writer.Finish();
    return 1;
}

int CTin::WriteBIN_VER2_SUB(CFile& file)
{
    ByteWriter writer(file);
    WriteSection(writer, *this, Version::Two);
    writer.Finish();
    return 1;
}

int CTin::ReadBIN_VER1_SUB(CFile& file)
{
    ByteReader reader(file);
    return ReadSection(reader, *this, Version::One);
}

int CTin::ReadBIN_VER2_SUB(CFile& file)
{
    ByteReader reader(file);
    return ReadSection(reader, *this, Version::Two);
}

int CTin::WriteBIN_VER1(CString strPath, CArray<CTin, CTin&>& aTin)
{
    return WriteCollection(strPath, aTin, Version::One);
}

int CTin::WriteBIN_VER2(CString strPath, CArray<CTin, CTin&>& aTin)
{
    return WriteCollection(strPath, aTin, Version::Two);
}

int CTin::ReadBIN_VER1(CString strPath, CArray<CTin, CTin&>& aTin)
{
    const Outcome eOutcome = ReadCollection(strPath, aTin, Version::One);
    if (eOutcome == Outcome::OtherForm) {
        aTin.SetSize(1, -1);
        return aTin[0].ReadBIN_VER0(strPath);
    }
    return eOutcome == Outcome::Read ? 1 : 0;
}

int CTin::ReadBIN_VER2(CString strPath, CArray<CTin, CTin&>& aTin)
{
    const Outcome eOutcome = ReadCollection(strPath, aTin, Version::Two);
    if (eOutcome == Outcome::OtherForm) {
        return ReadBIN_VER1(strPath, aTin);
    }
    return eOutcome == Outcome::Read ? 1 : 0;
}
