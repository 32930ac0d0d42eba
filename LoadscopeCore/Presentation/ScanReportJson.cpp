// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanReportJson.h"

#include "LoadscopeCore/History/PathBytes.h"
#include "LoadscopeCore/Platform/InternetDate.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/BudgetPresentation.h"
#include "LoadscopeCore/Presentation/ChangeablePresentation.h"
#include "LoadscopeCore/Presentation/CheckPresentation.h"
#include "LoadscopeCore/Presentation/CodexJson.h"
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"
#include "LoadscopeCore/Presentation/InstructionFilesJson.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"
#include "LoadscopeCore/Scoring/HealthScore.h"

#include <nlohmann/json.hpp>

namespace loadscope::ScanReportJson {
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

Object texts(const std::vector<std::string>& list) {
    Object array = Object::array();
    for (const std::string& text : list)
        array.push_back(Text::repaired(text));
    return array;
}

Object rows(const ScanReport& report) {
    Object array = Object::array();
    for (const SlabAttribution& row : report.rows) {
        array.push_back({{"name", Text::repaired(row.name)},
                         {"tokens", row.tokens},
                         {"provenance", rawValue(row.provenance)},
                         {"ordinal", row.ordinal},
                         {"share", report.categoryShare(row)}});
    }
    return array;
}

Object filesByTier(const ScanReport& report) {
    return InstructionFilesJson::byTier(report.fileSet, [&](const InstructionFileEstimate& file) {
        const auto reported = report.reportedTokens(file);
        return reported ? std::optional(reported->tokens) : std::nullopt;
    });
}

Object loadedElsewhere(const ScanReport& report) {
    Object array = Object::array();
    for (const ContextMember& file : report.memoryFiles.loadedElsewhere) {
        array.push_back({{"path", Text::repaired(file.name)},
                         {"group", Text::repaired(file.group)},
                         {"tokens", file.tokens},
                         {"precision", rawValue(file.precision)}});
    }
    return array;
}

Object members(const ContextDetails& details) {
    Object array = Object::array();
    for (const ContextMember& member : details.members) {
        array.push_back({{"table", Text::repaired(member.table)},
                         {"group", Text::repaired(member.group)},
                         {"name", Text::repaired(member.name)},
                         {"tokens", member.tokens},
                         {"precision", rawValue(member.precision)},
                         {"onDemand", member.onDemand}});
    }
    return array;
}

Object categories(const std::vector<SelfReportedSlab>& list) {
    Object array = Object::array();
    for (const SelfReportedSlab& category : list)
        array.push_back({{"name", Text::repaired(category.name)}, {"tokens", category.tokens}});
    return array;
}

Object reservedTakenOff(const std::optional<ReservedSpace>& reserve) {
    if (!reserve) return nullptr;
    return {{"name", Text::repaired(reserve->name)}, {"tokens", reserve->tokens}};
}

Object environment(const MeasurementConditions& conditions) {
    return {{"removed", texts(conditions.removedVariables)},
            {"kept", texts(conditions.keptVariables)},
            {"passedOn", conditions.keptEnvironment},
            {"pathSource", rawValue(conditions.pathSource)},
            {"waitedForServers", conditions.waitedForServers}};
}

Object notes(const ScanReport& report) {
    const MeasurementConditions& conditions = report.conditions;
    return {{"measurement", Text::repaired(ScanPresentation::measurementNote(report))},
            {"unreadableFiles", orNull(ScanPresentation::unreadableFilesNote(report))},
            {"overAttribution", orNull(ScanPresentation::overAttributionNote(report))},
            {"unreportedCategoryFiles", orNull(ScanPresentation::unreportedCategoryFilesNote(report))},
            {"estimate", orNull(ConditionsPresentation::estimateNote(conditions))},
            {"mayBeEstimate", orNull(ConditionsPresentation::mayBeEstimateNote(conditions))},
            {"searchPath", orNull(ConditionsPresentation::searchPathNote(conditions))},
            {"reserve", textOrNull(ConditionsPresentation::reserveNote(report))},
            {"missingServers", textOrNull(ChangeablePresentation::missingServersNote(report))}};
}

Object objectOf(const ScanReport& report, const std::vector<BudgetResult>& budgets) {
    const MeasurementConditions& conditions = report.conditions;
    Object object = {{"schemaVersion", schemaVersion},
                     {"repositoryName", Text::repaired(report.repositoryName)},
                     {"repositoryPath", Text::repaired(report.repositoryPath)},
                     {"id", report.id ? Object(report.id->text()) : Object(nullptr)},
                     {"date", report.date ? Object(InternetDate::text(*report.date)) : Object(nullptr)},
                     {"total", report.total},
                     {"totalSource", rawValue(report.totalSource)},
                     {"sessionID", Text::repaired(report.sessionID)},
                     {"resolvedCLIPath", Text::repaired(report.resolvedCLIPath)},
                     {"duration", report.duration},
                     {"contextWindow", orNull(report.contextWindow)},
                     {"toolVersion", textOrNull(conditions.toolVersion)},
                     {"requestedModel", Text::repaired(conditions.requestedModel)},
                     {"model", textOrNull(conditions.model)},
                     {"estimated", conditions.isEstimate},
                     {"mayBeEstimated", conditions.mayBeEstimate},
                     {"reservedTakenOff", reservedTakenOff(conditions.takenOff)},
                     {"environment", environment(conditions)},
                     {"band", OpinionBands::rawValue(report.band)},
                     {"score", HealthScore::value(report.total)},
                     {"rows", rows(report)},
                     {"remainder", report.remainder},
                     {"overAttributed", report.overAttributed},
                     {"categoriesSelfReported", report.categoriesSelfReported},
                     {"details", {{"members", members(report.details)}}},
                     {"onDemand", categories(report.details.deferred)},
                     {"reserved", categories(report.details.reserved)},
                     {"files", filesByTier(report)},
                     {"loadedElsewhere", loadedElsewhere(report)},
                     {"unreadablePaths", texts(report.unreadablePaths())},
                     {"codex", CodexJson::outcome(report.codex)},
                     {"codexInstructions", report.codexInstructions ? CheckPresentation::codexInstructions(
                                                                          *report.codexInstructions)
                                                                    : Object(nullptr)},
                     {"budgets", BudgetPresentation::json(budgets)},
                     {"summary", texts(ScanPresentation::summaryLines(report))},
                     {"notes", notes(report)}};
    if (const auto bytes = PathBytes::encoded(report.repositoryPath)) object["repositoryPathBytes"] = *bytes;
    return object;
}

Object errorOf(std::string_view caseName, std::string_view headline, std::string_view detail) {
    return {{"case", caseName}, {"headline", Text::repaired(headline)}, {"detail", Text::repaired(detail)}};
}

} // namespace

