// What only the files of POSIX have: names that are no texts, pipes, links, permissions.
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/files/disk_fixture.h"

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

class PosixDiskTest : public DiskTest
{
protected:
    fs::perms Permissions(const std::string& name)
    {
        return fs::status(folder_ / name).permissions();
    }
};

TEST_F(PosixDiskTest, TakesNamesThatAreNoTextsAndFilesWithoutASize)
{
    EXPECT_FALSE(ReplaceFile(Disk(), folder_ / "ä \xFF.txt", "bytes"));
    EXPECT_EQ(Content("ä \xFF.txt"), "bytes");
    if (fs::exists("/proc/self/status")) {
        std::string bytes;
        EXPECT_FALSE(Disk().Read("/proc/self/status", bytes));
        EXPECT_TRUE(bytes.starts_with("Name:"));
    }
}

TEST_F(PosixDiskTest, RefusesWhatIsNoOrdinaryFile)
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

TEST_F(PosixDiskTest, ReplacingKeepsPermissionsAndLinks)
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

TEST_F(PosixDiskTest, TellsWhyAFileCannotBeWritten)
{
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

TEST_F(PosixDiskTest, ALockEndsWithItsHolderHoweverThatEnds)
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
    EXPECT_TRUE(FileLock::Take(file));
}

}  // namespace
}  // namespace korvinth::files
