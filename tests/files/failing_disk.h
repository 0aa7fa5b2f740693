// Files in memory that fail, or stop the program, at a chosen operation. Bears calls from several
// threads.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <limits>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "files/file_system.h"

namespace korvinth::files {

// Thrown where the process is killed.
struct Killed
{
};

class FailingDisk final : public FileSystem
{
public:
    enum class Trouble {
        None,
        Once,   // the operation fails
        Gone,   // it fails, and all after it: the disk keeps what a stopped program leaves
        Killed  // the process ends there; PowerCut tells what the disk then has
    };

    FailingDisk() = default;
    // Names and contents; a file without content is not there.
    FailingDisk(std::initializer_list<std::pair<std::string_view, std::string_view>> contents)
    {
        for (const auto& [path, bytes] : contents) {
            if (!bytes.empty()) Put(path, bytes);
        }
    }

    // Operations count from 1 on. A Write or Copy in trouble leaves half of the bytes.
    void At(int operation, Trouble trouble)
    {
        const std::lock_guard lock(mutex_);
        trouble_at_ = operation;
        trouble_ = trouble;
        operations_ = 0;
    }
    int Operations() const
    {
        const std::lock_guard lock(mutex_);
        return operations_;
    }

    // In bytes, of all files together.
    void SetRoom(std::size_t room) { room_ = room; }
    void SetReadOnly(bool read_only) { read_only_ = read_only; }

    // What was written without Sync is lost.
    void PowerCut()
    {
        const std::lock_guard lock(mutex_);
        for (auto& [path, file] : files_) {
            if (!file.synced) file.bytes.clear();
        }
    }

    void Put(const Path& path, std::string_view bytes)
    {
        const std::lock_guard lock(mutex_);
        files_[path] = {std::string(bytes), true};
    }
    bool Has(const Path& path) const
    {
        const std::lock_guard lock(mutex_);
        return files_.contains(path);
    }
    std::string Bytes(const Path& path) const
    {
        const std::lock_guard lock(mutex_);
        const auto found = files_.find(path);
        return found == files_.end() ? "" : found->second.bytes;
    }
    std::size_t Count() const { return files_.size(); }

    bool Exists(const Path& path, std::error_code& fault) override
    {
        const std::lock_guard lock(mutex_);
        fault = Next();
        return !fault && Has(path);
    }
    bool SameFile(const Path& first, const Path& second) override { return first == second; }
    Path WriteTarget(const Path& path, std::error_code& fault) override
    {
        const std::lock_guard lock(mutex_);
        fault = Next();
        return path;
    }
    std::error_code Read(const Path& path, std::string& bytes) override
    {
        const std::lock_guard lock(mutex_);
        bytes.clear();
        if (const std::error_code fault = Next()) return fault;
        if (!Has(path)) return std::make_error_code(std::errc::no_such_file_or_directory);
        bytes = Bytes(path);
        return {};
    }
    std::error_code Write(const Path& path, std::string_view bytes) override
    {
        const std::lock_guard lock(mutex_);
        return Store(path, bytes, false);
    }
    std::error_code Sync(const Path& path) override
    {
        const std::lock_guard lock(mutex_);
        if (const std::error_code fault = NextChange()) return fault;
        if (!Has(path)) return std::make_error_code(std::errc::no_such_file_or_directory);
        files_[path].synced = true;
        return {};
    }
    std::error_code Copy(const Path& from, const Path& to) override
    {
        const std::lock_guard lock(mutex_);
        if (!Has(from)) return std::make_error_code(std::errc::no_such_file_or_directory);
        return Store(to, Bytes(from), true);
    }
    std::error_code CopyPermissions(const Path& from, const Path& to) override
    {
        const std::lock_guard lock(mutex_);
        if (const std::error_code fault = NextChange()) return fault;
        if (Has(from) && Has(to)) return {};
        return std::make_error_code(std::errc::no_such_file_or_directory);
    }
    std::error_code Rename(const Path& from, const Path& to) override
    {
        const std::lock_guard lock(mutex_);
        if (const std::error_code fault = NextChange()) return fault;
        if (!Has(from)) return std::make_error_code(std::errc::no_such_file_or_directory);
        auto moved = files_.extract(from);
        files_.erase(to);
        moved.key() = to;
        files_.insert(std::move(moved));
        return {};
    }
    std::error_code Remove(const Path& path) override
    {
        const std::lock_guard lock(mutex_);
        if (const std::error_code fault = NextChange()) return fault;
        files_.erase(path);
        return {};
    }

    std::vector<Path> FilesBeginningWith(const Path& beginning) override
    {
        const std::lock_guard lock(mutex_);
        std::vector<Path> found;
        if (Next()) return found;
        for (const auto& [path, file] : files_) {
            if (path.string().starts_with(beginning.string())) found.push_back(path);
        }
        return found;
    }
    std::error_code MakeFolders(const Path&) override { return {}; }

private:
    struct File
    {
        std::string bytes;
        bool synced = false;
    };

    // Whether trouble begins with this operation or has begun.
    bool InTrouble()
    {
        ++operations_;
        if (trouble_ == Trouble::Gone) return operations_ >= trouble_at_;
        return trouble_ != Trouble::None && operations_ == trouble_at_;
    }

    std::error_code Fail() const
    {
        if (trouble_ == Trouble::Killed) throw Killed();
        return std::make_error_code(std::errc::io_error);
    }

    std::error_code Next() { return InTrouble() ? Fail() : std::error_code(); }

    std::error_code NextChange()
    {
        if (const std::error_code fault = Next()) return fault;
        if (read_only_) return std::make_error_code(std::errc::read_only_file_system);
        return {};
    }

    std::error_code Store(const Path& path, std::string_view bytes, bool synced)
    {
        const bool in_trouble = InTrouble();
        if (read_only_) return std::make_error_code(std::errc::read_only_file_system);
        if (in_trouble) {
            files_[path] = {std::string(bytes.substr(0, bytes.size() / 2)), false};
            return Fail();
        }
        files_.erase(path);
        const std::size_t free = room_ - UsedRoom();
        files_[path] = {std::string(bytes.substr(0, free)), synced};
        if (free < bytes.size()) return std::make_error_code(std::errc::no_space_on_device);
        return {};
    }

    std::size_t UsedRoom() const
    {
        std::size_t used = 0;
        for (const auto& [path, file] : files_) used += file.bytes.size();
        return used;
    }

    mutable std::recursive_mutex mutex_;
    std::map<Path, File> files_;
    std::size_t room_ = std::numeric_limits<std::size_t>::max();
    bool read_only_ = false;
    Trouble trouble_ = Trouble::None;
    int trouble_at_ = 0;
    int operations_ = 0;
};

}  // namespace korvinth::files
