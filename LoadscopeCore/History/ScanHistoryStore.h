// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/History/FolderLock.h"
#include "LoadscopeCore/History/RecordedScan.h"

#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace loadscope {

/// Owns the file `scan-history.json`: reads it, appends to it, trims and clears it. Keeps no copy in memory,
/// so records of other processes survive; an advisory lock on the folder (bounded wait) keeps two writers
/// from losing each other's records. Failures are silent and never lose what was stored: an unreadable file
/// is moved aside before a new one is written. May be called from any thread.
class ScanHistoryStore {
public:
    static constexpr std::size_t maximumScans = 200;
    static constexpr const char* fileName = "scan-history.json";
    static constexpr const char* directoryName = "Loadscope";

    enum class UnreadableReason { corrupt, version };

    /// Creates nothing and reads nothing.
    explicit ScanHistoryStore(std::string directory);
    virtual ~ScanHistoryStore() = default;
    ScanHistoryStore(const ScanHistoryStore&) = delete;
    ScanHistoryStore& operator=(const ScanHistoryStore&) = delete;

    /// The user's folder for application data (else the temporary folder) with `directoryName`. Creates
    /// nothing.
    [[nodiscard]] static std::string defaultDirectory();

    /// The records in the store's order; empty when there is no file or it is unreadable. An unreadable file
    /// is moved to the backup of its reason, or stays where it is when there is such a backup already.
    [[nodiscard]] virtual std::vector<RecordedScan> load();

    /// Adds a record, drops the oldest beyond `maximumScans`, writes the file and returns the new list (also
    /// when it could not be written). An unreadable file is first moved to the next free name; when it cannot
    /// be moved, nothing is written.
    virtual std::vector<RecordedScan> append(const RecordedScan& scan);

    /// What became of records that were to be merged.
    struct Merge {
        std::size_t taken = 0;
        std::size_t known = 0;  ///< a record with the identifier was there already
        std::size_t tooOld = 0; ///< not among the newest `maximumScans`
        bool isStored = true;   ///< the file could be written, or nothing was to be
    };

    /// Adds the records whose identifiers are not there yet, as `append` would, but with one writing.
    Merge merge(const std::vector<RecordedScan>& scans);

    /// Deletes the file and every unreadable file set aside. True when all that was there is gone. A folder
    /// is deleted only when empty. Of a history behind a symbolic link the target is deleted and the link
    /// stays; any other link goes and its target stays.
    virtual bool clear();

    [[nodiscard]] const std::string& directory() const { return directory_; }
    [[nodiscard]] std::string filePath() const;

    /// Name under which an unreadable file is set aside; from `number` 2 on with that number before the
    /// extension.
    [[nodiscard]] static std::string unreadableBackupName(UnreadableReason reason, int number = 1);

    /// Paths of the unreadable files set aside so far.
    [[nodiscard]] std::vector<std::string> unreadableBackupPaths() const;

    /// Ascending by date, then repository name, then identifier.
    [[nodiscard]] static std::vector<RecordedScan> ordered(std::vector<RecordedScan> scans);

private:
    struct Update {
        std::vector<RecordedScan> scans;
        bool isStored = false;
    };
    using Change = std::function<std::vector<RecordedScan>(const std::vector<RecordedScan>&)>;

    /// Writes what `change`, which may be asked more than once, makes of the records; nothing when it leaves
    /// them as they are.
    Update update(const Change& change);

    std::string directory_;
    std::mutex mutex_;
    FolderLock folderLock_; ///< used while `mutex_` is held
};

} // namespace loadscope
