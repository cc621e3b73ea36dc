#ifndef QSV_PROJECTION_SCRATCH_H
#define QSV_PROJECTION_SCRATCH_H

#include <cstddef>
#include <memory>
#include <new>

namespace qsv {

/// Working memory for n numbers: on the stack for the small matrices of a view, else on the heap.
template <class T>
class CScratch
{
public:
    explicit CScratch(int n)
    {
        if (n > kOnStack) {
            m_pLarge.reset(new (std::nothrow) T[static_cast<std::size_t>(n)]);
            m_p = m_pLarge.get();
        }
    }
    CScratch(const CScratch&) = delete;
    CScratch& operator=(const CScratch&) = delete;

    /// Uninitialised; null when memory ran out.
    T* Get() { return m_p; }

private:
    static constexpr int kOnStack = 16;

    T m_aSmall[kOnStack];
    std::unique_ptr<T[]> m_pLarge;
    T* m_p = m_aSmall;
};

}   // namespace qsv

#endif
