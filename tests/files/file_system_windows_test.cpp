// What only the files and the surroundings of Windows have.
#include <windows.h>
#undef ReplaceFile  // the program has a function of that name

#include <sddl.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <memory>

#include "files/path_text.h"
#include "files/system.h"
#include "files/windows_fault.h"
#include "tests/files/disk_fixture.h"

namespace korvinth::files {
namespace {

class WindowsDiskTest : public DiskTest
{
protected:
    // Opens a file as a program does that shares it with nobody.
    HANDLE OpenAlone(const std::string& name)
    {
        return ::CreateFileW((folder_ / name).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0,
                             nullptr);
    }
    // Who may do what with a file, as a text.
    std::wstring AccessList(const std::string& name)
    {
        std::array<std::byte, 4096> found = {};
        DWORD length = 0;
        ::GetFileSecurityW((folder_ / name).c_str(), DACL_SECURITY_INFORMATION, found.data(),
                           static_cast<DWORD>(found.size()), &length);
        LPWSTR text = nullptr;
        ::ConvertSecurityDescriptorToStringSecurityDescriptorW(
            found.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION, &text, nullptr);
        const std::unique_ptr<wchar_t, decltype(&::LocalFree)> owner(text, &::LocalFree);
        return text == nullptr ? L"" : text;
    }
    void SetAccessList(const std::string& name, const wchar_t* list)
    {
        PSECURITY_DESCRIPTOR wanted = nullptr;
        ::ConvertStringSecurityDescriptorToSecurityDescriptorW(list, SDDL_REVISION_1, &wanted,
                                                               nullptr);
        const std::unique_ptr<void, decltype(&::LocalFree)> owner(wanted, &::LocalFree);
        ::SetFileSecurityW((folder_ / name).c_str(), DACL_SECURITY_INFORMATION, wanted);
    }
    DWORD Attributes(const std::string& name)
    {
        return ::GetFileAttributesW((folder_ / name).c_str());
    }
};

TEST_F(WindowsDiskTest, TellsWhyAFileCannotBeUsed)
{
    const Path file = folder_ / "file";
    ASSERT_FALSE(Disk().Write(file, "old"));
    const HANDLE alone = OpenAlone("file");
    EXPECT_EQ(Content("file"), "fault: Die Datei wird gerade benutzt");
    EXPECT_EQ(ErrorText(ReplaceFile(Disk(), file, "new")), "Die Datei wird gerade benutzt");
    ::CloseHandle(alone);

    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(ErrorText(ReplaceFile(Disk(), file, "new")), "Der Zugriff ist nicht erlaubt");
    ::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(Content("file"), "old");
    EXPECT_EQ(Content("a*b"), "fault: Dieser Dateiname ist hier nicht möglich");
    EXPECT_EQ(Content("\\\\.\\NUL"), "fault: Das ist keine gewöhnliche Datei");
    EXPECT_EQ(FilesInFolder(), 1U) << "nothing is left beside it";
}

TEST_F(WindowsDiskTest, ReplacingKeepsAttributesAndPermissions)
{
    ASSERT_FALSE(Disk().Write(folder_ / "file", "old"));
    const std::wstring usual = AccessList("file");
    SetAccessList("file", L"D:P(A;;FA;;;WD)");  // everybody may do anything, nothing is inherited
    const std::wstring wanted = AccessList("file");
    ASSERT_NE(wanted, usual);
    ::SetFileAttributesW((folder_ / "file").c_str(), FILE_ATTRIBUTE_HIDDEN);
    EXPECT_FALSE(ReplaceFile(Disk(), folder_ / "file", "new"));
    EXPECT_EQ(Content("file"), "new");
    EXPECT_NE(Attributes("file") & FILE_ATTRIBUTE_HIDDEN, 0U);
    EXPECT_EQ(AccessList("file"), wanted);
    EXPECT_FALSE(Disk().Copy(folder_ / "file", folder_ / "copy"));
    EXPECT_NE(Attributes("copy") & FILE_ATTRIBUTE_HIDDEN, 0U);
    EXPECT_TRUE(Disk().SameFile(folder_ / "file", folder_ / "FILE"));
    EXPECT_TRUE(Disk().SameFile(folder_ / "none", folder_ / "." / "NONE"));
    EXPECT_FALSE(Disk().SameFile(folder_ / "none", folder_ / "file"));
}

TEST(WindowsFault, IsToldInGermanOrAsTheSystemDoes)
{
    EXPECT_EQ(ErrorText(WindowsFault(ERROR_DISK_FULL)), "Auf dem Datenträger ist kein Platz mehr");
    EXPECT_EQ(WindowsFault(ERROR_DISK_FULL), std::errc::no_space_on_device);
    EXPECT_NE(WindowsFault(ERROR_DISK_FULL), std::errc::io_error);
    const std::string text = ErrorText(WindowsFault(ERROR_INVALID_WINDOW_HANDLE));
    EXPECT_GT(text.size(), 10U);
    EXPECT_FALSE(text.ends_with('.') || text.ends_with('\n')) << text;
    EXPECT_EQ(ErrorText(WindowsFault(0x2FFFFFFF)), "Fehler 805306367");
}

TEST(PathText, TakesWhatIsNoText)
{
    EXPECT_EQ(Utf8(PathOf("ä ✓ 𝄞.txt")), "ä ✓ 𝄞.txt");
    EXPECT_EQ(Utf8(PathOf("a\xFF")), "a\uFFFD");
    EXPECT_EQ(Utf8(Path(std::wstring(L"a\xD800"))), "a\uFFFD");
}

TEST(System, SpeaksUtf8)
{
    ::_wputenv(L"KORVINTH_TRY=\u221Ax");
    EXPECT_EQ(EnvironmentVariable("KORVINTH_TRY"), "√x");
    EXPECT_EQ(EnvironmentVariable("KORVINTH_NONE"), std::nullopt);
    const std::optional<Path> folder = UserDataDirectory();
    ASSERT_TRUE(folder);
    EXPECT_TRUE(std::filesystem::is_directory(*folder));
}

}  // namespace
}  // namespace korvinth::files
