// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/HistoryTransfer.h"

#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/InputFile.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/ScanRecordsReader.h"

#include <cstddef>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace loadscope {
namespace {

using ScanRecordsReader::Contents;
using ScanReportReader::Unreadable;

std::variant<Contents, Unreadable> readFile(const std::string& path) {
    const auto text = InputFile::read(path);
    if (const auto* unreadable = std::get_if<InputFile::Unreadable>(&text))
        return Unreadable{unreadable->reason};
    return ScanRecordsReader::read(std::get<std::string>(text));
}

std::string counted(std::size_t number, const char* one, const char* many) {
    return LocaleFormat::grouped(static_cast<std::int64_t>(number)) + ' ' + (number == 1 ? one : many);
}

/// "Took 3 scans; 2 were there already.", and what else there is to tell.
std::string summary(const ScanHistoryStore::Merge& merge, std::size_t estimates) {
    std::string text = "Took " + counted(merge.taken, "scan", "scans") + "; " +
                       counted(merge.known, "was", "were") + " there already.";
    if (merge.tooOld > 0)
        text += ' ' + counted(merge.tooOld, "is", "are") + " older than the " +
                std::to_string(ScanHistoryStore::maximumScans) + " that are kept.";
    if (estimates > 0)
        text += ' ' + counted(estimates, "total is", "totals are") + " an estimate, which is never recorded.";
    return text + '\n';
}

} // namespace

ExitCode importHistory(const std::vector<std::string>& files) {
    Terminal errors(STDERR_FILENO);
    std::vector<RecordedScan> scans;
    std::size_t estimates = 0;
    std::size_t unreadableFiles = 0;
    for (const std::string& file : files) {
        auto read = readFile(file);
        if (const auto* unreadable = std::get_if<Unreadable>(&read)) {
            showFailure(errors,
                        Text::visible(InputFile::nameOf(file)) + ' ' + Text::visible(unreadable->reason), "");
            ++unreadableFiles;
            continue;
        }
        auto& contents = std::get<Contents>(read);
        estimates += contents.estimates;
        scans.insert(scans.end(), std::make_move_iterator(contents.scans.begin()),
                     std::make_move_iterator(contents.scans.end()));
    }
    ScanHistoryStore store(ScanHistoryStore::defaultDirectory());
    const ScanHistoryStore::Merge merge = store.merge(scans);
    if (!merge.isStored) {
        showFailure(errors, "The history could not be written; nothing was taken.",
                    Text::visible(store.filePath()));
        return ExitCode::failure;
    }
    std::string text = summary(merge, estimates);
    if (unreadableFiles > 0) text += counted(unreadableFiles, "file", "files") + " could not be read.\n";
    return writeResult(text, unreadableFiles > 0 ? ExitCode::failure : ExitCode::success);
}

ExitCode exportHistory(const std::string& file) {
    Terminal errors(STDERR_FILENO);
    ScanHistoryStore store(ScanHistoryStore::defaultDirectory());
    const std::vector<RecordedScan> scans = store.load();
    if (file.empty()) return writeResult(ScanHistoryFile::encode(scans) + '\n');
    const std::string name = Text::visible(file);
    if (scans.empty()) {
        showFailure(errors, "No scans recorded; " + name + " was left as it is.", "");
        return ExitCode::failure;
    }
    std::error_code error;
    if (std::filesystem::equivalent(file, store.filePath(), error)) {
        showFailure(errors, name + " is the history itself.", "");
        return ExitCode::wrongUsage;
    }
    if (!AtomicFile::write(file, ScanHistoryFile::encode(scans))) {
        showFailure(errors, name + " could not be written.", "");
        return ExitCode::failure;
    }
    return ExitCode::success;
}

} // namespace loadscope
