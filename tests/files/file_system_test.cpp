#include "files/file_system.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <string>

#include "tests/files/failing_disk.h"

namespace korvinth::files {
namespace {

namespace fs = std::filesystem;

// The administrator may write everywhere; he becomes another for a while.
class OrdinaryUser
{
public:
    explicit OrdinaryUser(const Path& folder) : id_(::geteuid())
    {
        constexpr uid_t kNobody = 65534;
        if (id_ == 0 && ::chown(folder.c_str(), kNobody, 0) == 0) (void)::seteuid(kNobody);
    }
    ~OrdinaryUser() { (void)::seteuid(id_); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    uid_t id_;
};

class DiskTest : public testing::Test
{
protected:
    DiskTest()
    {
        std::string name = (fs::temp_directory_path() / "korvinth-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
    }
    ~DiskTest() override
    {
        fs::permissions(folder_, fs::perms::owner_all);
        fs::remove_all(folder_);
    }

    std::string Content(const std::string& name)
    {
        std::string bytes;
        const std::error_code fault = Disk().Read(folder_ / name, bytes);
        return fault ? "fault: " + ErrorText(fault) : bytes;
    }
    fs::perms Permissions(const std::string& name)
    {
        return fs::status(folder_ / name).permissions();
    }
    std::size_t FilesInFolder() const
    {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
    }

    Path folder_;
};

TEST_F(DiskTest, CarriesOutEachOperation)
{
    const Path a = folder_ / "ä \xFF.txt";  // a name need not be a text
    const Path b = folder_ / "b";
    const std::string bytes = std::string("x\0\r\n\xFF", 5) + std::string(3U << 20U, 'y');
    FileSystem& disk = Disk();
    std::error_code fault;
    EXPECT_FALSE(disk.Exists(a, fault));
    EXPECT_FALSE(fault);
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

TEST_F(DiskTest, RefusesWhatIsNoOrdinaryFile)
{
    ASSERT_EQ(::mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    fs::create_symlink("circle", folder_ / "circle");
    struct
    {
        Path path;
        std::errc fault;
    } const rows[] = {
        {folder_, std::errc::is_a_directory},
        {folder_ / "pipe", kNoOrdinaryFile},
        {"/dev/null", kNoOrdinaryFile},
        {folder_ / "circle", std::errc::too_many_symbolic_link_levels},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.path);
        std::string bytes;
        EXPECT_EQ(Disk().Read(row.path, bytes), row.fault);
        EXPECT_EQ(Disk().Copy(row.path, folder_ / "copy"), row.fault);
        EXPECT_EQ(ReplaceFile(Disk(), row.path, "new"), row.fault);
    }
    EXPECT_EQ(FilesInFolder(), 2U);
}

TEST_F(DiskTest, ReadsUpToABoundAndFilesWithoutASize)
{
    ASSERT_FALSE(Disk().Write(folder_ / "large", ""));
    fs::resize_file(folder_ / "large", kLargestFile + 1);
    EXPECT_EQ(Content("large"), "fault: Die Datei ist zu groß");
    if (fs::exists("/proc/self/status")) {
        std::string bytes;
        EXPECT_FALSE(Disk().Read("/proc/self/status", bytes));
        EXPECT_TRUE(bytes.starts_with("Name:"));
    }
}

TEST_F(DiskTest, ReplacingKeepsPermissionsAndLinks)
{
    fs::create_directory(folder_ / "far");
    ASSERT_FALSE(Disk().Write(folder_ / "far" / "file", "old"));
    fs::permissions(folder_ / "far" / "file", fs::perms{0640});
    fs::create_symlink("far/file", folder_ / "link");
    EXPECT_TRUE(Disk().SameFile(folder_ / "link", folder_ / "far" / "file"));
    EXPECT_FALSE(ReplaceFile(Disk(), folder_ / "link", "new"));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(Content("far/file"), "new");
    EXPECT_EQ(Permissions("far/file"), fs::perms{0640});
    ASSERT_FALSE(Disk().Copy(folder_ / "link", folder_ / "copy"));
    EXPECT_EQ(Permissions("copy"), fs::perms{0640});

    fs::create_symlink("later", folder_ / "ahead");
    EXPECT_FALSE(ReplaceFile(Disk(), folder_ / "ahead", "made"));
    EXPECT_EQ(Content("later"), "made");
    EXPECT_TRUE(Disk().SameFile(folder_ / "none", folder_ / "far" / ".." / "none"));
    EXPECT_EQ(FilesInFolder(), 5U) << "nothing is left beside them";
}

TEST_F(DiskTest, TellsWhyAFileCannotBeWritten)
{
    EXPECT_EQ(ErrorText(ReplaceFile(Disk(), folder_ / "none" / "file", "")),
              "Die Datei oder den Ordner gibt es nicht");
    EXPECT_EQ(ErrorText(ReplaceFile(Disk(), folder_ / std::string(300, 'n'), "")),
              "Der Dateiname ist zu lang");
    const OrdinaryUser user(folder_);
    ASSERT_FALSE(Disk().Write(folder_ / "file", "old"));
    fs::permissions(folder_ / "file", fs::perms{0400});
    EXPECT_EQ(ErrorText(ReplaceFile(Disk(), folder_ / "file", "new")),
              "Der Zugriff ist nicht erlaubt");
    fs::permissions(folder_ / "file", fs::perms{0600});
    fs::permissions(folder_, fs::perms{0500});
    EXPECT_EQ(ErrorText(ReplaceFile(Disk(), folder_ / "file", "new")),
              "Der Zugriff ist nicht erlaubt");
    EXPECT_EQ(Content("file"), "old");
}

TEST_F(DiskTest, ALockEndsWithItsHolderHoweverThatEnds)
{
    const Path file = folder_ / "lock";
    int channel[2];
    ASSERT_EQ(::pipe(channel), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const std::optional<FileLock> held = FileLock::Take(file);
        const char taken = held ? 'y' : 'n';
        if (::write(channel[1], &taken, 1) == 1) ::pause();
        ::_exit(0);
    }
    char taken = '?';
    ASSERT_EQ(::read(channel[0], &taken, 1), 1);
    EXPECT_EQ(taken, 'y');
    EXPECT_FALSE(FileLock::Take(file));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(channel[0]);
    ::close(channel[1]);
    {
        const std::optional<FileLock> mine = FileLock::Take(file);
        EXPECT_TRUE(mine);
        EXPECT_FALSE(FileLock::Take(file)) << "held by this process";
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
