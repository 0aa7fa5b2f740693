// Writes a file beside the program's one thread, so that a slow disk stops no animation.
#pragma once

#include <QObject>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "files/file_system.h"

namespace korvinth::app {

class BackgroundWriter final : public QObject
{
    Q_OBJECT
public:
    // The disk outlives the writer and bears calls from two threads.
    BackgroundWriter(files::FileSystem& disk, files::Path file);
    // What was handed over is on the disk afterwards.
    ~BackgroundWriter() override;
    Q_DISABLE_COPY_MOVE(BackgroundWriter)

    // What is to be written; called on the other thread, so it must own what it uses.
    using Content = std::function<std::string()>;
    // Replaces the file's content; of several that wait only the last is written.
    void Write(Content content);
    // Waits until nothing is left to write. What the last writing could not do.
    std::error_code Finish();

Q_SIGNALS:
    void failed(std::error_code fault);  // told from the other thread

private:
    void Run(const std::stop_token& stop);

    files::FileSystem& disk_;
    const files::Path file_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    Content waiting_;  // none when there is nothing to write
    bool busy_ = false;
    std::error_code last_fault_;
    std::jthread thread_;  // last, since it uses the others
};

}  // namespace korvinth::app
