#ifndef QSV_PLATFORM_AFX_STRING_H
#define QSV_PLATFORM_AFX_STRING_H

#ifdef QSV_USE_MFC
#include <afx.h>
#else

#include <string>

#include "platform/export.h"

/// Text of 8-bit characters (UTF-8 where it matters), with the member names of the MFC class of this
/// name. A value: copies are independent.
class QSV_API CString
{
public:
    /// The empty text.
    CString();
    /// A null pointer gives the empty text.
    CString(const char* psz);
    /// The first nLength bytes of psz, zero bytes included.
    CString(const char* psz, int nLength);
    CString(const CString& src);       ///< a copy
    CString(CString&& src) noexcept;   ///< takes over the text of src, which is left without a promise
    ~CString();
    CString& operator=(const CString& src);       ///< a copy
    CString& operator=(CString&& src) noexcept;   ///< as the constructor of this argument
    CString& operator=(const char* psz);          ///< as the constructor of this argument

    /// Length in bytes.
    int GetLength() const;
    bool IsEmpty() const;   ///< whether the length is 0
    void Empty();           ///< makes it the empty text
    /// The bytes with a terminating zero; valid until the text changes.
    const char* GetString() const;
    /// As GetString.
    operator const char*() const { return GetString(); }
    /// Byte at position nIndex; 0 outside 0 .. GetLength()-1.
    char GetAt(int nIndex) const;

    /// Below, equal to or above 0 as this text sorts before, with or after psz, byte by byte up to the first
    /// zero byte. The operators compare the same way.
    int Compare(const char* psz) const;
    /// The first nCount bytes; all of them when the text is shorter.
    CString Left(int nCount) const;
    /// Appends another text, which may be this one.
    CString& operator+=(const CString& other);

    // An overload for const char* beside each: CString converts to it, and the built-in comparison of
    // pointers must not be the one that is picked.
    /// Whether both texts are equal, as Compare compares.
    friend bool operator==(const CString& a, const CString& b) { return a.Compare(b) == 0; }
    friend bool operator==(const CString& a, const char* b) { return a.Compare(b) == 0; }   ///< the same
    friend bool operator==(const char* a, const CString& b) { return b.Compare(a) == 0; }   ///< the same
    /// Whether they differ.
    friend bool operator!=(const CString& a, const CString& b) { return !(a == b); }
    friend bool operator!=(const CString& a, const char* b) { return !(a == b); }   ///< the same
    friend bool operator!=(const char* a, const CString& b) { return !(a == b); }   ///< the same
    /// Both texts, one behind the other.
    friend CString operator+(CString a, const CString& b) { return a += b; }

private:
    std::string m_str;
};

#endif
#endif
