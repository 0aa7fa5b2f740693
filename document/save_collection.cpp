#include "document/save_collection.h"

#include "document/collection_file.h"
#include "files/path_text.h"

namespace korvinth::document {
namespace {

using files::FileSystem;
using files::Path;

constexpr std::string_view kCopyEnding = ".tmp";
constexpr std::string_view kDamagedEnding = ".defekt";

std::string FaultText(std::error_code fault)
{
    return fault ? files::ErrorText(fault) + "." : std::string();
}

std::error_code KeepDamaged(FileSystem& disk, const Path& target)
{
    std::error_code fault;
    Path kept = files::WithEnding(target, kDamagedEnding);
    for (int number = 2; disk.Exists(kept, fault); ++number) {
        kept = files::WithEnding(target, std::string(kDamagedEnding) + std::to_string(number));
    }
    return fault ? fault : disk.Copy(target, kept);
}

// The steps of saving; `target` is the file that the collection's name leads to.
class Saving
{
public:
    Saving(FileSystem& disk, Path target, std::string_view bytes)
        : disk_(disk),
          target_(std::move(target)),
          copy_(files::WithEnding(target_, kCopyEnding)),
          bytes_(bytes)
    {
    }

    bool WouldOverwrite(const Path& working) const
    {
        return disk_.SameFile(target_, working) || disk_.SameFile(copy_, working);
    }

    std::error_code Save(const Path& working, EarlierFile earlier)
    {
        std::error_code fault;
        const bool existed = disk_.Exists(target_, fault);
        if (fault) return fault;
        const bool had_copy = disk_.Exists(copy_, fault);
        if (fault) return fault;
        if (existed && earlier == EarlierFile::Damaged) fault = KeepDamaged(disk_, target_);
        if (fault) return fault;
        if (existed && had_copy) return SaveAfterInterruption();

        const bool working_is_current = BringUpToDate(working);
        if (existed) fault = disk_.Rename(target_, copy_);
        if (!fault && working_is_current) fault = CopyWorking(working, existed);
        if (fault) return fault;
        fault = WriteThroughCopy(working_is_current);
        if (fault && existed && !working_is_current) disk_.Rename(copy_, target_);
        return fault;
    }

    // A sentence for the message when the copy remains.
    std::string CopyText() const
    {
        std::error_code fault;
        if (!disk_.Exists(copy_, fault)) return "";
        return "\r\nEine Sicherung der Sammlung steht in „" + files::Utf8(copy_.filename()) + "“.";
    }

private:
    // Which of the two is complete cannot be told; so neither is touched before the new content
    // bears the name.
    std::error_code SaveAfterInterruption()
    {
        const std::error_code fault = files::ReplaceFile(disk_, target_, bytes_);
        if (!fault) disk_.Remove(copy_);
        return fault;
    }

    // Whether the working collection holds what is to be saved.
    bool BringUpToDate(const Path& working)
    {
        std::string present;
        if (!disk_.Read(working, present) && present == bytes_) return true;
        return !files::ReplaceFile(disk_, working, bytes_);
    }

    std::error_code CopyWorking(const Path& working, bool existed)
    {
        const std::error_code fault = disk_.Copy(working, target_);
        if (!fault) {
            if (existed) disk_.CopyPermissions(copy_, target_);
        } else if (existed) {
            disk_.Rename(copy_, target_);
        } else {
            disk_.Remove(target_);
        }
        return fault;
    }

    // Faults of deleting are passed over: the next saving copes with what remained. Deliberate:
    // after a failed writing the content stays in the copy.
    std::error_code WriteThroughCopy(bool target_is_complete)
    {
        if (target_is_complete) {
            disk_.Remove(copy_);
            if (disk_.Copy(target_, copy_)) {
                // Without a copy the file is not touched. It holds the bytes already.
                disk_.Remove(copy_);
                return {};
            }
            disk_.Remove(target_);
        }
        std::error_code fault = disk_.Write(target_, bytes_);
        if (!fault) fault = disk_.Sync(target_);
        if (fault) {
            disk_.Remove(target_);  // nobody shall take half a file for the collection
            return fault;
        }
        disk_.CopyPermissions(copy_, target_);
        disk_.Remove(copy_);
        return {};
    }

    FileSystem& disk_;
    Path target_;
    Path copy_;
    std::string_view bytes_;
};

}  // namespace

std::string SaveCollection(FileSystem& disk, const Path& name, const Path& working,
                           std::string_view bytes, EarlierFile earlier)
{
    std::error_code fault;
    const Path target = disk.WriteTarget(name, fault);
    if (fault) return FaultText(fault);
    Saving saving(disk, target, bytes);
    if (saving.WouldOverwrite(working)) {
        return "Unter diesem Namen führt das Programm seine Arbeitsdatei. Bitte einen anderen "
               "Namen wählen.";
    }
    fault = saving.Save(working, earlier);
    return fault ? FaultText(fault) + saving.CopyText() : "";
}

std::string CreateEmptyCollection(FileSystem& disk, const Path& name)
{
    return FaultText(files::ReplaceFile(disk, name, kEmptyCollection));
}

}  // namespace korvinth::document
