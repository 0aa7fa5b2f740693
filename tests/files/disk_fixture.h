// A folder on the real disk, gone after the test.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "files/file_system.h"

namespace korvinth::files {

class DiskTest : public testing::Test
{
protected:
    DiskTest()
        : folder_(std::filesystem::temp_directory_path() /
                  ("korvinth-" + std::to_string(std::random_device()())))
    {
        std::filesystem::create_directory(folder_);
    }
    ~DiskTest() override
    {
        std::filesystem::permissions(folder_, std::filesystem::perms::owner_all);
        std::filesystem::remove_all(folder_);
    }

    std::string Content(const std::string& name)
    {
        std::string bytes;
        const std::error_code fault = Disk().Read(folder_ / name, bytes);
        return fault ? "fault: " + ErrorText(fault) : bytes;
    }
    std::size_t FilesInFolder() const
    {
        const std::filesystem::directory_iterator files(folder_);
        return static_cast<std::size_t>(
            std::distance(files, std::filesystem::directory_iterator()));
    }

    Path folder_;
};

}  // namespace korvinth::files
