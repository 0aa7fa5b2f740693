#include "files/file_system.h"

#include <gtest/gtest.h>

#include <string>

#include "files/path_text.h"
#include "tests/files/disk_fixture.h"
#include "tests/files/failing_disk.h"

namespace korvinth::files {
namespace {

namespace fs = std::filesystem;

TEST_F(DiskTest, CarriesOutEachOperation)
{
    const Path a = folder_ / PathOf("ä ✓.txt");
    const Path b = folder_ / "b";
    const std::string bytes = std::string("x\0\r\n\xFF", 5) + std::string(3U << 20U, 'y');
    FileSystem& disk = Disk();
    std::error_code fault;
    EXPECT_FALSE(disk.Exists(a, fault));
    EXPECT_FALSE(fault);
    EXPECT_TRUE(disk.Exists(folder_ / "", fault)) << "a slash at the end";
    EXPECT_FALSE(disk.Write(a, "a longer text that goes"));
    EXPECT_FALSE(disk.Write(a, "short"));
    std::string read;
    EXPECT_FALSE(disk.Read(a, read));
    EXPECT_EQ(read, "short");
    EXPECT_FALSE(disk.Write(a, bytes));
    EXPECT_FALSE(disk.Sync(a));
    EXPECT_FALSE(disk.Copy(a, b));
    EXPECT_EQ(Content("b"), bytes);
    EXPECT_FALSE(disk.SameFile(a, b));
    EXPECT_EQ(disk.Copy(a, folder_ / "." / a.filename()), std::errc::file_exists);
    EXPECT_FALSE(disk.Read(a, read));
    EXPECT_EQ(read, bytes) << "copied onto itself";
    EXPECT_FALSE(disk.Write(b, ""));
    EXPECT_FALSE(disk.Rename(a, b));
    EXPECT_EQ(Content("b"), bytes);
    EXPECT_FALSE(disk.Exists(a, fault));
    EXPECT_FALSE(disk.Remove(a)) << "is not there any more";
    EXPECT_FALSE(disk.Remove(b));
    EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(DiskTest, ReadsUpToABound)
{
    ASSERT_FALSE(Disk().Write(folder_ / "large", ""));
    fs::resize_file(folder_ / "large", kLargestFile + 1);
    EXPECT_EQ(Content("large"), "fault: Die Datei ist zu groß");
}

TEST_F(DiskTest, TellsWhyAFileCannotBeUsed)
{
    EXPECT_EQ(Content("none"), "fault: Die Datei oder den Ordner gibt es nicht");
    EXPECT_EQ(Content("."), "fault: Das ist ein Ordner, keine Datei");
    EXPECT_EQ(ErrorText(ReplaceFile(Disk(), folder_ / "none" / "file", "")),
              "Die Datei oder den Ordner gibt es nicht");
    EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(DiskTest, ALockHasOneHolder)
{
    const Path file = folder_ / "lock";
    {
        const std::optional<FileLock> held = FileLock::Take(file);
        EXPECT_TRUE(held);
        EXPECT_FALSE(FileLock::Take(file));
    }
    EXPECT_TRUE(FileLock::Take(file));
    EXPECT_FALSE(FileLock::Take(folder_ / "none" / "lock"));
}

TEST(ReplaceFile, LeavesTheOldOrTheNewContentWhateverHappens)
{
    using Trouble = FailingDisk::Trouble;
    for (const Trouble trouble : {Trouble::Once, Trouble::Gone, Trouble::Killed}) {
        int stopped = 0;
        for (int operation = 1;; ++operation) {
            SCOPED_TRACE("operation " + std::to_string(operation));
            FailingDisk disk;
            disk.Put("file", "old content");
            disk.At(operation, trouble);
            std::error_code fault;
            try {
                fault = ReplaceFile(disk, "file", "new content");
                disk.PowerCut();
            } catch (const Killed&) {
                ++stopped;
                disk.PowerCut();
                EXPECT_EQ(disk.Bytes("file"), "old content");
                continue;
            }
            EXPECT_EQ(disk.Bytes("file"), fault ? "old content" : "new content");
            EXPECT_TRUE(trouble == Trouble::Gone || disk.Count() == 1);
            if (!fault) break;
            ++stopped;
        }
        EXPECT_EQ(stopped, 6);
    }
}

}  // namespace
}  // namespace korvinth::files
