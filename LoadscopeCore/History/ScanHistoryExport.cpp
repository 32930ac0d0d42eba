// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryExport.h"

#include "LoadscopeCore/History/PathBytes.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Platform/Csv.h"

#include <nlohmann/json.hpp>

namespace loadscope::ScanHistoryExport {
namespace {

using Object = nlohmann::ordered_json;

constexpr const char* endOfLine = "\r\n";

Object scanObject(const RecordedScan& scan) {
    Object object{{"band", OpinionBands::rawValue(scan.band())}, {"categories", Object::array()}};
    for (const RecordedCategory& category : scan.categories)
        object["categories"].push_back({{"name", category.name}, {"tokens", category.tokens}});
    if (scan.contextWindow) object["contextWindow"] = *scan.contextWindow;
    object["date"] = ScanHistoryFile::iso8601(scan.date);
    object["id"] = scan.id.text();
    if (scan.model) object["model"] = *scan.model;
    object["repositoryName"] = scan.repositoryName;
    object["repositoryPath"] = scan.repositoryPath;
    if (const auto bytes = PathBytes::encoded(scan.repositoryPath)) object["repositoryPathBytes"] = *bytes;
    object["tool"] = scan.tool;
    if (scan.toolVersion) object["toolVersion"] = *scan.toolVersion;
    object["total"] = scan.total;
    return object;
}

const char* name(TrendDirection trend) {
    switch (trend) {
    case TrendDirection::up:
        return "up";
    case TrendDirection::down:
        return "down";
    case TrendDirection::flat:
        break;
    }
    return "flat";
}

template <typename Value>
Object orNull(const std::optional<Value>& value) {
    return value ? Object(*value) : Object(nullptr);
}

std::string dumped(const Object& object) {
    return object.dump(2, ' ', false, Object::error_handler_t::replace);
}

} // namespace

std::string csv(const std::vector<RecordedScan>& scans) {
    std::string table = "date,repositoryName,repositoryPath,tool,total,contextWindow,band,toolVersion,model";
    table += endOfLine;
    for (const RecordedScan& scan : scans) {
        table += ScanHistoryFile::iso8601(scan.date) + ',';
        table += Csv::cell(scan.repositoryName) + ',' + Csv::cell(scan.repositoryPath) + ',' +
                 Csv::cell(scan.tool) + ',';
        table += std::to_string(scan.total) + ',';
        if (scan.contextWindow) table += std::to_string(*scan.contextWindow);
        table += ',' + OpinionBands::rawValue(scan.band()) + ',' + Csv::cell(scan.toolVersion.value_or("")) +
                 ',' + Csv::cell(scan.model.value_or("")) + endOfLine;
    }
    return table;
}

std::string json(const std::vector<RecordedScan>& scans) {
    Object list = Object::array();
    for (const RecordedScan& scan : scans)
        list.push_back(scanObject(scan));
    return dumped({{"scans", std::move(list)}});
}

std::string leaderboardJson(std::string_view tool, const std::vector<LeaderboardEntry>& entries) {
    Object list = Object::array();
    for (const LeaderboardEntry& entry : entries) {
        const std::optional<TrendDirection> trend = entry.trend();
        list.push_back({{"repositoryName", entry.latest.repositoryName},
                        {"repositoryPath", entry.latest.repositoryPath},
                        {"total", entry.latest.total},
                        {"previousTotal", orNull(entry.previousTotal)},
                        {"model", orNull(entry.latest.model)},
                        {"previousModel", orNull(entry.previousModel)},
                        {"scanCount", entry.scanCount},
                        {"trend", trend ? Object(name(*trend)) : Object(nullptr)},
                        {"delta", orNull(entry.delta())}});
    }
    return dumped({{"tool", std::string(tool)}, {"entries", std::move(list)}});
}

} // namespace loadscope::ScanHistoryExport
