// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ProbeOutputParser.h"

#include "LoadscopeCore/ClaudeProbe/ProbeError.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/Text.h"

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

ProbeOutput outputOf(const Json::Value& json, std::string_view standardOutput) {
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
    return {std::move(sessionID), std::move(result), usage ? ProbeUsage::from(*usage) : std::nullopt};
}

} // namespace

std::optional<Json::Value> jsonObject(std::string_view text) { return Json::parseObject(text); }

bool indicatesAuthenticationFailure(std::string_view text) {
    const std::string lowercased = Text::lowercased(text);
    return std::ranges::any_of(authenticationPhrases, [&](std::string_view phrase) {
        return lowercased.find(phrase) != std::string::npos;
    });
}

std::string truncate(std::string_view text, std::size_t limit) { return ProbeError::bounded(text, limit); }

ProbeOutput parse(std::string_view standardOutput, std::string_view standardError, std::int32_t exitCode) {
    if (const auto json = jsonObject(standardOutput)) return outputOf(*json, standardOutput);

    if (exitCode != 0) {
        std::string both(standardError);
        both += '\n';
        both += standardOutput;
        if (indicatesAuthenticationFailure(both)) throw ProbeError(ProbeError::NotAuthenticated{});
    }
    const std::string_view text = Text::trimmed(standardOutput).empty() ? standardError : standardOutput;
    throw ProbeError(ProbeError::UnreadableOutput{truncate(text, ProbeError::detailLimit)});
}

} // namespace ProbeOutputParser
} // namespace loadscope
