// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanReportJson.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
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

Object texts(const std::vector<std::string>& list) {
    Object array = Object::array();
    for (const std::string& text : list)
        array.push_back(Text::repaired(text));
    return array;
}

std::optional<std::string> repaired(const std::optional<std::string>& text) {
    return text ? std::optional(Text::repaired(*text)) : std::nullopt;
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

Object filesByTier(const InstructionFileSet& set) {
    Object tiers = Object::object();
    for (const InstructionFileTier tier : allInstructionFileTiers) {
        Object& array = tiers[rawValue(tier)] = Object::array();
        for (const InstructionFileEstimate& file : set.files(tier)) {
            array.push_back({{"path", Text::repaired(file.path)},
                             {"byteCount", file.byteCount},
                             {"estimatedTokens", file.estimatedTokens}});
        }
    }
    return tiers;
}

Object codex(const CodexScanOutcome& outcome) {
    if (const CodexProbeResult* result = outcome.result()) {
        return {{"status", "measured"},
                {"total", result->total},
                {"contextWindow", orNull(result->contextWindow)},
                {"duration", result->duration},
                {"toolVersion", orNull(repaired(result->toolVersion))},
                {"model", orNull(repaired(result->model))},
                {"note", orNull(CodexPresentation::note(outcome))}};
    }
    return {{"status", "unavailable"}, {"reason", Text::repaired(*outcome.reason())}};
}

Object notes(const ScanReport& report) {
    return {{"measurement", ScanPresentation::measurementNote},
            {"unreadableFiles", orNull(ScanPresentation::unreadableFilesNote(report))},
            {"overAttribution", orNull(ScanPresentation::overAttributionNote(report))},
            {"unreportedCategoryFiles", orNull(ScanPresentation::unreportedCategoryFilesNote(report))}};
}

} // namespace

std::string report(const ScanReport& report) {
    const LocaleFormat::EnglishScope english; // the summary and the notes hold numbers
    const Object object = {{"schemaVersion", schemaVersion},
                           {"repositoryName", Text::repaired(report.repositoryName)},
                           {"repositoryPath", Text::repaired(report.repositoryPath)},
                           {"total", report.total},
                           {"totalSource", rawValue(report.totalSource)},
                           {"sessionID", Text::repaired(report.sessionID)},
                           {"resolvedCLIPath", Text::repaired(report.resolvedCLIPath)},
                           {"duration", report.duration},
                           {"contextWindow", orNull(report.contextWindow)},
                           {"band", OpinionBands::rawValue(report.band)},
                           {"score", HealthScore::value(report.total)},
                           {"rows", rows(report)},
                           {"remainder", report.remainder},
                           {"overAttributed", report.overAttributed},
                           {"categoriesSelfReported", report.categoriesSelfReported},
                           {"files", filesByTier(report.fileSet)},
                           {"unreadablePaths", texts(report.unreadablePaths())},
                           {"codex", codex(report.codex)},
                           {"summary", texts(ScanPresentation::summaryLines(report))},
                           {"notes", notes(report)}};
    return object.dump(indent);
}

std::string failure(std::string_view caseName, std::string_view headline, std::string_view detail) {
    const Object object = {
        {"schemaVersion", schemaVersion},
        {"error",
         {{"case", caseName}, {"headline", Text::repaired(headline)}, {"detail", Text::repaired(detail)}}}};
    return object.dump(indent);
}

} // namespace loadscope::ScanReportJson
