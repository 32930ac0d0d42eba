// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/BudgetPresentation.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Markdown.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace loadscope::BudgetPresentation {
namespace {

using Kind = BudgetResult::Kind;

struct Words {
    const char* key;
    const char* subject;
};

const Words& wordsOf(const BudgetResult& result) {
    static constexpr std::array all{
        Words{"maxTokens", "The total"}, Words{"maxIncrease", "The increase since the baseline"},
        Words{"categories", "Category"}, Words{"servers", "Server"},
        Words{"files", "Files"},         Words{"codexInstructionBytes", "Codex's instruction files"},
    };
    return all.at(static_cast<std::size_t>(result.kind));
}

std::string unit(Budget::Unit unit) { return unit == Budget::Unit::bytes ? " bytes" : " tokens"; }

std::string number(const BudgetResult& result, std::int64_t amount) {
    return result.kind == Kind::increase ? LocaleFormat::signedGrouped(amount)
                                         : LocaleFormat::grouped(amount);
}

/// What XML 1.0 cannot hold, or not as it is.
std::string xml(std::string_view text) {
    std::string escaped;
    for (const char character : Text::visible(text)) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

std::string testCase(const std::string& repositoryName, const BudgetResult& result) {
    std::string text =
        "    <testcase classname=\"" + xml(repositoryName) + "\" name=\"" + xml(key(result)) + '"';
    if (const auto line = exceededLine(result))
        return text + ">\n      <failure message=\"" + xml(*line) + "\"/>\n    </testcase>\n";
    if (!result.value)
        return text + ">\n      <skipped message=\"" + xml(remark(result).value_or("")) +
               "\"/>\n    </testcase>\n";
    return text + "/>\n";
}

} // namespace

std::string key(const BudgetResult& result) {
    return wordsOf(result).key + (result.name.empty() ? "" : "." + result.name);
}

std::string subject(const BudgetResult& result) {
    return wordsOf(result).subject + (result.name.empty() ? "" : " " + result.name);
}

std::string value(const BudgetResult& result) {
    if (!result.value) return "–";
    return (result.isEstimate ? "~" : "") + number(result, *result.value) + unit(result.unit);
}

std::string limit(const BudgetResult& result) {
    return LocaleFormat::grouped(result.limit) + unit(result.unit);
}

std::string state(const BudgetResult& result) {
    if (!result.value) return "nothing to measure";
    if (result.isExceeded()) return "exceeded";
    return result.withinRounding ? "within rounding" : "kept";
}

std::optional<std::string> exceededLine(const BudgetResult& result) {
    if (!result.isExceeded()) return std::nullopt;
    std::string line = "Over budget: " + subject(result) + ": " + value(result) + ", limit " + limit(result);
    for (const BudgetResult::Reason& reason : result.reasons)
        line += (&reason == &result.reasons.front() ? " (" : ", ") + reason.name + ' ' +
                number(result, reason.value);
    return line + (result.reasons.empty() ? "." : ").");
}

std::optional<std::string> remark(const BudgetResult& result) {
    if (!result.isComplete)
        return subject(result) + ": the repository has more files than are looked at; the sum is not whole.";
    if (result.value) return std::nullopt;
    switch (result.kind) {
    case Kind::category:
        return "The report has no category \"" + result.name + "\".";
    case Kind::server:
        return "The report lists no tool of a server \"" + result.name + "\".";
    case Kind::files:
        return "No file matches \"" + result.name + "\".";
    default:
        return std::nullopt;
    }
}

std::string markdown(const std::vector<BudgetResult>& results) {
    std::vector<std::vector<std::string>> rows;
    for (const BudgetResult& result : results) {
        std::string reasons;
        for (const BudgetResult::Reason& reason : result.reasons)
            reasons += (reasons.empty() ? "" : ", ") + Markdown::name(reason.name) + ' ' +
                       number(result, reason.value);
        const std::string name = wordsOf(result).subject +
                                 (result.name.empty() ? std::string() : ' ' + Markdown::name(result.name));
        const std::string shown = result.isExceeded() ? "**" + state(result) + "**" : state(result);
        rows.push_back({name, value(result), limit(result), shown, reasons});
    }
    return Markdown::table({{"Budget"}, {"Value", true}, {"Limit", true}, {"State"}, {"Largest"}}, rows);
}

nlohmann::ordered_json json(const std::vector<BudgetResult>& results) {
    using Object = nlohmann::ordered_json;
    Object array = Object::array();
    for (const BudgetResult& result : results) {
        Object reasons = Object::array();
        for (const BudgetResult::Reason& reason : result.reasons)
            reasons.push_back({{"name", Text::repaired(reason.name)}, {"value", reason.value}});
        array.push_back({{"name", Text::repaired(key(result))},
                         {"limit", result.limit},
                         {"value", result.value ? Object(*result.value) : Object(nullptr)},
                         {"exceeded", result.isExceeded()},
                         {"unit", result.unit == Budget::Unit::bytes ? "bytes" : "tokens"},
                         {"estimated", result.isEstimate},
                         {"withinRounding", result.withinRounding},
                         {"reasons", std::move(reasons)}});
    }
    return array;
}

std::string junit(const std::string& repositoryName, const std::vector<BudgetResult>& results) {
    const LocaleFormat::EnglishScope english;
    const auto count = [&](const auto& is) {
        return std::to_string(std::count_if(results.begin(), results.end(), is));
    };
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n  <testsuite name=\"loadscope\" tests=\"" +
        std::to_string(results.size()) + "\" failures=\"" +
        count([](const BudgetResult& result) { return result.isExceeded(); }) + "\" errors=\"0\" skipped=\"" +
        count([](const BudgetResult& result) { return !result.value; }) + "\">\n";
    for (const BudgetResult& result : results)
        text += testCase(repositoryName, result);
    return text + "  </testsuite>\n</testsuites>\n";
}

} // namespace loadscope::BudgetPresentation
