// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/Support/JsonSchema.h"

#include <algorithm>
#include <set>

namespace loadscope {
namespace {

using Json = nlohmann::json;

bool isOfType(const Json& value, const std::string& type) {
    if (type == "integer") return value.is_number_integer();
    return type == "number" ? value.is_number() : type == value.type_name();
}

bool isOfAnyType(const Json& value, const Json& types) {
    if (types.is_string()) return isOfType(value, types);
    return std::ranges::any_of(types, [&](const Json& type) { return isOfType(value, type); });
}

} // namespace

std::vector<std::string> JsonSchema::problems(const Json& document) const {
    Problems found;
    check(schema_, document, "", found);
    return found;
}

void JsonSchema::check(const Json& rule, const Json& value, const std::string& place, Problems& found) const {
    static const std::set<std::string> silent{"$schema", "$defs", "title", "description"};
    for (const auto& [keyword, wanted] : rule.items())
        if (!silent.contains(keyword)) checkKeyword(keyword, wanted, value, place, found);
}

void JsonSchema::checkKeyword(const std::string& keyword, const Json& wanted, const Json& value,
                              const std::string& place, Problems& found) const {
    const auto require = [&](bool holds) {
        if (!holds) found.push_back(place + ": " + keyword + " " + wanted.dump() + " is not " + value.dump());
    };
    if (keyword == "$ref") {
        check(schema_.at(Json::json_pointer(wanted.get<std::string>().substr(1))), value, place, found);
    } else if (keyword == "oneOf") {
        checkOneOf(wanted, value, place, found);
    } else if (keyword == "type") {
        require(isOfAnyType(value, wanted));
    } else if (keyword == "enum") {
        require(std::ranges::find(wanted, value) != wanted.end());
    } else if (keyword == "const") {
        require(value == wanted);
    } else if (keyword == "minimum") {
        require(!value.is_number() || value >= wanted);
    } else if (keyword == "maximum") {
        require(!value.is_number() || value <= wanted);
    } else if (keyword == "required") {
        for (const Json& key : wanted)
            if (value.is_object() && !value.contains(key)) found.push_back(place + " lacks " + key.dump());
    } else if (keyword == "properties") {
        checkProperties(wanted, value, place, found);
    } else if (keyword == "items") {
        for (std::size_t i = 0; value.is_array() && i < value.size(); ++i)
            check(wanted, value[i], place + "/" + std::to_string(i), found);
    } else {
        found.push_back(place + ": the schema uses " + keyword);
    }
}

void JsonSchema::checkOneOf(const Json& rules, const Json& value, const std::string& place,
                            Problems& found) const {
    std::size_t fitting = 0;
    Problems first;
    for (const Json& rule : rules) {
        Problems problems;
        check(rule, value, place, problems);
        if (problems.empty()) ++fitting;
        if (first.empty()) first = problems;
    }
    if (fitting == 1) return;
    found.push_back(place + ": " + std::to_string(fitting) + " of the forms fit");
    found.insert(found.end(), first.begin(), first.end());
}

void JsonSchema::checkProperties(const Json& rules, const Json& value, const std::string& place,
                                 Problems& found) const {
    if (!value.is_object()) return;
    for (const auto& [key, part] : value.items()) {
        if (rules.contains(key))
            check(rules[key], part, place + "/" + key, found);
        else
            found.push_back(place + ": " + key + " is not described");
    }
}

} // namespace loadscope
