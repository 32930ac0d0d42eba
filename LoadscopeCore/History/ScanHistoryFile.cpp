// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryFile.h"

#include "LoadscopeCore/History/PathBytes.h"
#include "LoadscopeCore/Platform/Json.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <nlohmann/json.hpp>

namespace loadscope::ScanHistoryFile {
namespace {

using std::chrono::floor;
using std::chrono::seconds;
using std::chrono::sys_seconds;

// MARK: Dates

void appendPadded(std::string& text, std::int64_t number, int width) {
    std::array<char, 20> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    const auto length = end - digits.data();
    if (length < width) text.append(static_cast<std::size_t>(width - length), '0');
    text.append(digits.data(), end);
}

/// The number that exactly these digits write, or -1.
int decimal(std::string_view digits) {
    int number = 0;
    for (const char digit : digits) {
        if (digit < '0' || digit > '9') return -1;
        number = number * 10 + (digit - '0');
    }
    return number;
}

/// "Z", "+HH:MM" or "-HH:MM" as the time that the zone is ahead of UTC.
std::optional<seconds> zoneOffset(std::string_view zone) {
    if (zone == "Z") return seconds(0);
    if (zone.size() != 6 || (zone[0] != '+' && zone[0] != '-') || zone[3] != ':') return std::nullopt;
    const int hours = decimal(zone.substr(1, 2));
    const int minutes = decimal(zone.substr(4, 2));
    if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59) return std::nullopt;
    const seconds ahead = std::chrono::hours(hours) + std::chrono::minutes(minutes);
    return zone[0] == '-' ? -ahead : ahead;
}

std::optional<sys_seconds> dateAndTime(std::string_view text) {
    constexpr std::string_view shape = "0000-00-00T00:00:00";
    if (text.size() != shape.size()) return std::nullopt;
    for (std::size_t index = 0; index < shape.size(); ++index)
        if (shape[index] != '0' && shape[index] != text[index]) return std::nullopt;
    const int year = decimal(text.substr(0, 4));
    const int month = decimal(text.substr(5, 2));
    const int day = decimal(text.substr(8, 2));
    const int hour = decimal(text.substr(11, 2));
    const int minute = decimal(text.substr(14, 2));
    const int second = decimal(text.substr(17, 2));
    if (std::min({year, month, day, hour, minute, second}) < 0) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(year),
                                           std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return std::chrono::sys_days(date) + std::chrono::hours(hour) + std::chrono::minutes(minute) +
           seconds(second);
}

std::optional<Timestamp> parsedDate(std::string_view text) {
    constexpr std::size_t zoneStart = 19;
    if (text.size() <= zoneStart) return std::nullopt;
    const std::optional<sys_seconds> local = dateAndTime(text.substr(0, zoneStart));
    const std::optional<seconds> offset = zoneOffset(text.substr(zoneStart));
    if (!local || !offset) return std::nullopt;
    const sys_seconds time = *local - *offset;
    // The clock counts finer than seconds, so it covers fewer years than the text can name.
    if (time <= floor<seconds>(Timestamp::min()) || time >= floor<seconds>(Timestamp::max()))
        return std::nullopt;
    return Timestamp(time);
}

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
    const std::optional<Timestamp> date = parsedDate(*dateText);
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

std::string iso8601(Timestamp time) {
    const sys_seconds whole = floor<seconds>(time);
    const auto day = floor<std::chrono::days>(whole);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(whole - day);
    std::string text;
    const auto append = [&text](char before, std::int64_t number) {
        text += before;
        appendPadded(text, number, 2);
    };
    appendPadded(text, static_cast<int>(date.year()), 4);
    append('-', static_cast<unsigned>(date.month()));
    append('-', static_cast<unsigned>(date.day()));
    append('T', clock.hours().count());
    append(':', clock.minutes().count());
    append(':', clock.seconds().count());
    return text + 'Z';
}

} // namespace loadscope::ScanHistoryFile
