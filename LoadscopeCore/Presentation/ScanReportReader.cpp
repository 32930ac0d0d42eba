// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanReportReader.h"

#include "LoadscopeCore/Platform/InternetDate.h"
#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Platform/Text.h"

#include <array>
#include <nlohmann/json.hpp>
#include <utility>

namespace loadscope::ScanReportReader {
namespace {

constexpr std::int64_t knownVersion = 1;
constexpr std::int64_t noTokens = 0;

std::optional<std::string> text(const Json::Value& object, std::string_view key) {
    const Json::Value* value = Json::member(object, key);
    if (value == nullptr || !value->is_string()) return std::nullopt;
    return value->get<std::string>();
}

/// A count is never negative.
std::optional<std::int64_t> tokens(const Json::Value& object, std::string_view key) {
    const auto number = Json::integral(Json::member(object, key));
    return number && *number >= noTokens ? number : std::nullopt;
}

/// The elements of a member that is an array of objects.
std::vector<const Json::Value*> objects(const Json::Value& object, std::string_view key) {
    std::vector<const Json::Value*> found;
    const Json::Value* list = Json::member(object, key);
    if (list == nullptr || !list->is_array()) return found;
    for (const Json::Value& element : *list)
        if (element.is_object()) found.push_back(&element);
    return found;
}

template <typename Value, std::size_t count>
std::optional<Value> named(const std::optional<std::string>& name, const std::array<Value, count>& values) {
    for (const Value value : values)
        if (name && rawValue(value) == *name) return value;
    return std::nullopt;
}

std::vector<ScanMeasurement::Category> categories(const Json::Value& report) {
    constexpr std::array provenances{Provenance::claudeReported, Provenance::selfReported,
                                     Provenance::localEstimate, Provenance::remainder};
    std::vector<ScanMeasurement::Category> found;
    for (const Json::Value* row : objects(report, "rows")) {
        const auto name = text(*row, "name");
        const auto count = tokens(*row, "tokens");
        if (name && count) found.push_back({*name, *count, named(text(*row, "provenance"), provenances)});
    }
    return found;
}

/// Reads the members, of which there may be thousands, while the document is parsed.
class MemberReader : public Json::ElementReader {
public:
    static constexpr const char* outerKey = "details";
    static constexpr const char* innerKey = "members";

    void beginList() override { members_.clear(); }

    void field(std::string_view key, Json::Value value) override {
        if (key == "tokens") {
            count_ = Json::integral(&value);
            return;
        }
        for (auto& [name, place] : texts_) {
            if (key != name) continue;
            place.reset();
            if (value.is_string()) place = std::move(value.get_ref<std::string&>());
        }
    }

    void endElement() override {
        if (name_ && count_ && *count_ >= noTokens) {
            ContextMember& member = members_.emplace_back();
            member.table = std::move(table_).value_or("");
            member.group = std::move(group_).value_or("");
            member.name = *std::move(name_);
            member.tokens = *count_;
            member.precision = named(precision_, precisions).value_or(CountPrecision::exact);
        }
        count_.reset();
        for (auto& [name, place] : texts_)
            place.reset();
    }

    /// Of the document that was read; nothing when it has no such list.
    [[nodiscard]] std::optional<std::vector<ContextMember>> members(const Json::Value& report) && {
        const Json::Value* details = Json::objectMember(report, outerKey);
        const Json::Value* list = details == nullptr ? nullptr : Json::member(*details, innerKey);
        if (list == nullptr) return std::nullopt;
        if (!list->is_array()) members_.clear();
        return std::move(members_);
    }

private:
    static constexpr std::array precisions{CountPrecision::exact, CountPrecision::rounded,
                                           CountPrecision::about, CountPrecision::below};

    std::vector<ContextMember> members_;
    std::optional<std::int64_t> count_;
    std::optional<std::string> table_, group_, name_, precision_;
    const std::array<std::pair<std::string_view, std::optional<std::string>&>, 4> texts_{
        {{"table", table_}, {"group", group_}, {"name", name_}, {"precision", precision_}}};
};

} // namespace

std::optional<Unreadable> objection(const Json::Value& object) {
    if (const Json::Value* error = Json::objectMember(object, "error"))
        return Unreadable{"is the report of a scan that failed: " + text(*error, "headline").value_or("")};
    const auto version = Json::integral(Json::member(object, "schemaVersion"));
    if (version && *version > knownVersion)
        return Unreadable{"was written by a newer version of Loadscope (schema version " +
                          std::to_string(*version) + ")."};
    if (!tokens(object, "total"))
        return Unreadable{"is not a report of `loadscope scan --json`: it has no \"total\"."};
    return std::nullopt;
}

std::variant<ScanMeasurement, Unreadable> read(std::string_view json) {
    if (json.size() > Json::maximumSize) return Unreadable{"is larger than a report can be (16 MB)."};
    if (Text::trimmed(json).empty()) return Unreadable{"is empty."};
    MemberReader members;
    const auto object = Json::parseObject(json, MemberReader::outerKey, MemberReader::innerKey, members);
    if (!object) return Unreadable{"is not a JSON object."};
    if (auto reason = objection(*object)) return *std::move(reason);
    constexpr std::array sources{TotalSource::contextCommand, TotalSource::transcript, TotalSource::cliUsage};
    ScanMeasurement measurement;
    measurement.repositoryName = text(*object, "repositoryName").value_or("");
    measurement.repositoryPath = text(*object, "repositoryPath").value_or("");
    if (const auto date = text(*object, "date")) measurement.date = InternetDate::parse(*date);
    measurement.total = *tokens(*object, "total");
    measurement.totalSource = named(text(*object, "totalSource"), sources);
    const Json::Value* estimated = Json::member(*object, "estimated");
    measurement.isEstimate = estimated != nullptr && estimated->is_boolean() && estimated->get<bool>();
    measurement.categories = categories(*object);
    measurement.members = std::move(members).members(*object);
    measurement.model = text(*object, "model");
    measurement.toolVersion = text(*object, "toolVersion");
    measurement.contextWindow = tokens(*object, "contextWindow");
    return measurement;
}

} // namespace loadscope::ScanReportReader
