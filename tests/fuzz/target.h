#ifndef QSV_TESTS_FUZZ_TARGET_H
#define QSV_TESTS_FUZZ_TARGET_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What a fuzzing engine calls with one input. A finding is a crash, a sanitizer's report, a run that takes too long
// or asks for much more memory than the input could justify.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pByte, std::size_t nBytes);

// Inputs to start from; each target has its own.
std::vector<std::string> Seeds();

#endif
