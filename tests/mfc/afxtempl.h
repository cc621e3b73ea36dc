#ifndef QSV_TESTS_MFC_AFXTEMPL_H
#define QSV_TESTS_MFC_AFXTEMPL_H

#include "afx.h"

#include <memory>
#include <new>

// Growing moves the bytes of the elements, as MFC does.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject
{
public:
    CArray() = default;
    ~CArray() override { RemoveAll(); }

    int GetSize() const { return m_nSize; }
    int GetCount() const { return m_nSize; }
    int GetUpperBound() const { return m_nSize - 1; }
    BOOL IsEmpty() const { return m_nSize == 0; }
    // Not inlined: GCC 12 would take an array without memory for one that is written to.
    [[gnu::noinline]] void SetSize(int nNewSize, int = -1)
    {
        for (int i = nNewSize; i < m_nSize; ++i) {
            m_pData[i].~TYPE();
        }
        if (nNewSize > m_nMaxSize) Reserve(nNewSize + m_nSize / 2);
        if (nNewSize > m_nSize) std::uninitialized_value_construct(m_pData + m_nSize, m_pData + nNewSize);
        m_nSize = nNewSize;
    }
    void FreeExtra() {}
    void RemoveAll()
    {
        SetSize(0);
        ::operator delete(m_pData);
        m_pData = nullptr;
        m_nMaxSize = 0;
    }
    const TYPE& GetAt(int nIndex) const { return m_pData[nIndex]; }
    TYPE& GetAt(int nIndex) { return m_pData[nIndex]; }
    TYPE& ElementAt(int nIndex) { return m_pData[nIndex]; }
    void SetAt(int nIndex, ARG_TYPE newElement) { m_pData[nIndex] = newElement; }
    const TYPE& operator[](int nIndex) const { return m_pData[nIndex]; }
    TYPE& operator[](int nIndex) { return m_pData[nIndex]; }
    const TYPE* GetData() const { return m_pData; }
    TYPE* GetData() { return m_pData; }
    int Add(ARG_TYPE newElement)
    {
        SetAtGrow(m_nSize, newElement);
        return m_nSize - 1;
    }
    void SetAtGrow(int nIndex, ARG_TYPE newElement)
    {
        if (nIndex >= m_nSize) SetSize(nIndex + 1);
        m_pData[nIndex] = newElement;
    }
    void RemoveAt(int nIndex, int nCount = 1)
    {
        for (int i = nIndex; i < nIndex + nCount; ++i) {
            m_pData[i].~TYPE();
        }
        const int nMoved = m_nSize - (nIndex + nCount);
        if (nMoved > 0) {
            std::memmove(static_cast<void*>(m_pData + nIndex), m_pData + nIndex + nCount,
                         sizeof(TYPE) * static_cast<std::size_t>(nMoved));
        }
        m_nSize -= nCount;
    }
    void Copy(const CArray& src)
    {
        if (this == &src) return;
        SetSize(src.m_nSize);
        for (int i = 0; i < m_nSize; ++i) {
            m_pData[i] = src.m_pData[i];
        }
    }
    int Append(const CArray& src)
    {
        const int nOld = m_nSize, nMore = src.m_nSize;
        SetSize(nOld + nMore);
        for (int i = 0; i < nMore; ++i) {
            m_pData[nOld + i] = src.m_pData[i];
        }
        return nOld;
    }

private:
    void Reserve(int nElements)
    {
        const auto nBytes = sizeof(TYPE) * static_cast<std::size_t>(nElements);
        auto* const pNew = static_cast<TYPE*>(::operator new(nBytes));
        if (m_pData) {
            std::memcpy(static_cast<void*>(pNew), static_cast<const void*>(m_pData),
                        sizeof(TYPE) * static_cast<std::size_t>(m_nSize));
        }
        ::operator delete(m_pData);
        m_pData = pNew;
        m_nMaxSize = nElements;
    }

    TYPE* m_pData = nullptr;
    int m_nSize = 0;
    int m_nMaxSize = 0;
};

#endif