std::string report(const ScanReport& report, const std::vector<BudgetResult>& budgets) {
    const LocaleFormat::EnglishScope english; // the summary and the notes hold numbers
    return objectOf(report, budgets).dump(indent);
}

std::string codexEstimate(const RepoSelection& selection, const CodexItems& items) {
    const LocaleFormat::EnglishScope english;
    const Object object = {{"schemaVersion", schemaVersion},
                           {"repositoryName", Text::repaired(selection.displayName)},
                           {"repositoryPath", Text::repaired(selection.path)},
                           {"codex", CodexJson::estimate(items)}};
    return object.dump(indent);
}

std::string failure(std::string_view caseName, std::string_view headline, std::string_view detail) {
    const Object object = {{"schemaVersion", schemaVersion}, {"error", errorOf(caseName, headline, detail)}};
    return object.dump(indent);
}

std::string reports(const std::vector<Entry>& entries) {
    const LocaleFormat::EnglishScope english;
    Object list = Object::array();
    for (const Entry& entry : entries) {
        if (entry.report) {
            list.push_back(objectOf(*entry.report, entry.budgets));
            continue;
        }
        Object object = {{"schemaVersion", schemaVersion},
                         {"repositoryName", Text::repaired(entry.selection.displayName)},
                         {"repositoryPath", Text::repaired(entry.selection.path)}};
        if (entry.error)
            object["error"] =
                errorOf(entry.error->caseName(), entry.error->headline(), entry.error->detail());
        list.push_back(std::move(object));
    }
    const Object object = {{"schemaVersion", schemaVersion}, {"reports", std::move(list)}};
    return object.dump(indent);
}

} // namespace loadscope::ScanReportJson
