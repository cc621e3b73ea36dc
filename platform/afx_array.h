#ifndef QSV_PLATFORM_AFX_ARRAY_H
#define QSV_PLATFORM_AFX_ARRAY_H

#ifdef QSV_USE_MFC
#include <afxtempl.h>

namespace qsv {

// MFC's arrays cannot be copied; the ones that this library hands from function to function can.
template <class TYPE>
class Array : public CArray<TYPE>
{
public:
    Array() = default;
    Array(const Array& src) : CArray<TYPE>() { this->Copy(src); }
    explicit Array(const CArray<TYPE>& src) { this->Copy(src); }
    Array& operator=(const Array& src)
    {
        this->Copy(src);
        return *this;
    }
};

/// Gives to the content of from, of which anything may be left.
template <class TYPE>
void MoveInto(CArray<TYPE>& to, CArray<TYPE>& from)
{
    to.Copy(from);
}

}   // namespace qsv

#else

#include <cassert>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

/// Growable array of values, with the member names and argument lists of the MFC class of this name.
///
/// Elements lie in one block, in index order; new ones are value-initialised (numbers read 0, objects
/// are default-constructed). Growing, shrinking and removing MOVE the elements that remain and never
/// assign them, so an element whose assignment operator drops something (a CTin drops its tolerances)
/// comes through unchanged. Only Add, SetAt, SetAtGrow and the host's own assignments use operator=
/// or the copy constructor.
///
/// An index outside 0 .. GetSize()-1 is a programming error, caught by assert. When memory runs out,
/// growing throws std::bad_alloc and leaves the array as it was, and so does removing elements that can only be
/// copied.
///
/// @tparam TYPE      element type
/// @tparam ARG_TYPE  type by which an element is passed in; const TYPE& unless copying needs more
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray
{
public:
    CArray() = default;
    /// A copy of every element, through the copy constructor.
    CArray(const CArray& src) { CopyFrom(src); }
    /// Takes over the elements of src without touching them; src is empty then.
    CArray(CArray&& src) noexcept { Swap(src); }
    ~CArray() { Release(); }

    /// Element-by-element copy through the copy constructor.
    CArray& operator=(const CArray& src)
    {
        if (this != &src) {
            CArray copy(src);
            Swap(copy);
        }
        return *this;
    }
    /// Takes over the elements of src without touching them; src receives this array's own.
    CArray& operator=(CArray&& src) noexcept
    {
        Swap(src);
        return *this;
    }

    /// Number of elements.
    int GetSize() const { return m_nSize; }
    int GetCount() const { return m_nSize; }   ///< as GetSize
    /// Whether there is no element.
    bool IsEmpty() const { return m_nSize == 0; }
    /// Highest valid index, -1 when empty.
    int GetUpperBound() const { return m_nSize - 1; }

    /// Changes the number of elements, keeping the first ones.
    /// @param nNewSize  new count; below 0 counts as 0
    /// @param nGrowBy   elements reserved at a time, at least, when the block is full; the block grows by
    ///                  half its size in any case; -1 keeps the setting
    /// Memory is kept when the array shrinks (FreeExtra gives it back). Cost: linear when it grows.
    void SetSize(int nNewSize, int nGrowBy = -1)
    {
        if (nGrowBy >= 0) {
            m_nGrowBy = nGrowBy;
        }
        if (nNewSize < 0) {
            nNewSize = 0;
        }
        if (nNewSize > m_nMaxSize) {
            Reallocate(GrownCapacity(nNewSize));
        }
        if (nNewSize > m_nSize) {
            std::uninitialized_value_construct(m_pData + m_nSize, m_pData + nNewSize);
        } else {
            std::destroy(m_pData + nNewSize, m_pData + m_nSize);
        }
        m_nSize = nNewSize;
    }

    /// Releases the memory beyond the last element.
    void FreeExtra()
    {
        if (m_nSize < m_nMaxSize) {
            Reallocate(m_nSize);
        }
    }
    /// Removes every element and releases the memory.
    void RemoveAll()
    {
        Release();
        m_pData = nullptr;
        m_nSize = m_nMaxSize = 0;
    }

    /// The element at nIndex; valid until the array grows.
    TYPE& operator[](int nIndex)
    {
        assert(nIndex >= 0 && nIndex < m_nSize);
        return m_pData[nIndex];
    }
    /// The same, to read only.
    const TYPE& operator[](int nIndex) const
    {
        assert(nIndex >= 0 && nIndex < m_nSize);
        return m_pData[nIndex];
    }
    TYPE& GetAt(int nIndex) { return (*this)[nIndex]; }               ///< as operator[]
    const TYPE& GetAt(int nIndex) const { return (*this)[nIndex]; }   ///< as operator[]
    TYPE& ElementAt(int nIndex) { return (*this)[nIndex]; }           ///< as operator[]
    /// Assigns to the element at nIndex.
    void SetAt(int nIndex, ARG_TYPE newElement) { (*this)[nIndex] = newElement; }

    /// First element, null when nothing was ever stored; valid until the array grows.
    TYPE* GetData() { return m_pData; }
    const TYPE* GetData() const { return m_pData; }   ///< the same, to read only

    /// Appends a copy and returns its index. newElement may be an element of this array.
    int Add(ARG_TYPE newElement)
    {
        if (m_nSize == m_nMaxSize) {
            TYPE copy(newElement);   // growing moves the elements, and newElement may be one of them
            Reallocate(GrownCapacity(Sum(m_nSize, 1)));
            ::new (static_cast<void*>(m_pData + m_nSize)) TYPE(std::move(copy));
        } else {
            ::new (static_cast<void*>(m_pData + m_nSize)) TYPE(newElement);
        }
        return m_nSize++;
    }
    /// Stores newElement at nIndex, growing the array to nIndex + 1 elements when it is shorter.
    void SetAtGrow(int nIndex, ARG_TYPE newElement)
    {
        assert(nIndex >= 0);
        if (nIndex < m_nSize) {
            m_pData[nIndex] = newElement;
            return;
        }
        TYPE copy(newElement);
        SetSize(Sum(nIndex, 1));
        m_pData[nIndex] = copy;
    }
    /// Removes nCount elements from nIndex on; later elements move down. Cost: linear.
    void RemoveAt(int nIndex, int nCount = 1)
    {
        assert(nIndex >= 0 && nCount >= 0 && nIndex <= m_nSize - nCount);
        if (nCount == 0) {
            return;   // nor may an element be moved to where it stands
        }
        TYPE* const pGap = m_pData + nIndex;
        if constexpr (kMovesSafely) {
            std::destroy(pGap, pGap + nCount);
            Relocate(pGap, pGap + nCount, m_nSize - nIndex - nCount);
            m_nSize -= nCount;
        } else {
            CArray<TYPE, ARG_TYPE> kept;
            kept.Reallocate(m_nSize - nCount);
            kept.AppendCopies(m_pData, nIndex);
            kept.AppendCopies(pGap + nCount, m_nSize - nIndex - nCount);
            kept.m_nGrowBy = m_nGrowBy;
            Swap(kept);
        }
    }
    /// Inserts nCount copies of newElement before nIndex. Cost: linear.
    void InsertAt(int nIndex, ARG_TYPE newElement, int nCount = 1)
    {
        assert(nIndex >= 0 && nIndex <= m_nSize && nCount >= 0);
        const int nNewSize = Sum(m_nSize, nCount);
        CArray<TYPE, ARG_TYPE> merged;
        merged.Reallocate(nNewSize > m_nMaxSize ? GrownCapacity(nNewSize) : m_nMaxSize);
        merged.m_nGrowBy = m_nGrowBy;
        if constexpr (kMovesSafely) {
            std::uninitialized_fill(merged.m_pData + nIndex, merged.m_pData + nIndex + nCount, newElement);
            Relocate(merged.m_pData, m_pData, nIndex);
            Relocate(merged.m_pData + nIndex + nCount, m_pData + nIndex, m_nSize - nIndex);
            merged.m_nSize = m_nSize + nCount;
            m_nSize = 0;
        } else {
            merged.AppendCopies(m_pData, nIndex);
            for (int i = 0; i < nCount; ++i) {
                merged.AppendCopies(&newElement, 1);
            }
            merged.AppendCopies(m_pData + nIndex, m_nSize - nIndex);
        }
        Swap(merged);
    }
    /// Replaces the content by copies of src's elements.
    void Copy(const CArray& src) { *this = src; }
    /// Appends copies of src's elements and returns the index of the first.
    int Append(const CArray& src)
    {
        const int nFirst = m_nSize;
        const int nAdded = src.m_nSize;   // src may be this array
        if (Sum(nFirst, nAdded) > m_nMaxSize) {
            Reallocate(GrownCapacity(Sum(nFirst, nAdded)));
        }
        AppendCopies(src.m_pData, nAdded);
        return nFirst;
    }

private:
    // Elements that could fail on the way to another place are copied instead, and the old ones stay until all
    // copies are there.
    static constexpr bool kMovesSafely =
        std::is_trivially_copyable<TYPE>::value || std::is_nothrow_move_constructible<TYPE>::value;

    static constexpr int kMaxElements =
        static_cast<int>(std::numeric_limits<std::ptrdiff_t>::max() / sizeof(TYPE) <
                                 static_cast<std::size_t>(std::numeric_limits<int>::max())
                             ? std::numeric_limits<std::ptrdiff_t>::max() / sizeof(TYPE)
                             : static_cast<std::size_t>(std::numeric_limits<int>::max()));

    static int Sum(int a, int b)
    {
        if (a > kMaxElements - b) {
            throw std::bad_alloc();
        }
        return a + b;
    }

    // The first block fits exactly: most arrays are sized once. Later ones grow by half or more, so that n
    // calls of Add cost time proportional to n, whatever was asked for.
    int GrownCapacity(int nNeeded) const
    {
        if (nNeeded < 0 || nNeeded > kMaxElements) {
            throw std::bad_alloc();
        }
        const int nStep = m_nGrowBy > m_nMaxSize / 2 ? m_nGrowBy : m_nMaxSize / 2;
        if (m_nMaxSize > kMaxElements - nStep) {
            return nNeeded;
        }
        return nNeeded > m_nMaxSize + nStep ? nNeeded : m_nMaxSize + nStep;
    }

    static void Relocate(TYPE* pTo, TYPE* pFrom, int nCount)
    {
        if (nCount <= 0) {
            return;
        }
        if constexpr (std::is_trivially_copyable<TYPE>::value) {
            std::memmove(static_cast<void*>(pTo), pFrom, static_cast<std::size_t>(nCount) * sizeof(TYPE));
        } else {
            for (int i = 0; i < nCount; ++i) {   // pTo is a fresh block, or lies below pFrom
                ::new (static_cast<void*>(pTo + i)) TYPE(std::move(pFrom[i]));
                pFrom[i].~TYPE();
            }
        }
    }

    void Reallocate(int nCapacity)
    {
        TYPE* const pNew =
            nCapacity > 0 ? std::allocator<TYPE>().allocate(static_cast<std::size_t>(nCapacity)) : nullptr;
        if constexpr (kMovesSafely) {
            Relocate(pNew, m_pData, m_nSize);
        } else {
            try {
                std::uninitialized_copy(m_pData, m_pData + m_nSize, pNew);
            } catch (...) {
                std::allocator<TYPE>().deallocate(pNew, static_cast<std::size_t>(nCapacity));
                throw;
            }
            std::destroy(m_pData, m_pData + m_nSize);
        }
        Deallocate();
        m_pData = pNew;
        m_nMaxSize = nCapacity;
    }

    // The block has room for them.
    void AppendCopies(const TYPE* pFrom, int nCount)
    {
        std::uninitialized_copy(pFrom, pFrom + nCount, m_pData + m_nSize);
        m_nSize += nCount;
    }

    void Deallocate()
    {
        if (m_pData != nullptr) {
            std::allocator<TYPE>().deallocate(m_pData, static_cast<std::size_t>(m_nMaxSize));
        }
    }

    void Release()
    {
        std::destroy(m_pData, m_pData + m_nSize);
        Deallocate();
    }

    void CopyFrom(const CArray& src)
    {
        m_nGrowBy = src.m_nGrowBy;
        if (src.m_nSize > 0) {
            Reallocate(src.m_nSize);
            try {
                std::uninitialized_copy(src.m_pData, src.m_pData + src.m_nSize, m_pData);
            } catch (...) {
                Deallocate();
                throw;
            }
            m_nSize = src.m_nSize;
        }
    }

    void Swap(CArray& other) noexcept
    {
        std::swap(m_pData, other.m_pData);
        std::swap(m_nSize, other.m_nSize);
        std::swap(m_nMaxSize, other.m_nMaxSize);
        std::swap(m_nGrowBy, other.m_nGrowBy);
    }

    TYPE* m_pData = nullptr;
    int m_nSize = 0;
    int m_nMaxSize = 0;
    int m_nGrowBy = 0;
};

namespace qsv {

/// An array that is handed from function to function. MFC's arrays, with which a host may replace these, cannot
/// be copied, so a CArray is filled, copied by Copy and moved by MoveInto.
template <class TYPE>
using Array = CArray<TYPE>;

/// Gives to the content of from, of which anything may be left. Does not throw.
template <class TYPE>
void MoveInto(CArray<TYPE>& to, CArray<TYPE>& from) noexcept
{
    to = std::move(from);
}

}   // namespace qsv

#endif
#endif
