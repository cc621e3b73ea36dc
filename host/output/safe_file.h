#ifndef QSVTIN_OUTPUT_SAFE_FILE_H
#define QSVTIN_OUTPUT_SAFE_FILE_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace qsvtin {

/// A file that is written beside its target and takes its place only when it is whole: whatever fails on
/// the way, the target stays as it was. Targets that are no regular files (pipes, devices) are written
/// straight through. A run that is killed leaves at most a file NAME.qsvtin-part, which the next one takes over.
class SafeFile
{
public:
    /// Starts writing. @throws Failure when nothing can be written there
    explicit SafeFile(const std::string& target);
    SafeFile(const SafeFile&) = delete;
    SafeFile(SafeFile&& other) noexcept;
    SafeFile& operator=(const SafeFile&) = delete;
    /// Removes what was written unless it took the target's place.
    ~SafeFile();

    /// @throws Failure when the bytes cannot be written, for instance on a full disk
    void Write(std::string_view bytes);
    /// Lets a function write the whole file itself, by its path, instead of Write.
    /// @param write  false: the path cannot be opened
    /// @param size   bytes that must be there when it is done
    /// @throws Failure when the target is no regular file, for what arrives there cannot be checked
    void WriteByPath(const std::function<bool(const std::string& path)>& write, std::uintmax_t size);
    /// Ends writing and checks that every byte arrived. @throws Failure when not
    void Finish();
    /// Puts the finished file in the place of the target. @throws Failure when that is refused
    void TakePlace();

    const std::string& Target() const { return m_target; }

private:
    [[noreturn]] void Fail(int error) const;

    std::string m_target;          // as given
    std::string m_written;         // what is being written; the target itself when it is no regular file
    std::string m_replaced;        // where it goes: the target, or what the target links to
    std::FILE* m_file = nullptr;   // null once it is closed
    std::uintmax_t m_size = 0;
    int m_lock = -1;   // held until the file has its place, so that nobody takes it for a leftover
};

/// Finds out before any work is done whether a target can be written: its folder exists and it is neither a
/// folder itself nor write-protected. @throws Failure when not
void CheckTarget(const std::string& target);

}   // namespace qsvtin

#endif
