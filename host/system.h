#ifndef QSVTIN_SYSTEM_H
#define QSVTIN_SYSTEM_H

#include <cstdio>
#include <filesystem>
#include <string>

// What differs from system to system: nothing else in the program asks on which one it runs.

namespace qsvtin {

/// The path of that name, UTF-8 as everywhere in the program: std::filesystem::path would ask for the code page of
/// the user. Its u8string() is the way back.
inline std::filesystem::path PathOf(const std::string& name)
{
    return std::filesystem::u8path(name);
}

/// Opens a file as std::fopen does.
std::FILE* OpenFile(const std::string& path, const char* mode);

/// Creates a file, for writing bytes. @return null with errno set: EEXIST when something has that name
std::FILE* CreateNewFile(const std::string& path);

/// Lets the console show UTF-8 text, where it does not by itself.
void PrepareConsole();

/// Whether standard error is a terminal on which a line can be erased.
bool IsErrorOnTerminal();

}   // namespace qsvtin

#endif
