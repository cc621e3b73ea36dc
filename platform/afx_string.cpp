#include "platform/afx_string.h"

#ifndef QSV_USE_MFC

#include <algorithm>
#include <cstring>

CString::CString() = default;
CString::CString(const char* psz) : m_str(psz != nullptr ? psz : "") {}
CString::CString(const char* psz, int nLength)
    : m_str(psz != nullptr && nLength > 0 ? std::string(psz, static_cast<size_t>(nLength)) : std::string())
{
}
CString::CString(const CString& src) = default;
CString::CString(CString&& src) noexcept = default;
CString::~CString() = default;
CString& CString::operator=(const CString& src) = default;
CString& CString::operator=(CString&& src) noexcept = default;

CString& CString::operator=(const char* psz)
{
    return *this = CString(psz);   // by way of a copy: psz may point into this text
}

int CString::GetLength() const
{
    return static_cast<int>(m_str.size());
}

bool CString::IsEmpty() const
{
    return m_str.empty();
}

void CString::Empty()
{
    m_str.clear();
}

const char* CString::GetString() const
{
    return m_str.c_str();
}

char CString::GetAt(int nIndex) const
{
    return nIndex >= 0 && nIndex < GetLength() ? m_str[static_cast<size_t>(nIndex)] : '\0';
}

int CString::Compare(const char* psz) const
{
    return std::strcmp(m_str.c_str(), psz != nullptr ? psz : "");
}

CString CString::Left(int nCount) const
{
    return CString(m_str.data(), std::min(nCount, GetLength()));
}

CString& CString::operator+=(const CString& other)
{
    m_str += other.m_str;
    return *this;
}

#endif
