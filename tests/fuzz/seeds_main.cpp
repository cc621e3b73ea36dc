// Writes the inputs that a target starts from into a folder: <program> <folder>

#include "tests/fuzz/target.h"

#include <filesystem>
#include <fstream>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    std::filesystem::create_directories(argv[1]);
    int number = 0;
    for (const std::string& seed : Seeds()) {
        std::ofstream(std::string(argv[1]) + "/seed-" + std::to_string(number++), std::ios::binary) << seed;
    }
    return 0;
}
