#ifndef QSV_TESTS_SUPPORT_SCRATCH_FOLDER_H
#define QSV_TESTS_SUPPORT_SCRATCH_FOLDER_H

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

/// A test with an empty folder of its own, which goes with it.
class ScratchFolder : public ::testing::Test
{
protected:
    ScratchFolder()
        : m_folder(std::filesystem::temp_directory_path() /
                   ("qsv_" + std::to_string(getpid()) + "_" +
                    ::testing::UnitTest::GetInstance()->current_test_info()->name()))
    {
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directory(m_folder);
    }
    ~ScratchFolder() override { std::filesystem::remove_all(m_folder); }

    std::string Path(const std::string& name) const { return (m_folder / name).string(); }

    void Put(const std::string& name, const std::string& bytes) const
    {
        std::ofstream(m_folder / name, std::ios::binary) << bytes;
    }

    /// What is in a file; empty when there is none.
    std::string Get(const std::string& name) const
    {
        std::ostringstream bytes;
        bytes << std::ifstream(m_folder / name, std::ios::binary).rdbuf();
        return bytes.str();
    }

    /// Number of files and folders in it.
    std::ptrdiff_t Count() const { return std::distance(std::filesystem::directory_iterator(m_folder), {}); }

    std::filesystem::path m_folder;
};

#endif
