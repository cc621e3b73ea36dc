#include "host/system.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <unistd.h>
#endif

namespace qsvtin {

#ifdef _WIN32

std::FILE* OpenFile(const std::string& path, const char* mode)
{
    return _wfopen(PathOf(path).c_str(), PathOf(mode).c_str());
}

// Not by fopen: its mode "x" is unknown to older run-time libraries.
std::FILE* CreateNewFile(const std::string& path)
{
    const int descriptor =
        _wopen(PathOf(path).c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY, _S_IREAD | _S_IWRITE);
    return descriptor < 0 ? nullptr : _fdopen(descriptor, "wb");
}

void PrepareConsole()
{
    SetConsoleOutputCP(CP_UTF8);
}

bool IsErrorOnTerminal()
{
    const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) != 0 &&
           SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

#else

std::FILE* OpenFile(const std::string& path, const char* mode)
{
    return std::fopen(path.c_str(), mode);
}

std::FILE* CreateNewFile(const std::string& path)
{
    return std::fopen(path.c_str(), "wbx");
}

void PrepareConsole() {}

bool IsErrorOnTerminal()
{
    return isatty(fileno(stderr)) != 0;
}

#endif

}   // namespace qsvtin
