// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace loadscope {

/// Holds documents against a JSON schema, as far as the schemas of this repository use the language: $ref
/// into $defs, oneOf, type, enum, const, minimum, maximum, required, properties and items. A keyword beyond
/// these is a problem, and so is a key of a document that the schema does not describe.
class JsonSchema {
public:
    explicit JsonSchema(nlohmann::json schema) : schema_(std::move(schema)) {}

    /// What is wrong, one sentence each with the place; nothing for a document that the schema describes.
    [[nodiscard]] std::vector<std::string> problems(const nlohmann::json& document) const;

private:
    using Problems = std::vector<std::string>;

    void check(const nlohmann::json& rule, const nlohmann::json& value, const std::string& place,
               Problems& found) const;
    void checkKeyword(const std::string& keyword, const nlohmann::json& wanted, const nlohmann::json& value,
                      const std::string& place, Problems& found) const;
    void checkOneOf(const nlohmann::json& rules, const nlohmann::json& value, const std::string& place,
                    Problems& found) const;
    void checkProperties(const nlohmann::json& rules, const nlohmann::json& value, const std::string& place,
                         Problems& found) const;

    nlohmann::json schema_;
};

} // namespace loadscope
