#include "app/background_writer.h"

#include <utility>

namespace korvinth::app {

BackgroundWriter::BackgroundWriter(files::FileSystem& disk, files::Path file)
    : disk_(disk),
      file_(std::move(file)),
      thread_([this](const std::stop_token& stop) { Run(stop); })
{
}

BackgroundWriter::~BackgroundWriter() { Finish(); }

void BackgroundWriter::Write(Content content)
{
    const std::lock_guard lock(mutex_);
    waiting_ = std::move(content);
    changed_.notify_all();
}

std::error_code BackgroundWriter::Finish()
{
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return !waiting_ && !busy_; });
    return last_fault_;
}

void BackgroundWriter::Run(const std::stop_token& stop)
{
    std::unique_lock lock(mutex_);
    while (changed_.wait(lock, stop, [this] { return waiting_ != nullptr; })) {
        const Content content = std::exchange(waiting_, nullptr);
        busy_ = true;
        lock.unlock();
        const std::error_code fault = files::ReplaceFile(disk_, file_, content());
        if (fault) Q_EMIT failed(fault);
        lock.lock();
        last_fault_ = fault;
        busy_ = false;
        changed_.notify_all();
    }
}

}  // namespace korvinth::app
