#include "host/output/safe_file.h"

#include "host/failure.h"
#include "host/system.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace qsvtin {

namespace {

namespace fs = std::filesystem;

// The file that a chain of links leads to, so that replacing it leaves the links alone.
fs::path WithoutLinks(const fs::path& target)
{
    std::error_code missing;
    const fs::path real = fs::canonical(target, missing);
    return missing ? target : real;
}

bool IsWrittenThrough(const fs::path& target)
{
    std::error_code ignored;
    const fs::file_status status = fs::status(target, ignored);
    return fs::exists(status) && !fs::is_regular_file(status);
}

// Opens a new file, or one that was left by a run which was killed, so that such files do not pile up: whoever is
// still writing holds a lock on it. Returns null with EEXIST when something else stands there.
// @param lock  receives a descriptor that holds the lock; -1 where there are no such locks
std::FILE* OpenUnlocked(const std::string& path, int& lock)
{
#ifdef _WIN32
    lock = -1;
    return CreateNewFile(path);
#else
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
    struct stat opened, named;
    if (descriptor < 0) {
        const int error = errno;
        errno = lstat(path.c_str(), &named) == 0 ? EEXIST : error;
        return nullptr;
    }
    // The name may have gone to another file before the lock was there.
    const bool ours = flock(descriptor, LOCK_EX | LOCK_NB) == 0 && fstat(descriptor, &opened) == 0 &&
                      lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
                      opened.st_ino == named.st_ino && S_ISREG(opened.st_mode) &&
                      ftruncate(descriptor, 0) == 0;
    if (ours) {
        lock = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
        return fdopen(descriptor, "wb");
    }
    close(descriptor);
    errno = EEXIST;
    return nullptr;
#endif
}

std::FILE* OpenBeside(const fs::path& target, std::string& opened, int& lock)
{
    constexpr int kMostWriters = 100;   // at once
    std::FILE* file = nullptr;
    for (int i = 0; !file && i < kMostWriters; ++i) {
        opened = target.u8string() + ".qsvtin-part" + (i > 0 ? std::to_string(i) : "");
        file = OpenUnlocked(opened, lock);
        if (!file && errno != EEXIST) break;
    }
    return file;
}

void Unlock(int lock)
{
#ifndef _WIN32
    if (lock >= 0) close(lock);
#else
    (void)lock;
#endif
}

}   // namespace

SafeFile::SafeFile(const std::string& target)
    : m_target(target), m_replaced(WithoutLinks(PathOf(target)).u8string())
{
    if (IsWrittenThrough(PathOf(m_replaced))) {
        m_written = m_replaced;
        m_file = OpenFile(m_written, "wb");
    } else {
        m_file = OpenBeside(PathOf(m_replaced), m_written, m_lock);
    }
    if (!m_file) Fail(errno);
}

SafeFile::SafeFile(SafeFile&& other) noexcept
    : m_target(std::move(other.m_target)), m_written(std::exchange(other.m_written, {})),
      m_replaced(std::move(other.m_replaced)), m_file(std::exchange(other.m_file, nullptr)),
      m_size(other.m_size), m_lock(std::exchange(other.m_lock, -1))
{
}

SafeFile::~SafeFile()
{
    if (m_file) std::fclose(m_file);
    if (!m_written.empty() && m_written != m_replaced) std::remove(m_written.c_str());   // needs no memory
    Unlock(m_lock);
}

void SafeFile::Write(std::string_view bytes)
{
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size()) Fail(errno);
    m_size += bytes.size();
}

void SafeFile::WriteByPath(const std::function<bool(const std::string& path)>& write, std::uintmax_t size)
{
    if (m_written == m_replaced) {
        throw Failure("cannot write " + m_target + ": it is a device or a pipe; name a file");
    }
    errno = 0;
    if (!write(m_written)) Fail(errno != 0 ? errno : EIO);
    m_size = size;
    std::error_code unknown;
    if (fs::file_size(PathOf(m_written), unknown) != m_size) Fail(errno != 0 ? errno : ENOSPC);
}

void SafeFile::Finish()
{
    if (!m_file) return;
    const bool flushed = std::fflush(m_file) == 0;
    const int flushError = errno;
    const bool closed = std::fclose(std::exchange(m_file, nullptr)) == 0;
    if (!flushed || !closed) Fail(flushed ? errno : flushError);
    std::error_code unknown;
    if (m_written != m_replaced && fs::file_size(PathOf(m_written), unknown) != m_size) Fail(EIO);
}

void SafeFile::TakePlace()
{
    if (m_written == m_replaced) return;
    std::error_code error;
    const fs::file_status replaced = fs::status(PathOf(m_replaced), error);
    if (fs::is_regular_file(replaced)) fs::permissions(PathOf(m_written), replaced.permissions(), error);
    fs::rename(PathOf(m_written), PathOf(m_replaced), error);
    if (error) Fail(error.default_error_condition().value());
    m_written.clear();
}

void SafeFile::Fail(int error) const
{
    const char* const remedy = error == ENOSPC ? "; free some space or write elsewhere" : "";
    throw Failure("cannot write " + m_target + ": " + std::strerror(error) + remedy);
}

void CheckTarget(const std::string& target)
{
    const fs::path path = PathOf(target);
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::error_code ignored;
    if (!fs::is_directory(folder, ignored)) {
        throw Failure("cannot write " + target + ": there is no folder " + folder.u8string() +
                      "; create it first");
    }
    if (fs::is_directory(path, ignored)) {
        throw Failure("cannot write " + target + ": it is a folder; name a file");
    }
    if (fs::is_regular_file(path, ignored)) {
        std::FILE* const writable = OpenFile(target, "r+b");
        if (!writable) throw Failure("cannot write " + target + ": " + std::strerror(errno));
        std::fclose(writable);
    }
}

}   // namespace qsvtin
