#include "app/working_collection.h"

#include <utility>

#include "document/settings_file.h"

namespace korvinth::app {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLook{500};
constexpr milliseconds kSoon{1000};     // with a look every half second: at most 1.5 s
constexpr milliseconds kQuiet{2000};    // so long nothing moves
constexpr milliseconds kLatest{29000};  // a large one
constexpr int kMostPrograms = 99;       // at a time

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kModifiedMark = "[Korvinth]\r\nGeaendert=1\r\n\r\n";

milliseconds Between(std::chrono::steady_clock::time_point begin,
                     std::chrono::steady_clock::time_point end)
{
    return std::chrono::duration_cast<milliseconds>(end - begin);
}

}  // namespace

WorkingPlace TakeWorkingPlace(const files::Path& directory)
{
    for (int number = 1; number <= kMostPrograms; ++number) {
        const std::string name = number == 1 ? "korvinth" : "korvinth-" + std::to_string(number);
        std::optional<files::FileLock> lock = files::FileLock::Take(directory / (name + ".lock"));
        if (lock) return {directory / (name + ".tmp"), std::move(lock)};
    }
    return {directory / kWorkingCollectionName, std::nullopt};
}

std::string WithModifiedMark(std::string collection_bytes, bool modified)
{
    if (!modified) return collection_bytes;
    const bool marked = collection_bytes.starts_with(kByteOrderMark);
    collection_bytes.insert(marked ? kByteOrderMark.size() : 0, kModifiedMark);
    return collection_bytes;
}

bool HasModifiedMark(std::string_view working_bytes)
{
    if (working_bytes.starts_with(kByteOrderMark)) {
        working_bytes.remove_prefix(kByteOrderMark.size());
    }
    return working_bytes.starts_with(kModifiedMark);
}

bool IsDue(const WorkingState& state)
{
    if (state.bytes < kLargeCollection) return state.waiting >= kSoon;
    return state.waiting >= kLatest || (state.quiet >= kQuiet && !state.animated);
}

WorkingCollection::WorkingCollection(files::FileSystem& disk, files::Path file, Content content,
                                     std::function<bool()> animated, Clock clock)
    : file_(std::move(file)),
      content_(std::move(content)),
      animated_(std::move(animated)),
      clock_(std::move(clock)),
      writer_(disk, file_)
{
    look_.setInterval(kLook);
    connect(&look_, &QTimer::timeout, this, &WorkingCollection::WriteWhenDue);
    connect(&writer_, &BackgroundWriter::failed, this, [this](std::error_code fault) {
        if (!std::exchange(told_, true)) Q_EMIT failed(fault);
    });
}

void WorkingCollection::Touch()
{
    last_ = clock_();
    if (look_.isActive()) return;
    first_ = last_;
    look_.start();
}

void WorkingCollection::Forget()
{
    look_.stop();
    writer_.Finish();
}

void WorkingCollection::WriteWhenDue()
{
    const auto now = clock_();
    if (IsDue({size_, Between(first_, now), Between(last_, now), animated_()})) Write();
}

void WorkingCollection::Write()
{
    look_.stop();
    std::optional<WorkingContent> content = content_();
    if (!content) return;
    size_ = content->bytes;
    writer_.Write(std::move(content->compose));
}

std::error_code WorkingCollection::Flush()
{
    Write();
    const std::error_code fault = writer_.Finish();
    told_ = told_ && fault;
    return fault;
}

}  // namespace korvinth::app
