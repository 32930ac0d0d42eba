// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeOutputParser.h"

#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/ToolRun/ProbeError.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace loadscope {

std::int64_t ProbeUsage::startupTotal() const {
    SaturatingSum total;
    for (const std::int64_t count : {inputTokens, cacheCreationInputTokens, cacheReadInputTokens})
        total.add(count);
    return total.value();
}

std::optional<ProbeUsage> ProbeUsage::from(const Json::Value& usage) {
    const auto count = [&](std::string_view key) { return Json::integral(Json::member(usage, key)); };
    const auto input = count("input_tokens");
    const auto cacheCreation = count("cache_creation_input_tokens");
    const auto cacheRead = count("cache_read_input_tokens");
    if (!input && !cacheCreation && !cacheRead) return std::nullopt;
    return ProbeUsage{input.value_or(0), cacheCreation.value_or(0), cacheRead.value_or(0),
                      count("output_tokens").value_or(0)};
}

namespace ProbeOutputParser {

namespace {

constexpr std::array<std::string_view, 4> authenticationPhrases{
    "failed to authenticate", "oauth session expired", "please run /login", "invalid api key"};

std::string stringMember(const Json::Value& object, std::string_view key) {
    const Json::Value* value = Json::member(object, key);
    return value && value->is_string() ? value->get<std::string>() : std::string();
}

/// The result object of an output and what else its document tells.
struct Document {
    Json::Value result;
    std::optional<std::string> toolVersion{}; ///< of the event that begins a session
};

ProbeOutput outputOf(const Document& document, std::string_view standardOutput) {
    const Json::Value& json = document.result;
    std::string result = stringMember(json, "result");
    const Json::Value* isError = Json::member(json, "is_error");
    if (isError && isError->is_boolean() && isError->get<bool>()) {
        if (indicatesAuthenticationFailure(result)) throw ProbeError(ProbeError::NotAuthenticated{});
        throw ProbeError(
            ProbeError::SessionFailed{result.empty() ? "The session reported is_error." : std::move(result)});
    }
    std::string sessionID = stringMember(json, "session_id");
    if (sessionID.empty())
        throw ProbeError(ProbeError::UnreadableOutput{truncate(standardOutput, ProbeError::detailLimit)});
    const Json::Value* usage = Json::objectMember(json, "usage");
    return {std::move(sessionID), std::move(result), usage ? ProbeUsage::from(*usage) : std::nullopt,
            document.toolVersion};
}

bool isOfType(const Json::Value& event, std::string_view type) {
    const Json::Value* value = Json::member(event, "type");
    return value && value->is_string() && value->get_ref<const std::string&>() == type;
}

/// The result object of a document, which may be an array of events.
std::optional<Document> documentOf(Json::Value json) {
    if (json.is_object()) return Document{std::move(json)};
    if (!json.is_array()) return std::nullopt;
    const auto result = std::find_if(json.rbegin(), json.rend(),
                                     [](const Json::Value& event) { return isOfType(event, "result"); });
    if (result == json.rend()) return std::nullopt;
    Document document{*result};
    for (const Json::Value& event : json) {
        std::string version = isOfType(event, "system") ? stringMember(event, "claude_code_version") : "";
        if (!version.empty()) document.toolVersion = std::move(version);
    }
    return document;
}

/// Where an object with a key, or an array of objects, begins; the size of the text when nowhere.
std::size_t documentStart(std::string_view text) {
    // Not far behind whatever a wrapper, or a terminal's escape, puts before it.
    constexpr std::size_t furthest = 65'536;
    const std::string_view searched = text.substr(0, furthest);
    std::size_t start = searched.find_first_of("{[");
    for (; start != std::string_view::npos; start = searched.find_first_of("{[", start + 1)) {
        const std::size_t next = text.find_first_not_of(" \t\r\n", start + 1);
        if (next != std::string_view::npos && text[next] == (text[start] == '{' ? '"' : '{')) return start;
    }
    return text.size();
}

/// The document that the output consists of, or ends with behind bytes that are none.
std::optional<Document> documentIn(std::string_view standardOutput) {
    const std::string_view text = Text::trimmed(standardOutput);
    auto json = Json::parse(text);
    if (!json) json = Json::parse(text.substr(documentStart(text)));
    return json ? documentOf(*std::move(json)) : std::nullopt;
}

} // namespace

std::optional<Json::Value> jsonObject(std::string_view text) { return Json::parseObject(text); }

std::optional<std::int64_t> turns(std::string_view standardOutput) {
    const auto found = documentIn(standardOutput);
    return found ? Json::integral(Json::member(found->result, "num_turns")) : std::nullopt;
}

bool indicatesAuthenticationFailure(std::string_view text) {
    const std::string lowercased = Text::lowercased(text);
    return std::ranges::any_of(authenticationPhrases, [&](std::string_view phrase) {
        return lowercased.find(phrase) != std::string::npos;
    });
}

std::string truncate(std::string_view text, std::size_t limit) { return ProbeError::bounded(text, limit); }

ProbeOutput parse(std::string_view standardOutput, std::string_view standardError, std::int32_t exitCode) {
    if (const auto found = documentIn(standardOutput)) return outputOf(*found, standardOutput);

    if (exitCode != 0 &&
        (indicatesAuthenticationFailure(standardError) || indicatesAuthenticationFailure(standardOutput)))
        throw ProbeError(ProbeError::NotAuthenticated{});
    const std::string_view text = Text::trimmed(standardOutput).empty() ? standardError : standardOutput;
    throw ProbeError(ProbeError::UnreadableOutput{truncate(text, ProbeError::detailLimit)});
}

} // namespace ProbeOutputParser
} // namespace loadscope
