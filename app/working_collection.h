// The working collection "korvinth.tmp": the current plot and all entries, whether they were saved
// or not, so that no crash takes more than the last two seconds.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/background_writer.h"
#include "files/file_system.h"

namespace korvinth::app {

inline constexpr const char* kWorkingCollectionName = "korvinth.tmp";

// Where a running program keeps its files. A second one that runs at the same time has a working
// collection of its own.
struct WorkingPlace
{
    files::Path collection;               // "korvinth.tmp", "korvinth-2.tmp"
    std::optional<files::FileLock> lock;  // none when the directory cannot be written
};
WorkingPlace TakeWorkingPlace(const files::Path& directory);

// The text that a working collection has in front of that of a collection file, which readers pass
// over: whether the entries were changed since they were saved.
std::string WithModifiedMark(std::string collection_bytes, bool modified);
bool HasModifiedMark(std::string_view working_bytes);

// Large collections take time to put together; this much of one waits until nothing moves.
inline constexpr std::size_t kLargeCollection = 1'000'000;  // bytes

struct WorkingState
{
    std::size_t bytes = 0;                // about, of the file when it was last written or read
    std::chrono::milliseconds waiting{};  // since the first change that is not written
    std::chrono::milliseconds quiet{};    // since the last
    bool animated = false;
};
bool IsDue(const WorkingState& state);

// What is to be written.
struct WorkingContent
{
    std::size_t bytes = 0;  // about
    BackgroundWriter::Content compose;
};

class WorkingCollection final : public QObject
{
    Q_OBJECT
public:
    // The file's content; nothing when it is what it was the last time.
    using Content = std::function<std::optional<WorkingContent>()>;
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // The disk outlives the object.
    WorkingCollection(files::FileSystem& disk, files::Path file, Content content,
                      std::function<bool()> animated, Clock clock = std::chrono::steady_clock::now);

    const files::Path& File() const { return file_; }
    // Something that the file holds has changed.
    void Touch();
    // Brings the file up to date now. What went wrong.
    std::error_code Flush();
    // Nothing is written until the next change, since the file is about to be replaced.
    void Forget();
    // So much was read, and is about what will be written.
    void Expect(std::size_t bytes) { size_ = bytes; }

Q_SIGNALS:
    void failed(std::error_code fault);  // once until writing succeeds again

private:
    void WriteWhenDue();
    void Write();

    const files::Path file_;
    Content content_;
    std::function<bool()> animated_;
    Clock clock_;
    BackgroundWriter writer_;
    QTimer look_;  // runs while a change is not written
    std::chrono::steady_clock::time_point first_{}, last_{};
    std::size_t size_ = 0;  // about, of what was written last
    bool told_ = false;
};

}  // namespace korvinth::app
