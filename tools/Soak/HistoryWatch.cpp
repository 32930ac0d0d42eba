// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/HistoryWatch.h"

#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Platform/Text.h"
#include "tools/Soak/Journal.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <variant>

namespace loadscope::soak {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t largestFile = std::size_t{1} << 28;

/// The file holds whole seconds.
constexpr std::chrono::seconds precision{1};

bool isRecordOf(const RecordedScan& record, const std::string& repository, Timestamp begin) {
    // A name that is not UTF-8 is stored in another form.
    const bool isSame = record.repositoryPath == repository || !Text::isValidUTF8(repository);
    return isSame && record.date >= begin - precision;
}

} // namespace

void HistoryWatch::check(const std::vector<RecordedScan>& shown) {
    confirm(shown);
    const std::optional<std::string> bytes = AtomicFile::read(file_, largestFile);
    if (!bytes) {
        if (!confirmed_.empty())
            Journal::current().violated("the history file is gone with " + std::to_string(confirmed_.size()) +
                                        " confirmed records");
        recordCount_ = 0;
        return;
    }
    const auto decoded = ScanHistoryFile::decode(*bytes);
    const auto* stored = std::get_if<std::vector<RecordedScan>>(&decoded);
    if (stored == nullptr) {
        if (!mayBeBroken_ || !confirmed_.empty())
            Journal::current().violated("the history file cannot be read; it begins with: " +
                                        bytes->substr(0, 300));
        return;
    }
    mayBeBroken_ = false;
    recordCount_ = stored->size();
    requireConfirmed(*stored);
    confirm(*stored);
}

void HistoryWatch::requireConfirmed(const std::vector<RecordedScan>& stored) {
    if (stored.size() > ScanHistoryStore::maximumScans)
        Journal::current().violated("the history file holds " + std::to_string(stored.size()) + " records");
    std::set<std::string> identifiers;
    Timestamp oldest = Timestamp::max();
    for (const RecordedScan& record : stored) {
        if (!identifiers.insert(record.id.text()).second)
            Journal::current().violated("a record is stored twice: " + record.id.text());
        oldest = std::min(oldest, record.date);
    }
    if (stored.size() == ScanHistoryStore::maximumScans)
        std::erase_if(confirmed_, [&](const auto& entry) { return entry.second <= oldest + precision; });
    for (const auto& [identifier, date] : confirmed_) {
        if (!identifiers.contains(identifier))
            Journal::current().violated("the confirmed record " + identifier + " of " +
                                        ScanHistoryFile::iso8601(date) + " is gone; " +
                                        std::to_string(stored.size()) + " are stored");
    }
}

void HistoryWatch::confirm(const std::vector<RecordedScan>& records) {
    for (const RecordedScan& record : records) {
        if (!isDisturbedSince(record.date)) confirmed_.try_emplace(record.id.text(), record.date);
    }
}

bool HistoryWatch::isDisturbedSince(Timestamp time) const {
    return clearing_ > 0 || time <= disturbedAt_ + precision;
}

void HistoryWatch::cleared() {
    disturbedAt_ = std::chrono::system_clock::now();
    confirmed_.clear();
}

void HistoryWatch::clearingBegins() {
    ++clearing_;
    confirmed_.clear();
}

void HistoryWatch::clearingEnds() {
    --clearing_;
    cleared();
}

void HistoryWatch::expectRecorded(const std::vector<RecordedScan>& records, const std::string& repository,
                                  Timestamp begin) {
    if (isDisturbedSince(begin)) return;
    if (std::ranges::none_of(records,
                             [&](const auto& record) { return isRecordOf(record, repository, begin); }))
        Journal::current().violated("a scan that ended well is not in the history: " + repository);
}

void HistoryWatch::expectStored(const std::string& repository, Timestamp begin) {
    if (isDisturbedSince(begin)) return;
    const auto decoded = ScanHistoryFile::decode(AtomicFile::read(file_, largestFile).value_or(""));
    const auto* stored = std::get_if<std::vector<RecordedScan>>(&decoded);
    expectRecorded(stored != nullptr ? *stored : std::vector<RecordedScan>(), repository, begin);
}

void HistoryWatch::checkFolder() const {
    int unknown = 0;
    std::string names;
    std::error_code error;
    for (fs::directory_iterator entry(fs::path(file_).parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name == ScanHistoryStore::fileName || name.starts_with("scan-history.unreadable-")) continue;
        ++unknown;
        names += ' ' + name;
    }
    if (unknown > killedWriters_) Journal::current().violated("left in the folder of the history:" + names);
}

} // namespace loadscope::soak
