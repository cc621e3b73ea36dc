#ifndef QSV_TESTS_FUZZ_FUZZ_INPUT_H
#define QSV_TESTS_FUZZ_FUZZ_INPUT_H

#include <cstddef>
#include <cstdint>
#include <string>

// The bytes of one run, taken one after the other as choices and numbers. Behind their end everything
// reads 0, so a run is the same for the same bytes on every machine.
class FuzzInput
{
public:
    FuzzInput(const std::uint8_t* pByte, std::size_t nBytes) : m_pByte(pByte), m_nLeft(nBytes) {}

    bool IsEmpty() const { return m_nLeft == 0; }
    int Byte();
    // 0 .. nEnd-1, for nEnd up to 256.
    int Below(int nEnd) { return Byte() % nEnd; }
    // Mostly an index of a list of nCount, at times one just beside it or far off.
    int Index(int nCount);
    // Mostly a place of a grid of 16 x 16, so that places coincide, lie in line and on circles; at times
    // between or beyond them, at times no number at all.
    double Number();
    // All that is left.
    std::string Rest();

private:
    const std::uint8_t* m_pByte;
    std::size_t m_nLeft;
};

#endif
