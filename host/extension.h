#ifndef QSVTIN_EXTENSION_H
#define QSVTIN_EXTENSION_H

#include <string>

namespace qsvtin {

/// The extension of a path with its dot, in lower case; empty when it has none.
std::string ExtensionOf(const std::string& path);

/// The name of a file without folder and extension.
std::string StemOf(const std::string& path);

}   // namespace qsvtin

#endif
