// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// What may happen to the history file from outside.
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "tools/Soak/HistoryWatch.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <sys/stat.h>
#include <utility>

namespace loadscope::soak {
namespace {

namespace fs = std::filesystem;

std::string contents(const std::string& file) {
    return AtomicFile::read(file, std::size_t{1} << 28).value_or("");
}

void overwrite(const std::string& file, std::string_view bytes) {
    std::error_code error;
    if (fs::is_fifo(file, error)) return;
    std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

void removeAll(const std::string& path) {
    std::error_code error;
    fs::remove_all(path, error);
}

/// A whole file of records of other folders, from a year ago.
std::string invented(Dice& dice) {
    std::vector<RecordedScan> records;
    const auto lastYear = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()) -
                          std::chrono::hours(24 * 365);
    for (int number = dice.below(static_cast<int>(ScanHistoryStore::maximumScans) + 1); number > 0;
         --number) {
        const std::string name = "invented-" + std::to_string(dice.below(12));
        records.push_back(
            {.id = UUID::generate(),
             .repositoryName = name,
             .repositoryPath = "/src/" + name,
             .date = lastYear + std::chrono::hours(dice.below(8000)),
             .total = dice.below(400'000),
             .categories = {{"System prompt", dice.below(90'000)}, {"Skills", dice.below(9'000)}},
             .tool = dice.oneIn(3) ? RecordedScan::codexTool : RecordedScan::claudeTool,
             .contextWindow = dice.oneIn(4) ? std::nullopt : std::optional<std::int64_t>(200'000)});
    }
    return ScanHistoryFile::encode(records);
}

using Tampering = std::function<void(const std::string& file, Dice& dice)>;

const std::vector<std::pair<const char*, Tampering>>& tamperings() {
    static const std::vector<std::pair<const char*, Tampering>> all{
        {"deleted", [](const std::string& file, Dice&) { removeAll(file); }},
        {"folder deleted",
         [](const std::string& file, Dice&) { removeAll(fs::path(file).parent_path().string()); }},
        {"emptied", [](const std::string& file, Dice&) { overwrite(file, ""); }},
        {"cut short",
         [](const std::string& file, Dice& dice) {
             const std::string bytes = contents(file);
             overwrite(file, std::string_view(bytes).substr(
                                 0, static_cast<std::size_t>(dice.below(static_cast<int>(bytes.size())))));
         }},
        {"one byte changed",
         [](const std::string& file, Dice& dice) {
             std::string bytes = contents(file);
             if (!bytes.empty()) dice.pick(bytes) = static_cast<char>(dice.below(256));
             overwrite(file, bytes);
         }},
        {"replaced by bytes",
         [](const std::string& file, Dice& dice) {
             std::string bytes(static_cast<std::size_t>(dice.below(5000)), '\0');
             for (char& byte : bytes)
                 byte = static_cast<char>(dice.below(256));
             overwrite(file, bytes);
         }},
        {"of a newer version",
         [](const std::string& file, Dice&) { overwrite(file, R"({"schemaVersion": 2, "scans": []})"); }},
        {"invented records", [](const std::string& file, Dice& dice) { overwrite(file, invented(dice)); }},
        {"replaced by a folder",
         [](const std::string& file, Dice& dice) {
             removeAll(file);
             std::error_code error;
             fs::create_directories(file + (dice.oneIn(2) ? "" : "/inside"), error);
         }},
        {"replaced by a pipe",
         [](const std::string& file, Dice&) {
             removeAll(file);
             mkfifo(file.c_str(), 0600);
         }},
        {"replaced by a link",
         [](const std::string& file, Dice& dice) {
             removeAll(file);
             const std::string home = fs::path(file).parent_path().parent_path().string();
             const std::string targets[] = {home + "/elsewhere.json", file, home + "/not-yet-there.json"};
             std::error_code error;
             if (dice.oneIn(2)) overwrite(targets[0], invented(dice));
             fs::create_symlink(targets[dice.below(3)], file, error);
         }},
    };
    return all;
}

} // namespace

std::string HistoryWatch::tamper(Dice& dice) {
    const auto& [name, apply] = dice.pick(tamperings());
    std::error_code error;
    fs::create_directories(fs::path(file_).parent_path(), error);
    // A folder or a link is taken away first, so that writing cannot reach anything else.
    if (!fs::is_regular_file(fs::symlink_status(file_, error))) removeAll(file_);
    apply(file_, dice);
    mayBeBroken_ = true;
    cleared();
    return name;
}

} // namespace loadscope::soak
