#ifndef QSV_TIN_INTERNAL_RESTORED_AT_END_H
#define QSV_TIN_INTERNAL_RESTORED_AT_END_H

#include <utility>

#include "platform/afx_array.h"

namespace qsv {

// Puts a value back as it was when the scope ends, also when it ends because memory ran out.
template <class T>
class RestoredAtEnd
{
public:
    explicit RestoredAtEnd(T& value) : m_value(value), m_old(value) {}
    ~RestoredAtEnd() { m_value = std::move(m_old); }
    RestoredAtEnd(const RestoredAtEnd&) = delete;
    RestoredAtEnd& operator=(const RestoredAtEnd&) = delete;

private:
    T& m_value;
    T m_old;
};

template <class T>
class RestoredAtEnd<CArray<T>>
{
public:
    explicit RestoredAtEnd(CArray<T>& aValue) : m_aValue(aValue), m_aOld(aValue) {}
    ~RestoredAtEnd() { MoveInto(m_aValue, m_aOld); }
    RestoredAtEnd(const RestoredAtEnd&) = delete;
    RestoredAtEnd& operator=(const RestoredAtEnd&) = delete;

private:
    CArray<T>& m_aValue;
    Array<T> m_aOld;
};

}   // namespace qsv

#endif
