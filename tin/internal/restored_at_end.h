#ifndef QSV_TIN_INTERNAL_RESTORED_AT_END_H
#define QSV_TIN_INTERNAL_RESTORED_AT_END_H

#include <utility>

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

}   // namespace qsv

#endif
