#ifndef QSVTIN_INPUT_WHOLE_FILE_H
#define QSVTIN_INPUT_WHOLE_FILE_H

#include <string>
#include <string_view>

namespace qsvtin {

/// The bytes of a file, which may also be a pipe.
/// @param goOn  asked after every piece about all that has arrived; false ends the reading
/// @throws Failure when it cannot be read or is a directory
std::string ReadWholeFile(const std::string& path, bool (*goOn)(std::string_view bytes));

/// The bytes of a regular file: no device, which could go on for ever.
/// @throws Failure as above, and when it is not a regular file
std::string ReadRegularFile(const std::string& path);

/// Finds out whether a regular file stands there that can be read. @throws Failure when not
void RequireRegularFile(const std::string& path);

}   // namespace qsvtin

#endif
