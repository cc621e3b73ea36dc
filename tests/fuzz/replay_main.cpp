// A target without a fuzzing engine: runs it over its seeds, over the inputs kept in a folder, because each of them
// once found a fault, and over variations of all of these that are the same on every machine.
//     <program> FOLDER [VARIATIONS]

#include "tests/fuzz/target.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

void Run(const std::string& bytes)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

unsigned Random(unsigned nEnd)
{
    static unsigned nState = 1;
    nState = nState * 1664525u + 1013904223u;
    return static_cast<unsigned>((static_cast<std::uint64_t>(nState) * nEnd) >> 32);
}

// A few bytes changed, taken out or doubled.
std::string Varied(std::string bytes)
{
    for (unsigned n = 1 + Random(4); n > 0 && !bytes.empty(); --n) {
        const std::size_t nAt = Random(static_cast<unsigned>(bytes.size()));
        switch (Random(6)) {
        case 0: bytes.erase(nAt, 1 + Random(8)); break;
        case 1: bytes.insert(nAt, bytes.substr(nAt, 1 + Random(16))); break;
        case 2: bytes.resize(nAt); break;
        default: bytes[nAt] = static_cast<char>(Random(256));
        }
    }
    return bytes;
}

}   // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER [VARIATIONS]\n";
        return 2;
    }
    std::vector<std::string> inputs = Seeds();
    if (std::filesystem::is_directory(argv[1])) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
            std::ifstream file(entry.path(), std::ios::binary);
            inputs.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
    }
    const int variations = argc > 2 ? std::atoi(argv[2]) : 0;
    for (const std::string& input : inputs) {
        Run(input);
        for (int i = 0; i < variations; ++i) {
            Run(Varied(input));
        }
    }
    std::cout << inputs.size() << " inputs, " << variations << " variations of each\n";
    return inputs.empty() ? 1 : 0;
}
