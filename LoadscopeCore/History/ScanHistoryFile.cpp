// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryFile.h"

#include "LoadscopeCore/History/PathBytes.h"
#include "LoadscopeCore/Platform/InternetDate.h"
#include "LoadscopeCore/Platform/Json.h"

#include <algorithm>
#include <chrono>
#include <nlohmann/json.hpp>

namespace loadscope::ScanHistoryFile {
namespace {

// MARK: Reading

const std::string* text(const Json::Value& object, std::string_view key) {
    const Json::Value* value = Json::member(object, key);
    return value ? value->get_ptr<const std::string*>() : nullptr;
}

const Json::Value* array(const Json::Value& object, std::string_view key) {
    const Json::Value* value = Json::member(object, key);
    return value && value->is_array() ? value : nullptr;
}

std::optional<std::vector<RecordedCategory>> decodedCategories(const Json::Value& scan) {
    const Json::Value* list = array(scan, "categories");
    if (!list) return std::nullopt;
    std::vector<RecordedCategory> categories;
    categories.reserve(list->size());
    for (const Json::Value& item : *list) {
        const std::string* name = text(item, "name");
        const std::optional<std::int64_t> tokens = Json::integral(Json::member(item, "tokens"));
        if (!name || !tokens) return std::nullopt;
        categories.push_back({*name, *tokens});
    }
    return categories;
}

/// The member's value; null when there is none or it is null, which means the same.
const Json::Value* given(const Json::Value& object, std::string_view key) {
    const Json::Value* value = Json::member(object, key);
    return value && !value->is_null() ? value : nullptr;
}

/// Reads a text that may be absent. False when something else stands in its place.
bool readIfGiven(const Json::Value& object, std::string_view key, std::optional<std::string>& place) {
    if (!given(object, key)) return true;
    if (const std::string* value = text(object, key)) place = *value;
    return place.has_value();
}

std::optional<RecordedScan> decodedScan(const Json::Value& scan) {
    const std::string* name = text(scan, "repositoryName");
    const std::string* path = text(scan, "repositoryPath");
    const std::string* dateText = text(scan, "date");
    const std::string* idText = text(scan, "id");
    if (!name || !path || !dateText || !idText) return std::nullopt;
    const std::optional<Timestamp> date = InternetDate::parse(*dateText);
    std::optional<UUID> id = UUID::parse(*idText);
    std::optional<std::vector<RecordedCategory>> categories = decodedCategories(scan);
    const std::optional<std::int64_t> total = Json::integral(Json::member(scan, "total"));
    if (!date || !id || !categories || !total) return std::nullopt;
    const Json::Value* window = given(scan, "contextWindow");
    const std::optional<std::int64_t> contextWindow = Json::integral(window);
    if (window && !contextWindow) return std::nullopt;
    std::optional<std::string> tool;
    std::optional<std::string> toolVersion;
    std::optional<std::string> model;
    std::optional<std::string> pathBytes;
    if (!readIfGiven(scan, "tool", tool) || !readIfGiven(scan, "toolVersion", toolVersion) ||
        !readIfGiven(scan, "model", model) || !readIfGiven(scan, "repositoryPathBytes", pathBytes))
        return std::nullopt;
    return RecordedScan{.id = *std::move(id),
                        .repositoryName = *name,
                        .repositoryPath = PathBytes::path(*path, pathBytes),
                        .date = *date,
                        .total = *total,
                        .categories = *std::move(categories),
                        .tool = std::move(tool).value_or(RecordedScan::claudeTool),
                        .contextWindow = contextWindow,
                        .toolVersion = std::move(toolVersion),
                        .model = std::move(model)};
}

// MARK: Writing

std::string jsonText(std::string_view value) {
    const std::string dumped =
        Json::Value(std::string(value)).dump(-1, ' ', false, Json::Value::error_handler_t::replace);
    std::string escaped;
    escaped.reserve(dumped.size() + 8);
    for (const char character : dumped) {
        if (character == '/') escaped += '\\';
        escaped += character;
    }
    return escaped;
}

void appendCategories(std::string& file, const std::vector<RecordedCategory>& categories) {
    file += "[";
    for (std::size_t index = 0; index < categories.size(); ++index) {
        file += index == 0 ? "\n        {\n" : ",\n        {\n";
        file += "          \"name\" : " + jsonText(categories[index].name) + ",\n";
        file += "          \"tokens\" : " + std::to_string(categories[index].tokens) + "\n        }";
    }
    file += categories.empty() ? "]" : "\n      ]";
}

void appendMember(std::string& file, const char* key, const std::string& value) {
    file.append(",\n      \"").append(key).append("\" : ").append(value);
}

void appendScan(std::string& file, const RecordedScan& scan) {
    file += "    {\n      \"categories\" : ";
    appendCategories(file, scan.categories);
    if (scan.contextWindow) appendMember(file, "contextWindow", std::to_string(*scan.contextWindow));
    appendMember(file, "date", jsonText(iso8601(scan.date)));
    appendMember(file, "id", jsonText(scan.id.text()));
    if (scan.model) appendMember(file, "model", jsonText(*scan.model));
    appendMember(file, "repositoryName", jsonText(scan.repositoryName));
    appendMember(file, "repositoryPath", jsonText(scan.repositoryPath));
    if (const auto bytes = PathBytes::encoded(scan.repositoryPath))
        appendMember(file, "repositoryPathBytes", jsonText(*bytes));
    appendMember(file, "tool", jsonText(scan.tool));
    if (scan.toolVersion) appendMember(file, "toolVersion", jsonText(*scan.toolVersion));
    appendMember(file, "total", std::to_string(scan.total));
    file += "\n    }";
}

} // namespace

std::optional<RecordedScan> record(const Json::Value& object) { return decodedScan(object); }

std::variant<std::vector<RecordedScan>, Unreadable> decode(std::string_view file) {
    const std::optional<Json::Value> root = Json::parse(file, Json::Extent::any);
    if (!root || !root->is_object()) return Unreadable::corrupt;
    const std::optional<std::int64_t> version = Json::integral(Json::member(*root, "version"));
    if (!version) return Unreadable::corrupt;
    // Before the records: a later version may lay them out in another way.
    if (*version != schemaVersion) return Unreadable::version;
    const Json::Value* list = array(*root, "scans");
    if (!list) return Unreadable::corrupt;
    std::vector<RecordedScan> scans;
    scans.reserve(list->size());
    for (const Json::Value& item : *list) {
        std::optional<RecordedScan> scan = decodedScan(item);
        if (!scan) return Unreadable::corrupt;
        scans.push_back(*std::move(scan));
    }
    return scans;
}

std::string encode(const std::vector<RecordedScan>& scans) {
    std::string file = "{\n  \"scans\" : [";
    for (std::size_t index = 0; index < scans.size(); ++index) {
        file += index == 0 ? "\n" : ",\n";
        appendScan(file, scans[index]);
    }
    file += scans.empty() ? "]" : "\n  ]";
    file += ",\n  \"version\" : " + std::to_string(schemaVersion) + "\n}";
    return file;
}

std::string iso8601(Timestamp time) { return InternetDate::text(time); }

} // namespace loadscope::ScanHistoryFile
