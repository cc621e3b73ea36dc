#ifndef QSV_TESTS_FUZZ_SCRATCH_FILE_H
#define QSV_TESTS_FUZZ_SCRATCH_FILE_H

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

// A file for what can only be read by its path; in memory where the system has such a folder.
class ScratchFile
{
public:
    explicit ScratchFile(const std::string& extension)
        : m_path(Folder() + "/qsv_fuzz_" + std::to_string(getpid()) + extension)
    {
    }
    ~ScratchFile() { std::remove(m_path.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    const std::string& Path() const { return m_path; }
    void Put(const std::string& bytes) const
    {
        if (std::FILE* const file = std::fopen(m_path.c_str(), "wb")) {
            std::fwrite(bytes.data(), 1, bytes.size(), file);
            std::fclose(file);
        }
    }

private:
    static std::string Folder()
    {
        return access("/dev/shm", W_OK) == 0 ? "/dev/shm" : std::filesystem::temp_directory_path().string();
    }

    const std::string m_path;
};

#endif
