// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryStore.h"

#include "LoadscopeCore/History/ExclusiveMove.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Platform/UserFolders.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <set>
#include <sys/stat.h>
#include <system_error>
#include <tuple>
#include <variant>

namespace loadscope {
namespace {

using UnreadableReason = ScanHistoryStore::UnreadableReason;

/// Far above 200 records; a file beyond it is none of ours.
constexpr std::size_t maximumFileBytes = std::size_t{128} << 20;

/// No writer takes so long between creating its temporary file and moving it into place.
constexpr std::chrono::minutes abandonedAfter{1};

/// How often a write is begun anew because another process wrote in the meantime.
constexpr int maximumAttempts = 5;

constexpr int highestBackupNumber = std::numeric_limits<int>::max();

/// What the history file was found to be. `unavailable` says nothing about its contents: the system could not
/// open it just now.
struct Reading {
    enum class State { missing, readable, unreadable, unavailable };
    State state = State::missing;
    std::vector<RecordedScan> scans;
    UnreadableReason reason = UnreadableReason::corrupt;
};

bool isLink(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

/// Why a file that could not be read could not.
Reading::State stateOfUnread(const std::string& path) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (file.isOpen()) return Reading::State::unreadable;
    switch (errno) {
    case ENOENT: // also a link without a target
    case ENOTDIR:
        return Reading::State::missing;
    case EMFILE:
    case ENFILE:
    case ENOMEM:
        return Reading::State::unavailable;
    default:
        return Reading::State::unreadable;
    }
}

Reading readHistory(const std::string& path) {
    const std::optional<std::string> bytes = AtomicFile::read(path, maximumFileBytes);
    if (!bytes) return {stateOfUnread(path), {}, UnreadableReason::corrupt};
    auto decoded = ScanHistoryFile::decode(*bytes);
    if (auto* scans = std::get_if<std::vector<RecordedScan>>(&decoded))
        return {Reading::State::readable, ScanHistoryStore::ordered(std::move(*scans)), {}};
    const bool isNewer =
        std::get<ScanHistoryFile::Unreadable>(decoded) == ScanHistoryFile::Unreadable::version;
    return {Reading::State::unreadable, {}, isNewer ? UnreadableReason::version : UnreadableReason::corrupt};
}

/// Tells a file from the one that replaces it; all zero for a missing one.
using Identity = std::tuple<ino_t, off_t, std::filesystem::file_time_type::rep>;

Identity identity(const std::string& path) {
    struct stat status {};
    std::error_code error;
    if (stat(path.c_str(), &status) != 0) return {};
    const auto written = std::filesystem::last_write_time(path, error);
    return {status.st_ino, status.st_size, written.time_since_epoch().count()};
}

/// The records without the oldest beyond the limit. What is dated ahead of the clock counts as
/// of now, and of the records of this day goes first: else it would push out every scan that is made.
std::vector<RecordedScan> newest(std::vector<RecordedScan> scans) {
    const Timestamp now = std::chrono::system_clock::now();
    const auto age = [now](const RecordedScan& scan) {
        return scan.isDatedAhead(now) ? now - RecordedScan::clockTolerance : scan.date;
    };
    scans = ScanHistoryStore::ordered(std::move(scans));
    std::stable_sort(scans.begin(), scans.end(), [&](const RecordedScan& left, const RecordedScan& right) {
        return age(left) < age(right);
    });
    const auto excess =
        std::max(scans.size(), ScanHistoryStore::maximumScans) - ScanHistoryStore::maximumScans;
    scans.erase(scans.begin(), scans.begin() + static_cast<std::ptrdiff_t>(excess));
    return ScanHistoryStore::ordered(std::move(scans));
}

/// Moves the history file to the first free backup name up to `lastNumber`.
bool setAside(const ScanHistoryStore& store, UnreadableReason reason, int lastNumber) {
    for (int number = 1;; ++number) {
        const std::string name = ScanHistoryStore::unreadableBackupName(reason, number);
        const MoveOutcome outcome =
            moveWithoutReplacing(store.filePath(), FilePath::joined(store.directory(), name));
        if (outcome != MoveOutcome::targetExists) return outcome == MoveOutcome::moved;
        if (number == lastNumber) return false;
    }
}

/// Creates the folder and its missing parents, for their owner only.
void createFolders(const std::string& folder) {
    if (mkdir(folder.c_str(), 0700) == 0 || errno != ENOENT) return;
    const std::string parent = FilePath::parent(folder);
    if (parent == folder || parent.empty()) return;
    createFolders(parent);
    mkdir(folder.c_str(), 0700);
}

/// Removes a file, a link (not its target) or an empty folder.
bool isGoneAfterRemoving(const std::string& path) {
    return std::remove(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
}

/// Number of the backup that has this name, or 0.
int backupNumber(UnreadableReason reason, const std::string& name) {
    if (name == ScanHistoryStore::unreadableBackupName(reason)) return 1;
    const std::size_t digits = name.find_first_of("0123456789");
    if (digits == std::string::npos) return 0;
    int number = 0;
    std::from_chars(name.data() + digits, name.data() + name.size(), number);
    return number > 1 && name == ScanHistoryStore::unreadableBackupName(reason, number) ? number : 0;
}

} // namespace

ScanHistoryStore::ScanHistoryStore(std::string directory)
    : directory_(std::move(directory)), folderLock_(directory_) {}

std::string ScanHistoryStore::defaultDirectory() {
    return FilePath::joined(UserFolders::applicationSupport().value_or(UserFolders::temporary()),
                            directoryName);
}

std::vector<RecordedScan> ScanHistoryStore::load() {
    const std::lock_guard guard(mutex_);
    Reading reading = readHistory(filePath());
    if (reading.state != Reading::State::unreadable) return std::move(reading.scans);
    const std::lock_guard hold(folderLock_);
    // Another process may have put it right while this one waited.
    reading = readHistory(filePath());
    if (reading.state == Reading::State::unreadable) static_cast<void>(setAside(*this, reading.reason, 1));
    return std::move(reading.scans);
}

ScanHistoryStore::Update ScanHistoryStore::update(const Change& change) {
    const std::lock_guard guard(mutex_);
    createFolders(directory_);
    AtomicFile::removeAbandoned(FilePath::parent(FilePath::resolved(filePath())), abandonedAfter);
    for (int attempt = 1;; ++attempt) {
        const std::lock_guard hold(folderLock_);
        Identity expected = identity(filePath());
        const Reading reading = readHistory(filePath());
        std::vector<RecordedScan> scans = change(reading.scans);
        if (scans == reading.scans) return {std::move(scans), true};
        bool mayWrite = reading.state != Reading::State::unavailable;
        if (reading.state == Reading::State::unreadable) {
            mayWrite = setAside(*this, reading.reason, highestBackupNumber);
            expected = {};
        }
        if (!mayWrite) return {std::move(scans), false};
        // The lock is only advisory: who gave up waiting for it, or held it and was stopped, looks again.
        bool isOvertaken = false;
        const bool isWritten = AtomicFile::write(filePath(), ScanHistoryFile::encode(scans), [&] {
            isOvertaken = attempt < maximumAttempts && identity(filePath()) != expected;
            return !isOvertaken;
        });
        if (isWritten || !isOvertaken) return {std::move(scans), isWritten};
    }
}

std::vector<RecordedScan> ScanHistoryStore::append(const RecordedScan& scan) {
    return update([&](std::vector<RecordedScan> scans) {
               scans.push_back(scan);
               return newest(std::move(scans));
           })
        .scans;
}

ScanHistoryStore::Merge ScanHistoryStore::merge(const std::vector<RecordedScan>& added) {
    Merge merge;
    if (added.empty()) return merge;
    const Update result = update([&](const std::vector<RecordedScan>& stored) {
        merge = {};
        std::set<UUID> known;
        for (const RecordedScan& scan : stored)
            known.insert(scan.id);
        std::set<UUID> fresh;
        std::vector<RecordedScan> scans = stored;
        for (const RecordedScan& scan : added)
            if (!known.contains(scan.id) && fresh.insert(scan.id).second) scans.push_back(scan);
        if (!fresh.empty()) scans = newest(std::move(scans));
        merge.taken = static_cast<std::size_t>(std::count_if(
            scans.begin(), scans.end(), [&](const RecordedScan& scan) { return fresh.contains(scan.id); }));
        merge.tooOld = fresh.size() - merge.taken;
        merge.known = added.size() - fresh.size();
        return merge.taken > 0 ? scans : stored;
    });
    merge.isStored = result.isStored;
    return merge;
}

bool ScanHistoryStore::clear() {
    const std::lock_guard guard(mutex_);
    const std::lock_guard hold(folderLock_);
    std::string file = filePath();
    AtomicFile::removeAbandoned(FilePath::parent(FilePath::resolved(file)), std::chrono::seconds(0));
    // The records behind a link go and the link stays, but only a history may be deleted through it.
    if (isLink(file) && readHistory(file).state == Reading::State::readable) file = FilePath::resolved(file);
    bool allGone = isGoneAfterRemoving(file);
    for (const std::string& backup : unreadableBackupPaths())
        allGone &= isGoneAfterRemoving(backup);
    return allGone;
}

std::string ScanHistoryStore::filePath() const { return FilePath::joined(directory_, fileName); }

std::string ScanHistoryStore::unreadableBackupName(UnreadableReason reason, int number) {
    std::string name = "scan-history.unreadable-";
    name += reason == UnreadableReason::version ? "version" : "corrupt";
    if (number > 1) name += "-" + std::to_string(number);
    return name + ".json";
}

std::vector<std::string> ScanHistoryStore::unreadableBackupPaths() const {
    std::vector<std::tuple<UnreadableReason, int, std::string>> backups;
    std::error_code error;
    for (auto entry = std::filesystem::directory_iterator(directory_, error);
         !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        for (const UnreadableReason reason : {UnreadableReason::corrupt, UnreadableReason::version})
            if (const int number = backupNumber(reason, name))
                backups.emplace_back(reason, number, FilePath::joined(directory_, name));
    }
    std::sort(backups.begin(), backups.end());
    std::vector<std::string> paths;
    paths.reserve(backups.size());
    for (auto& [reason, number, path] : backups)
        paths.push_back(std::move(path));
    return paths;
}

std::vector<RecordedScan> ScanHistoryStore::ordered(std::vector<RecordedScan> scans) {
    std::stable_sort(scans.begin(), scans.end(), [](const RecordedScan& left, const RecordedScan& right) {
        if (left.date != right.date) return left.date < right.date;
        const int names = Text::compareCanonically(left.repositoryName, right.repositoryName);
        return names != 0 ? names < 0 : left.id < right.id;
    });
    return scans;
}

} // namespace loadscope
