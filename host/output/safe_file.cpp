#include "host/output/safe_file.h"

#include "host/failure.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

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

// Opens a new file beside the target under a name that nothing has yet.
std::FILE* OpenBeside(const fs::path& target, std::string& opened)
{
    constexpr int kMostLeftovers = 100;
    std::FILE* file = nullptr;
    for (int i = 0; !file && i < kMostLeftovers; ++i) {
        opened = target.string() + ".part" + (i > 0 ? std::to_string(i) : "");
        file = std::fopen(opened.c_str(), "wbx");
        if (!file && errno != EEXIST) break;
    }
    return file;
}

}   // namespace

SafeFile::SafeFile(const std::string& target) : m_target(target), m_replaced(WithoutLinks(target).string())
{
    if (IsWrittenThrough(m_replaced)) {
        m_written = m_replaced;
        m_file = std::fopen(m_written.c_str(), "wb");
    } else {
        m_file = OpenBeside(m_replaced, m_written);
    }
    if (!m_file) Fail(errno);
}

SafeFile::SafeFile(SafeFile&& other) noexcept
    : m_target(std::move(other.m_target)), m_written(std::exchange(other.m_written, {})),
      m_replaced(std::move(other.m_replaced)), m_file(std::exchange(other.m_file, nullptr)),
      m_size(other.m_size)
{
}

SafeFile::~SafeFile()
{
    if (m_file) std::fclose(m_file);
    if (!m_written.empty() && m_written != m_replaced) std::remove(m_written.c_str());
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
    std::fclose(std::exchange(m_file, nullptr));
    errno = 0;
    if (!write(m_written)) Fail(errno != 0 ? errno : EIO);
    m_size = size;
    std::error_code unknown;
    if (std::filesystem::file_size(m_written, unknown) != m_size) Fail(errno != 0 ? errno : ENOSPC);
}

void SafeFile::Finish()
{
    if (!m_file) return;
    const bool flushed = std::fflush(m_file) == 0;
    const int flushError = errno;
    const bool closed = std::fclose(std::exchange(m_file, nullptr)) == 0;
    if (!flushed || !closed) Fail(flushed ? errno : flushError);
    std::error_code unknown;
    if (m_written != m_replaced && fs::file_size(m_written, unknown) != m_size) Fail(EIO);
}

void SafeFile::TakePlace()
{
    if (m_written == m_replaced) return;
    std::error_code error;
    const fs::file_status replaced = fs::status(m_replaced, error);
    if (fs::is_regular_file(replaced)) fs::permissions(m_written, replaced.permissions(), error);
    fs::rename(m_written, m_replaced, error);
    if (error) Fail(error.value());
    m_written.clear();
}

void SafeFile::Fail(int error) const
{
    const char* const remedy = error == ENOSPC ? "; free some space or write elsewhere" : "";
    throw Failure("cannot write " + m_target + ": " + std::strerror(error) + remedy);
}

void CheckTarget(const std::string& target)
{
    const fs::path path(target);
    const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
    std::error_code ignored;
    if (!fs::is_directory(folder, ignored)) {
        throw Failure("cannot write " + target + ": there is no folder " + folder.string() +
                      "; create it first");
    }
    if (fs::is_directory(path, ignored)) {
        throw Failure("cannot write " + target + ": it is a folder; name a file");
    }
    if (fs::is_regular_file(path, ignored)) {
        std::FILE* const writable = std::fopen(target.c_str(), "r+b");
        if (!writable) throw Failure("cannot write " + target + ": " + std::strerror(errno));
        std::fclose(writable);
    }
}

}   // namespace qsvtin
