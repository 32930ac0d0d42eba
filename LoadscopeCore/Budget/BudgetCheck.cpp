// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Budget/BudgetCheck.h"

#include "LoadscopeCore/Budget/PathPattern.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"

#include <algorithm>
#include <map>

namespace loadscope::BudgetCheck {
namespace {

using Kind = BudgetResult::Kind;
using Reason = BudgetResult::Reason;

constexpr std::string_view toolsTable = ContextDetailsParser::toolsTable;

/// The largest, then by name.
std::vector<Reason> largest(std::vector<Reason> all) {
    std::erase_if(all, [](const Reason& reason) { return reason.value <= 0; });
    std::sort(all.begin(), all.end(), [](const Reason& left, const Reason& right) {
        return left.value != right.value ? left.value > right.value : left.name < right.name;
    });
    if (all.size() > mostReasons) all.resize(mostReasons);
    return all;
}

std::int64_t sumOf(const std::vector<Reason>& parts) {
    SaturatingSum sum;
    for (const Reason& part : parts)
        sum.add(part.value);
    return sum.value();
}

std::vector<Reason> categoriesOf(const ScanMeasurement& measurement) {
    std::vector<Reason> parts;
    for (const auto& category : measurement.categories)
        parts.push_back({category.name, category.tokens});
    return parts;
}

/// The members of a measurement whose table or group has a name.
std::vector<Reason> membersWhere(const ScanMeasurement& measurement, std::string ContextMember::*field,
                                 const std::string& name) {
    std::vector<Reason> parts;
    for (const ContextMember& member : measurement.members.value_or(std::vector<ContextMember>()))
        if (SlabAttributor::normalize(member.*field) == SlabAttributor::normalize(name))
            parts.push_back({member.name, member.tokens});
    return parts;
}

BudgetResult ofTotal(std::int64_t limit, const ScanMeasurement& measurement) {
    BudgetResult result{Kind::total, {}, Budget::Unit::tokens, limit, measurement.total};
    result.isEstimate = measurement.isEstimate;
    result.reasons = largest(categoriesOf(measurement));
    return result;
}

BudgetResult ofIncrease(std::int64_t limit, const ScanComparison& comparison) {
    BudgetResult result{Kind::increase, {}, Budget::Unit::tokens, limit, comparison.total.change()};
    result.withinRounding = comparison.total.withinRounding;
    std::vector<Reason> parts;
    for (const CategoryChange& category : comparison.categories)
        if (category.tokens.isReal()) parts.push_back({category.name, category.tokens.change()});
    result.reasons = largest(std::move(parts));
    return result;
}

BudgetResult ofCategory(const Budget::Named& named, const ScanMeasurement& measurement) {
    BudgetResult result{Kind::category, named.name, Budget::Unit::tokens, named.limit};
    SaturatingSum sum;
    bool isThere = false;
    for (const auto& category : measurement.categories) {
        if (SlabAttributor::normalize(category.name) != SlabAttributor::normalize(named.name)) continue;
        isThere = true;
        sum.add(category.tokens);
        result.isEstimate = result.isEstimate || sourceOf(category) == FigureSource::estimated;
    }
    if (isThere) result.value = sum.value();
    result.reasons = largest(membersWhere(measurement, &ContextMember::table, named.name));
    return result;
}

BudgetResult ofServer(const Budget::Named& named, const ScanMeasurement& measurement) {
    BudgetResult result{Kind::server, named.name, Budget::Unit::tokens, named.limit};
    std::vector<Reason> tools;
    for (const ContextMember& member : measurement.members.value_or(std::vector<ContextMember>()))
        if (member.table == toolsTable && member.group == named.name)
            tools.push_back({member.name, member.tokens});
    if (!tools.empty()) result.value = sumOf(tools);
    result.reasons = largest(std::move(tools));
    return result;
}

BudgetResult ofFiles(const Budget::Named& named, const std::string& repository) {
    BudgetResult result{Kind::files, named.name, named.unit, named.limit};
    result.isEstimate = named.unit == Budget::Unit::tokens;
    const PathPattern::Found found = PathPattern(named.name).find(repository);
    result.isComplete = found.isComplete;
    std::vector<Reason> parts;
    for (const PathPattern::File& file : found.files)
        parts.push_back(
            {file.path, named.unit == Budget::Unit::bytes
                            ? file.byteCount
                            : InstructionFileEstimate::estimatedTokensForByteCount(file.byteCount)});
    if (!parts.empty()) result.value = sumOf(parts);
    result.reasons = largest(std::move(parts));
    return result;
}

BudgetResult ofCodex(std::int64_t limit, const CodexInstructions& instructions) {
    BudgetResult result{Kind::codexInstructions, {}, Budget::Unit::bytes, limit, instructions.totalBytes()};
    std::vector<Reason> parts;
    for (const CodexInstructions::File& file : instructions.files)
        parts.push_back({file.path, file.byteCount});
    result.reasons = largest(std::move(parts));
    return result;
}

} // namespace

std::vector<BudgetResult> results(const Budget& budget, const Facts& facts) {
    std::vector<BudgetResult> all;
    if (budget.maxTokens && facts.measurement) all.push_back(ofTotal(*budget.maxTokens, *facts.measurement));
    if (budget.maxIncrease && facts.sinceBaseline)
        all.push_back(ofIncrease(*budget.maxIncrease, *facts.sinceBaseline));
    if (facts.measurement) {
        for (const Budget::Named& named : budget.categories)
            all.push_back(ofCategory(named, *facts.measurement));
        for (const Budget::Named& named : budget.servers)
            all.push_back(ofServer(named, *facts.measurement));
    }
    for (const Budget::Named& named : budget.files)
        all.push_back(ofFiles(named, facts.repository));
    if (budget.codexInstructionBytes && facts.codexInstructions)
        all.push_back(ofCodex(*budget.codexInstructionBytes, *facts.codexInstructions));
    return all;
}

bool isExceeded(const std::vector<BudgetResult>& results) {
    return std::any_of(results.begin(), results.end(),
                       [](const BudgetResult& result) { return result.isExceeded(); });
}

} // namespace loadscope::BudgetCheck
