#include "document/save_collection.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "document/collection_file.h"
#include "tests/files/failing_disk.h"

namespace korvinth::document {
namespace {

using files::FailingDisk;
using Trouble = FailingDisk::Trouble;

constexpr std::string_view kName = "folder/a.txt";
constexpr std::string_view kCopy = "folder/a.txt.tmp";
constexpr std::string_view kDamaged = "folder/a.txt.defekt";
constexpr std::string_view kWorking = "home/korvinth.tmp";
constexpr std::string_view kOld = "the old collection, complete";
constexpr std::string_view kNew = "the new collection, complete as well";
constexpr std::string_view kHalf = "the old coll";
constexpr std::string_view kStale = "a collection of long ago";

struct SaveCase
{
    std::string_view behaviour;
    std::string_view name, copy, working;  // contents before; "" for no file
    EarlierFile earlier = EarlierFile::Complete;
};

constexpr SaveCase kSaveCases[] = {
    {"a new file", "", "", kNew},
    {"an existing file", kOld, "", kNew},
    {"a working collection that is behind", kOld, "", kStale},
    {"a working collection that was deleted", kOld, "", ""},
    {"stopped before while the name had no file", "", kOld, kNew},
    {"stopped before while the file was being written", kHalf, kOld, kNew},
    {"stopped before while the copy was being deleted", kOld, kStale, kNew},
    {"a damaged file", kOld, "", kNew, EarlierFile::Damaged},
};

FailingDisk DiskOf(const SaveCase& row)
{
    return {{kName, row.name}, {kCopy, row.copy}, {kWorking, row.working}};
}

std::string Save(FailingDisk& disk, const SaveCase& row)
{
    return SaveCollection(disk, kName, kWorking, kNew, row.earlier);
}

bool IsComplete(std::string_view bytes) { return bytes == kOld || bytes == kNew; }

// What has to hold whenever saving ends or is ended.
void ExpectNothingLost(const FailingDisk& disk, const SaveCase& row)
{
    const bool had_one = IsComplete(row.name) || IsComplete(row.copy);
    const bool has_one = IsComplete(disk.Bytes(kName)) || IsComplete(disk.Bytes(kCopy));
    EXPECT_TRUE(has_one || !had_one) << disk.Bytes(kName) << " / " << disk.Bytes(kCopy);
    if (!row.working.empty()) {
        EXPECT_TRUE(disk.Bytes(kWorking) == row.working || disk.Bytes(kWorking) == kNew);
    }
    if (row.earlier == EarlierFile::Damaged && !disk.Has(kDamaged)) {
        EXPECT_EQ(disk.Bytes(kName), kOld);
    }
}

void ExpectSaved(const FailingDisk& disk, const SaveCase& row)
{
    EXPECT_EQ(disk.Bytes(kName), kNew);
    EXPECT_EQ(disk.Bytes(kDamaged), row.earlier == EarlierFile::Damaged ? kOld : "");
}

TEST(SaveCollection, PutsTheCollectionUnderItsName)
{
    for (const SaveCase& row : kSaveCases) {
        SCOPED_TRACE(row.behaviour);
        FailingDisk disk = DiskOf(row);
        EXPECT_EQ(Save(disk, row), "");
        ExpectSaved(disk, row);
        EXPECT_FALSE(disk.Has(kCopy));
        EXPECT_EQ(disk.Bytes(kWorking), kNew);
        EXPECT_EQ(disk.Count(), row.earlier == EarlierFile::Damaged ? 3U : 2U);
    }
}

// Saves with trouble at every operation; returns how many there are.
int SaveWithTrouble(const SaveCase& row, Trouble trouble, bool power_cut)
{
    for (int operation = 1;; ++operation) {
        SCOPED_TRACE("operation " + std::to_string(operation));
        FailingDisk disk = DiskOf(row);
        disk.At(operation, trouble);
        try {
            const std::string message = Save(disk, row);
            if (power_cut) disk.PowerCut();
            if (message.empty()) {
                ExpectSaved(disk, row);
            } else if (trouble == Trouble::Once && row.copy.empty()) {
                // Deliberate: after a failed writing the content is in the copy only.
                EXPECT_EQ(message.find("„a.txt.tmp“") != std::string::npos, disk.Has(kCopy));
                EXPECT_TRUE(!disk.Has(kName) || IsComplete(disk.Bytes(kName))) << "half a file";
            } else {
                EXPECT_TRUE(message.starts_with("Beim Lesen oder Schreiben hat")) << message;
            }
        } catch (const files::Killed&) {
            if (power_cut) disk.PowerCut();
        }
        ExpectNothingLost(disk, row);
        const bool untroubled = disk.Operations() < operation;
        if (untroubled || testing::Test::HasFailure()) return operation - 1;

        // Whatever was left behind, the next saving copes with it.
        disk.At(0, Trouble::None);
        EXPECT_EQ(Save(disk, row), "");
        EXPECT_EQ(disk.Bytes(kName), kNew);
        EXPECT_FALSE(disk.Has(kCopy));
    }
}

TEST(SaveCollection, LosesNothingWhateverFailsOrStopsAtAnyOperation)
{
    for (const SaveCase& row : kSaveCases) {
        SCOPED_TRACE(row.behaviour);
        for (const Trouble trouble : {Trouble::Once, Trouble::Gone, Trouble::Killed}) {
            SCOPED_TRACE(static_cast<int>(trouble));
            EXPECT_GE(SaveWithTrouble(row, trouble, false), 9);
        }
        EXPECT_GE(SaveWithTrouble(row, Trouble::Killed, true), 9);
    }
}

TEST(SaveCollection, LosesNothingOnAFullOrProtectedDisk)
{
    for (const SaveCase& row : kSaveCases) {
        SCOPED_TRACE(row.behaviour);
        std::size_t refused = 0;
        for (std::size_t room = 0; room < 4 * kNew.size(); ++room) {
            FailingDisk disk = DiskOf(row);
            disk.SetRoom(row.name.size() + row.copy.size() + row.working.size() + room);
            const std::string message = Save(disk, row);
            ExpectNothingLost(disk, row);
            if (message.empty()) {
                ExpectSaved(disk, row);
            } else {
                ++refused;
                EXPECT_TRUE(message.starts_with("Auf dem Datenträger ist kein Platz mehr."));
                EXPECT_EQ(disk.Bytes(kName), row.name) << "the old one stays where it is";
            }
        }
        EXPECT_GT(refused, 0U);
        EXPECT_LT(refused, 3 * kNew.size());

        FailingDisk disk = DiskOf(row);
        disk.SetReadOnly(true);
        EXPECT_TRUE(Save(disk, row).starts_with("Der Datenträger ist schreibgeschützt."));
        EXPECT_EQ(disk.Bytes(kName), row.name);
        EXPECT_EQ(disk.Bytes(kCopy), row.copy);
    }
}

TEST(SaveCollection, NamesTheCopyThatRemains)
{
    FailingDisk disk = DiskOf({"", kHalf, kOld, kNew});
    disk.SetRoom(kHalf.size() + kOld.size() + kNew.size());
    EXPECT_EQ(Save(disk, kSaveCases[1]),
              "Auf dem Datenträger ist kein Platz mehr.\r\n"
              "Eine Sicherung der Sammlung steht in „a.txt.tmp“.");
}

TEST(SaveCollection, RefusesNamesThatWouldOverwriteTheWorkingCollection)
{
    for (const std::string_view name : {"home/korvinth.tmp", "home/korvinth"}) {
        SCOPED_TRACE(name);
        FailingDisk disk;
        disk.Put(kWorking, kOld);
        disk.Put("home/korvinth", kOld);
        EXPECT_TRUE(SaveCollection(disk, name, kWorking, kNew).starts_with("Unter diesem Namen"));
        EXPECT_EQ(disk.Bytes(kWorking), kOld);
        EXPECT_EQ(disk.Bytes("home/korvinth"), kOld);
    }
}

TEST(SaveCollection, AnEarlierDamagedFileIsNotOverwrittenByALaterOne)
{
    FailingDisk disk = DiskOf(kSaveCases[7]);
    disk.Put(kDamaged, kStale);
    EXPECT_EQ(Save(disk, kSaveCases[7]), "");
    EXPECT_EQ(disk.Bytes(kDamaged), kStale);
    EXPECT_EQ(disk.Bytes("folder/a.txt.defekt2"), kOld);
}

#ifndef _WIN32  // where making links is left to the administrator
TEST(SaveCollection, KeepsPermissionsAndLinksOfTheSystemsFiles)
{
    namespace fs = std::filesystem;
    const fs::path folder =
        fs::temp_directory_path() / ("korvinth-" + std::to_string(std::random_device()()));
    fs::create_directory(folder);
    files::FileSystem& disk = files::Disk();
    ASSERT_FALSE(disk.Write(folder / "far.txt", kOld));
    fs::permissions(folder / "far.txt", fs::perms{0640});
    fs::create_symlink("far.txt", folder / "link.txt");
    fs::create_symlink("korvinth.tmp", folder / "working.txt");

    const fs::path working = folder / "korvinth.tmp";
    EXPECT_EQ(SaveCollection(disk, folder / "link.txt", working, kNew), "");
    EXPECT_NE(SaveCollection(disk, folder / "working.txt", working, kOld), "");
    EXPECT_TRUE(fs::is_symlink(folder / "link.txt"));
    EXPECT_EQ(fs::status(folder / "far.txt").permissions(), fs::perms{0640});
    std::string bytes;
    EXPECT_FALSE(disk.Read(folder / "far.txt", bytes));
    EXPECT_EQ(bytes, kNew);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 4);
    fs::remove_all(folder);
}
#endif

TEST(CreateEmptyCollection, MakesTheFileOrTellsWhyNot)
{
    FailingDisk disk;
    EXPECT_EQ(CreateEmptyCollection(disk, kName), "");
    EXPECT_EQ(disk.Bytes(kName), kEmptyCollection);
    disk.SetReadOnly(true);
    EXPECT_EQ(CreateEmptyCollection(disk, kWorking), "Der Datenträger ist schreibgeschützt.");
}

}  // namespace
}  // namespace korvinth::document
