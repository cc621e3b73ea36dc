#include "platform/afx_file.h"

#ifndef QSV_USE_MFC

#include <algorithm>
#include <cstring>
#include <limits>

#ifdef _WIN32
#include <string>
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
#endif

namespace {

// szMode: as std::fopen takes it
std::FILE* OpenStream(const char* szPath, const char* szMode)
{
#ifdef _WIN32
    const int nLength = MultiByteToWideChar(CP_UTF8, 0, szPath, -1, nullptr, 0);
    std::wstring strWide(static_cast<size_t>(std::max(nLength, 1)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, szPath, -1, &strWide[0], nLength);
    return _wfopen(strWide.c_str(), std::wstring(szMode, szMode + std::strlen(szMode)).c_str());
#else
    return std::fopen(szPath, szMode);
#endif
}

// Moves to the end and back. Below 0: the stream cannot be positioned.
long long LengthOf(std::FILE* pFile)
{
#ifdef _WIN32
    const auto tell = _ftelli64;
    const auto seek = _fseeki64;
#else
    const auto tell = ftello;
    const auto seek = fseeko;
#endif
    const auto nPosition = tell(pFile);
    if (nPosition < 0 || seek(pFile, 0, SEEK_END) != 0) {
        return -1;
    }
    const auto nLength = tell(pFile);
    return seek(pFile, nPosition, SEEK_SET) == 0 ? nLength : -1;
}

}   // namespace

CFile::CFile() = default;

CFile::~CFile()
{
    if (m_pFile != nullptr) {
        std::fclose(m_pFile);
    }
}

int CFile::Open(const char* szPath, UINT nOpenFlags)
{
    Close();
    m_bFailed = false;
    const char* const szMode = (nOpenFlags & modeWrite) == 0    ? "rb"
                               : (nOpenFlags & modeCreate) != 0 ? "wb"
                                                                : "r+b";
    m_pFile = szPath != nullptr ? OpenStream(szPath, szMode) : nullptr;
    return m_pFile != nullptr ? 1 : 0;
}

UINT CFile::Read(void* pBuffer, UINT nCount)
{
    return m_pFile != nullptr ? static_cast<UINT>(std::fread(pBuffer, 1, nCount, m_pFile)) : 0;
}

void CFile::Write(const void* pBuffer, UINT nCount)
{
    if (m_pFile == nullptr || std::fwrite(pBuffer, 1, nCount, m_pFile) != nCount) {
        m_bFailed = true;
    }
}

void CFile::Close()
{
    if (m_pFile != nullptr && std::fclose(m_pFile) != 0) {
        m_bFailed = true;
    }
    m_pFile = nullptr;
}

ULONGLONG CFile::GetLength() const
{
    const long long nLength = m_pFile != nullptr ? LengthOf(m_pFile) : -1;
    return nLength >= 0 ? static_cast<ULONGLONG>(nLength) : std::numeric_limits<ULONGLONG>::max();
}

CMemFile::CMemFile() = default;

CMemFile::CMemFile(const void* pBytes, UINT nCount)
{
    CMemFile::Write(pBytes, nCount);
    SeekToBegin();
}

CMemFile::~CMemFile() = default;

int CMemFile::Open(const char*, UINT)
{
    SeekToBegin();
    return 1;
}

UINT CMemFile::Read(void* pBuffer, UINT nCount)
{
    const UINT nRead = std::min(nCount, static_cast<UINT>(m_aByte.GetSize() - m_nPosition));
    if (nRead > 0) {
        std::memcpy(pBuffer, m_aByte.GetData() + m_nPosition, nRead);
        m_nPosition += static_cast<int>(nRead);
    }
    return nRead;
}

void CMemFile::Write(const void* pBuffer, UINT nCount)
{
    if (nCount == 0) {
        return;
    }
    if (nCount > static_cast<UINT>(std::numeric_limits<int>::max() - m_nPosition)) {
        CFile::Write(pBuffer, nCount);   // more than an array holds: fails, as on a full disk
        return;
    }
    const int nEnd = m_nPosition + static_cast<int>(nCount);
    if (nEnd > m_aByte.GetSize()) {
        m_aByte.SetSize(nEnd);
    }
    std::memcpy(m_aByte.GetData() + m_nPosition, pBuffer, nCount);
    m_nPosition = nEnd;
}

void CMemFile::Close()
{
    SeekToBegin();
}

#endif
