#ifndef QSV_PLATFORM_AFX_FILE_H
#define QSV_PLATFORM_AFX_FILE_H

#ifdef QSV_USE_MFC
#include <afx.h>
#else

#include <cstdio>

#include "platform/afx_array.h"
#include "platform/export.h"

using UINT = unsigned int;
using ULONGLONG = unsigned long long;

/// Sequential file of bytes, with the member names and flag values of the MFC class of this name.
/// The file is closed with the object. Not copyable.
class QSV_API CFile
{
public:
    /// How Open opens a file; added up.
    enum OpenFlags : UINT {
        modeRead = 0x0000,    ///< an existing file, for reading
        modeWrite = 0x0001,   ///< for writing; without modeCreate over the bytes of an existing file
        modeCreate = 0x1000   ///< with modeWrite: a new file; an existing one is emptied
    };

    CFile();
    virtual ~CFile();
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    /// Opens a file, closing the one that was open.
    /// @param szPath  UTF-8
    /// @return 1; 0 when it cannot be opened (nothing is open then)
    virtual int Open(const char* szPath, UINT nOpenFlags);
    /// @return bytes read into pBuffer: fewer than nCount at the end of the file, after an error, or
    ///         when nothing is open for reading
    virtual UINT Read(void* pBuffer, UINT nCount);
    /// Writes nCount bytes. A failure (a full disk) is kept until Close and told by HasFailed.
    virtual void Write(const void* pBuffer, UINT nCount);
    /// Closes the file; without one it does nothing.
    virtual void Close();
    /// Length of the open file in bytes; the largest value when it has none (a pipe) or nothing is open.
    virtual ULONGLONG GetLength() const;
    /// Whether any Write or Close since Open lost data.
    bool HasFailed() const { return m_bFailed; }

private:
    std::FILE* m_pFile = nullptr;
    bool m_bFailed = false;
};

/// A file in memory: what is written can be read back from the start. Open and Close do nothing but
/// return to the start.
class QSV_API CMemFile : public CFile
{
public:
    CMemFile();
    /// A file that holds a copy of the given bytes, positioned at its start.
    CMemFile(const void* pBytes, UINT nCount);
    ~CMemFile() override;

    int Open(const char* szPath, UINT nOpenFlags) override;
    UINT Read(void* pBuffer, UINT nCount) override;
    /// Overwrites from the current position on and extends the file where it ends.
    void Write(const void* pBuffer, UINT nCount) override;
    /// Returns to the start; the bytes stay.
    void Close() override;

    /// Returns to the start.
    void SeekToBegin() { m_nPosition = 0; }
    ULONGLONG GetLength() const override { return static_cast<ULONGLONG>(m_aByte.GetSize()); }
    /// The bytes, GetLength() of them; valid until the next Write.
    const unsigned char* GetBytes() const { return m_aByte.GetData(); }

private:
    CArray<unsigned char> m_aByte;
    int m_nPosition = 0;
};

#endif
#endif
