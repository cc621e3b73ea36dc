#ifndef QSV_TESTS_MFC_AFX_H
#define QSV_TESTS_MFC_AFX_H

// A stand-in for the part of MFC that the library may use, with its names, argument lists and habits: arrays and
// files cannot be copied, text converts to a pointer, opening tells success by a BOOL. The library is compiled
// against it with QSV_USE_MFC, so that it asks a host's own MFC for nothing that is not there.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

using BOOL = int;
using UINT = unsigned int;
using ULONGLONG = unsigned long long;
using LPCTSTR = const char*;

class CObject
{
public:
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject() = default;

protected:
    CObject() = default;
};

// Points to its text and to nothing in itself, so that an array may move its bytes.
class CString
{
public:
    CString() : CString("") {}
    CString(LPCTSTR psz) { *this = psz; }
    CString(LPCTSTR psch, int nLength) : m_aChar(psch, psch + nLength) { m_aChar.push_back('\0'); }
    CString& operator=(LPCTSTR psz)
    {
        const std::string str = psz ? psz : "";
        m_aChar.assign(str.c_str(), str.c_str() + str.size() + 1);
        return *this;
    }
    int GetLength() const { return static_cast<int>(m_aChar.size()) - 1; }
    BOOL IsEmpty() const { return GetLength() == 0; }
    void Empty() { *this = ""; }
    LPCTSTR GetString() const { return m_aChar.data(); }
    operator LPCTSTR() const { return GetString(); }
    CString& operator+=(const CString& str) { return *this = (GetString() + std::string(str)).c_str(); }

private:
    std::vector<char> m_aChar;   // with a terminating zero
};

class CFileException;

class CFile : public CObject
{
public:
    enum OpenFlags { modeRead = 0x0000, modeWrite = 0x0001, modeCreate = 0x1000 };

    CFile() = default;
    ~CFile() override { CFile::Close(); }
    virtual BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* = nullptr)
    {
        m_pFile = std::fopen(lpszFileName, (nOpenFlags & modeWrite) ? "wb" : "rb");
        return m_pFile != nullptr;
    }
    virtual UINT Read(void* lpBuf, UINT nCount)
    {
        return static_cast<UINT>(std::fread(lpBuf, 1, nCount, m_pFile));
    }
    virtual void Write(const void* lpBuf, UINT nCount) { std::fwrite(lpBuf, 1, nCount, m_pFile); }
    virtual void Close()
    {
        if (m_pFile) std::fclose(m_pFile);
        m_pFile = nullptr;
    }
    virtual ULONGLONG GetLength() const
    {
        const long nAt = std::ftell(m_pFile);
        std::fseek(m_pFile, 0, SEEK_END);
        const long nLength = std::ftell(m_pFile);
        std::fseek(m_pFile, nAt, SEEK_SET);
        return static_cast<ULONGLONG>(nLength);
    }

private:
    std::FILE* m_pFile = nullptr;
};

#endif
