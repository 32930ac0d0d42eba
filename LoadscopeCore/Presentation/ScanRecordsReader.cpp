// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanRecordsReader.h"

#include "LoadscopeCore/History/PathBytes.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Platform/InternetDate.h"
#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace loadscope::ScanRecordsReader {
namespace {

using ScanReportReader::Unreadable;
using Result = std::variant<Contents, Unreadable>;

const Json::Value* given(const Json::Value& object, std::string_view key) {
    const Json::Value* value = Json::member(object, key);
    return value != nullptr && !value->is_null() ? value : nullptr;
}

std::optional<std::string> text(const Json::Value& object, std::string_view key) {
    const Json::Value* value = given(object, key);
    return value != nullptr && value->is_string() ? std::optional(value->get<std::string>()) : std::nullopt;
}

bool isTrue(const Json::Value& object, std::string_view key) {
    const Json::Value* value = given(object, key);
    return value != nullptr && value->is_boolean() && value->get<bool>();
}

/// No count is negative.
bool hasPlausibleCounts(const RecordedScan& scan) {
    return scan.total >= 0 && scan.contextWindow.value_or(0) >= 0 &&
           std::all_of(scan.categories.begin(), scan.categories.end(),
                       [](const RecordedCategory& category) { return category.tokens >= 0; });
}

// MARK: Histories

Result readHistory(const Json::Value& object, const Json::Value& list) {
    const Json::Value* const versionMember = Json::member(object, "version");
    const auto version = Json::integral(versionMember);
    if (versionMember != nullptr && version != ScanHistoryFile::schemaVersion)
        return Unreadable{"is a history of another version of Loadscope."};
    Contents contents;
    for (const Json::Value& item : list) {
        std::optional<RecordedScan> scan = ScanHistoryFile::record(item);
        if (!scan || !hasPlausibleCounts(*scan))
            return Unreadable{"is a history of which record " + std::to_string(contents.scans.size() + 1) +
                              " cannot be read."};
        contents.scans.push_back(RecordedScan::recordable(*std::move(scan)));
    }
    return contents;
}

// MARK: Reports

/// What one report says of its records. `problem` ends a sentence that begins with the file's name.
struct ReportReading {
    Contents contents;
    std::string problem;

    void add(RecordedScan scan, const Json::Value& source);
    [[nodiscard]] bool readPlace(const Json::Value& report, RecordedScan& scan);
    [[nodiscard]] bool readFigures(const Json::Value& source, RecordedScan& scan);
    [[nodiscard]] bool readCategories(const Json::Value& report, RecordedScan& scan);
};

RecordedScan emptyRecord() { return {UUID::derived(""), "", "", {}, 0, {}, RecordedScan::claudeTool, {}}; }

/// The folder and the date, which both tools share.
bool ReportReading::readPlace(const Json::Value& report, RecordedScan& scan) {
    const auto name = text(report, "repositoryName");
    const auto path = text(report, "repositoryPath");
    if (!name || !path || path->empty()) {
        problem = "does not tell the folder that was measured.";
        return false;
    }
    const auto dateText = text(report, "date");
    const auto date = dateText ? InternetDate::parse(*dateText) : std::nullopt;
    if (!date) {
        problem = dateText ? "has a \"date\" that cannot be read."
                           : "has no \"date\", without which it has no place in the history.";
        return false;
    }
    scan.repositoryName = *name;
    scan.repositoryPath = PathBytes::path(*path, text(report, "repositoryPathBytes"));
    scan.date = *date;
    return true;
}

bool ReportReading::readFigures(const Json::Value& source, RecordedScan& scan) {
    const auto total = Json::integral(Json::member(source, "total"));
    const Json::Value* const window = given(source, "contextWindow");
    scan.contextWindow = Json::integral(window);
    scan.toolVersion = text(source, "toolVersion");
    scan.model = text(source, "model");
    scan.total = total.value_or(0);
    if (total && scan.contextWindow.has_value() == (window != nullptr) && hasPlausibleCounts(scan))
        return true;
    problem = "has a \"total\" or a \"contextWindow\" that cannot be read.";
    return false;
}

bool ReportReading::readCategories(const Json::Value& report, RecordedScan& scan) {
    const Json::Value* const rows = Json::member(report, "rows");
    bool isReadable = rows != nullptr && rows->is_array();
    for (std::size_t i = 0; isReadable && i < rows->size(); ++i) {
        const auto name = text((*rows)[i], "name");
        const auto tokens = Json::integral(Json::member((*rows)[i], "tokens"));
        isReadable = name && tokens && *tokens >= 0;
        if (isReadable) scan.categories.push_back({*name, *tokens});
    }
    if (!isReadable) problem = "has no \"rows\" that can be read.";
    return isReadable;
}

void ReportReading::add(RecordedScan scan, const Json::Value& source) {
    scan = RecordedScan::recordable(std::move(scan));
    if (given(source, "id") == nullptr) {
        scan.id = UUID::derived(ScanHistoryFile::encode({scan}));
    } else if (const auto id = UUID::parse(text(source, "id").value_or(""))) {
        scan.id = *id;
    } else {
        problem = "has an \"id\" that is none.";
        return;
    }
    contents.scans.push_back(std::move(scan));
}

Result readReport(const Json::Value& report) {
    const Json::Value* const codex = Json::objectMember(report, "codex");
    const std::string status = codex != nullptr ? text(*codex, "status").value_or("") : "";
    if (status == "estimated" && given(report, "total") == nullptr) return Contents{{}, 1};
    if (auto objection = ScanReportReader::objection(report)) return *std::move(objection);
    ReportReading reading;
    RecordedScan place = emptyRecord();
    if (!reading.readPlace(report, place)) return Unreadable{reading.problem};
    RecordedScan claude = place;
    if (isTrue(report, "estimated"))
        reading.contents.estimates = 1;
    else if (reading.readFigures(report, claude) && reading.readCategories(report, claude))
        reading.add(std::move(claude), report);
    if (status == "measured" && reading.problem.empty()) {
        place.tool = RecordedScan::codexTool;
        if (reading.readFigures(*codex, place)) reading.add(std::move(place), *codex);
    }
    if (!reading.problem.empty()) return Unreadable{reading.problem};
    return std::move(reading.contents);
}

/// Of the object of several folders: those that failed have nothing to take.
Result readReports(const Json::Value& reports) {
    Contents all;
    for (const Json::Value& report : reports) {
        if (Json::objectMember(report, "error") != nullptr) continue;
        Result result = readReport(report);
        if (std::holds_alternative<Unreadable>(result)) return result;
        auto& contents = std::get<Contents>(result);
        all.scans.insert(all.scans.end(), std::make_move_iterator(contents.scans.begin()),
                         std::make_move_iterator(contents.scans.end()));
        all.estimates += contents.estimates;
    }
    return all;
}

} // namespace

Result read(std::string_view json) {
    if (json.size() > Json::maximumSize) return Unreadable{"is larger than a report can be (16 MB)."};
    if (Text::trimmed(json).empty()) return Unreadable{"is empty."};
    const auto object = Json::parseObject(json);
    if (!object) return Unreadable{"is not a JSON object."};
    if (const Json::Value* const reports = given(*object, "reports"); reports && reports->is_array())
        return readReports(*reports);
    const Json::Value* const scans = Json::member(*object, "scans");
    return scans != nullptr && scans->is_array() ? readHistory(*object, *scans) : readReport(*object);
}

} // namespace loadscope::ScanRecordsReader
