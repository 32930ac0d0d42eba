// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/DiffPresentation.h"

#include <nlohmann/json.hpp>

namespace loadscope::DiffPresentation {
namespace {

using Object = nlohmann::ordered_json;

constexpr int schemaVersion = 1;
constexpr int indent = 2;

template <typename T>
Object orNull(const std::optional<T>& value) {
    return value ? Object(*value) : Object(nullptr);
}

Object textOrNull(const std::optional<std::string>& text) {
    return text ? Object(Text::repaired(*text)) : Object(nullptr);
}

Object side(const ScanMeasurement& measurement) {
    return {
        {"repositoryName", Text::repaired(measurement.repositoryName)},
        {"repositoryPath", Text::repaired(measurement.repositoryPath)},
        {"tool", measurement.tool},
        {"date", measurement.date ? Object(ScanHistoryFile::iso8601(*measurement.date)) : Object(nullptr)},
        {"toolVersion", textOrNull(measurement.toolVersion)},
        {"model", textOrNull(measurement.model)},
        {"contextWindow", orNull(measurement.contextWindow)},
        {"totalSource",
         measurement.totalSource ? Object(rawValue(*measurement.totalSource)) : Object(nullptr)},
        {"estimated", measurement.isEstimate}};
}

void addNumbers(Object& object, const TokenChange& tokens) {
    object["before"] = orNull(tokens.before);
    object["after"] = orNull(tokens.after);
    object["change"] = tokens.change();
    object["withinRounding"] = tokens.withinRounding;
}

Object categories(const ScanComparison& comparison) {
    Object array = Object::array();
    for (const CategoryChange& category : comparison.categories) {
        Object entry{{"name", Text::repaired(category.name)}};
        addNumbers(entry, category.tokens);
        entry["source"] = rawValue(category.source);
        array.push_back(std::move(entry));
    }
    return array;
}

/// Empty when one of the two measurements does not tell what is inside.
Object members(const ScanComparison& comparison) {
    Object array = Object::array();
    if (!comparison.members) return array;
    for (const MemberChange& member : *comparison.members) {
        Object entry{{"table", Text::repaired(member.table)},
                     {"group", Text::repaired(member.group)},
                     {"name", Text::repaired(member.name)}};
        addNumbers(entry, member.tokens);
        array.push_back(std::move(entry));
    }
    return array;
}

Object warningObjects(const ScanComparison& comparison) {
    Object array = Object::array();
    const auto sentences = warnings(comparison);
    for (std::size_t i = 0; i < sentences.size(); ++i)
        array.push_back({{"case", rawValue(comparison.warnings[i])}, {"text", Text::repaired(sentences[i])}});
    return array;
}

} // namespace

std::string json(const ScanComparison& comparison) {
    const LocaleFormat::EnglishScope english; // the warnings hold numbers
    const Object object = {{"schemaVersion", schemaVersion},
                           {"totalBefore", orNull(comparison.total.before)},
                           {"totalAfter", orNull(comparison.total.after)},
                           {"totalChange", comparison.total.change()},
                           {"withinRounding", comparison.total.withinRounding},
                           {"categories", categories(comparison)},
                           {"members", members(comparison)},
                           {"membersKnown", comparison.members.has_value()},
                           {"comparable", comparison.isComparable()},
                           {"warnings", warningObjects(comparison)},
                           {"before", side(comparison.before)},
                           {"after", side(comparison.after)}};
    return object.dump(indent);
}

} // namespace loadscope::DiffPresentation
