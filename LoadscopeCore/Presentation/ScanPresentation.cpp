// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/SystemWords.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"

namespace loadscope {

std::string rawValue(OverAttributionSource source) {
    switch (source) {
    case OverAttributionSource::cliReported:
        return "cliReported";
    case OverAttributionSource::localEstimate:
        return "localEstimate";
    case OverAttributionSource::combined:
        break;
    }
    return "combined";
}

namespace ScanPresentation {
namespace {

std::int64_t tokensOf(Provenance provenance, const ScanReport& report) {
    SaturatingSum sum;
    for (const SlabAttribution& row : report.rows) {
        if (row.provenance == provenance) sum.add(row.tokens);
    }
    return sum.value();
}

/// "measured", unless the tool estimated.
std::string obtained(const ScanReport& report) {
    return report.conditions.isEstimate ? "estimated" : "measured";
}

std::string overAttributionLead(const ScanReport& report) {
    const std::string end = " add up to more than the " + obtained(report) + " total.";
    switch (overAttributionSource(report)) {
    case OverAttributionSource::localEstimate:
        return "The local file estimates alone" + end;
    case OverAttributionSource::cliReported:
        return "The categories reported by Claude Code's `/context` alone" + end;
    case OverAttributionSource::combined:
        break;
    }
    return "The attributed rows — the categories reported by Claude Code's `/context` plus this app's local "
           "file estimates —" +
           end;
}

} // namespace

std::string headline(const ScanReport& report) {
    return OpinionBands::title(report.band) + " startup context" +
           (report.conditions.isEstimate ? " (estimated)" : "");
}

std::string breakdownDetail(const ScanReport& report) {
    return std::string("Category rows come from Claude Code's `/context` report; shares use the ") +
           (report.conditions.isEstimate ? "estimated" : "Claude-reported") + " total.";
}

std::optional<std::string> measuredLine(const ScanReport& report) {
    if (!report.date) return std::nullopt;
    return "Measured " + LocaleFormat::dateAndTime(*report.date) + ". Scan Again measures it anew.";
}

std::string durationText(const ScanReport& report) {
    return LocaleFormat::oneDecimal(report.duration) + " seconds";
}

std::string totalCaption(const ScanReport& report) {
    return report.conditions.isEstimate ? "Estimate · not counted by Claude"
                                        : "Authoritative · measured by Claude";
}

std::string measurementNote(const ScanReport& report) {
    return ConditionsPresentation::measurementNote(report.conditions);
}

std::string totalSourceLine(const ScanReport& report) {
    return std::string("Total: ") +
           (report.conditions.isEstimate ? "an estimate, not counted" : "authoritative") +
           " — reported by Claude (source: " + label(report.totalSource) + ").";
}

std::optional<std::string> windowShareLine(const ScanReport& report) {
    return WindowShare::line(report.total, report.contextWindow);
}

std::string bandVerdictLine(const ScanReport& report) {
    const std::string verdict = "The total " + obtained(report) + " by Claude is " +
                                LocaleFormat::grouped(report.total) + " tokens, which falls in the " +
                                OpinionBands::title(report.band) + " band";
    if (!report.contextWindow || *report.contextWindow < 1) {
        return verdict + " (" + OpinionBands::range(report.band) + ").";
    }
    return verdict + " for the " + WindowShare::compactWindow(*report.contextWindow) +
           " context window Claude reported.";
}

std::string sourceLabel(const ScanReport& report, Provenance provenance) {
    std::string text = loadscope::sourceLabel(provenance);
    const bool isClaudes = provenance == Provenance::claudeReported || provenance == Provenance::selfReported;
    if (isClaudes && report.conditions.isEstimate) text += " (estimate)";
    return text;
}

std::vector<std::string> summaryLines(const ScanReport& report) {
    const bool isEstimate = report.conditions.isEstimate;
    const std::string band = "Band: " + OpinionBands::title(report.band) + " (this app's opinion)";
    const std::optional<std::string> share = windowShareLine(report);
    return {
        "Repository: " + report.repositoryName,
        "Total: " + LocaleFormat::grouped(report.total) + " tokens — " +
            (isEstimate ? "an estimate, not counted, reported by Claude ("
                        : "authoritative, reported by Claude (") +
            label(report.totalSource) + ").",
        share ? band + " — " + *share : band + ".",
        CodexPresentation::summaryLine(report.codex),
        isEstimate
            ? "Category totals are estimates reported by Claude Code's `/context`; the file splits are "
              "local estimates."
            : "Category totals are reported by Claude Code's `/context`; only the file splits are "
              "local estimates.",
        "Duration: " + LocaleFormat::oneDecimal(report.duration) + " seconds.",
    };
}

std::string copyableSummary(const ScanReport& report) {
    std::string text;
    // A folder's or a model's name or a tool's message may hold a line feed; the summary has eight lines all
    // the same.
    for (const std::string& line : summaryLines(report))
        text += Text::visible(line) + "\n";
    return text + "\n" + Text::visible(measurementNote(report));
}

std::optional<std::string> unreadableFilesNote(const ScanReport& report) {
    const std::size_t count = report.unreadablePaths().size();
    if (count == 0) return {};
    const std::string files =
        count == 1 ? "1 instruction file" : std::to_string(count) + " instruction files";
    return files +
           " could not be read, so the category and file estimates are lower than what is really loaded. "
           "The " +
           obtained(report) + " total is unaffected — it is reported by Claude. " +
           (SystemWords::hasPrivacySettings ? "macOS may be blocking access: allow Loadscope under System "
                                              "Settings → Privacy & Security → "
                                              "Files & Folders, then scan again."
                                            : "Check the permissions of the files. The first is " +
                                                  report.unreadablePaths().front() + ".");
}

OverAttributionSource overAttributionSource(const ScanReport& report) {
    const bool reportedExceeds = tokensOf(Provenance::selfReported, report) > report.total;
    const bool localExceeds = tokensOf(Provenance::localEstimate, report) > report.total;
    if (reportedExceeds == localExceeds) return OverAttributionSource::combined;
    return localExceeds ? OverAttributionSource::localEstimate : OverAttributionSource::cliReported;
}

std::optional<std::string> overAttributionNote(const ScanReport& report) {
    if (!report.overAttributed) return {};
    return overAttributionLead(report) + " The bar's segments therefore exceed the " + obtained(report) +
           " total of " + LocaleFormat::grouped(report.total) +
           " tokens, and there is no hidden remainder to show.";
}

std::optional<std::string> unreportedCategoryFilesNote(const ScanReport& report) {
    if (report.categoriesSelfReported || report.files().empty()) return {};
    return "Claude Code's `/context` reported no categories for this session, so the \"" +
           std::string(SlabAttributor::unreportedCategoriesLabel) + "\" row already carries the whole " +
           obtained(report) +
           " total. The instruction files below are local estimates of what makes up that total, not "
           "additional tokens on top of it.";
}

} // namespace ScanPresentation

namespace CodexPresentation {

OpinionBand band(const CodexProbeResult& result) {
    return OpinionBands::band(result.total, result.contextWindow);
}

std::optional<std::string> windowShareLine(const CodexProbeResult& result) {
    return WindowShare::line(result.total, result.contextWindow);
}

std::string summaryLine(const CodexScanOutcome& outcome) {
    const CodexProbeResult* result = outcome.result();
    if (result == nullptr) return "Codex: not measured — " + *outcome.reason();
    std::string windowPart;
    if (std::optional<std::string> share = windowShareLine(*result)) {
        share->pop_back(); // its full stop: the text goes on
        windowPart = " (" + *share + ")";
    }
    return "Codex: " + LocaleFormat::grouped(result->total) + " tokens — authoritative, reported by " +
           toolName + windowPart + ". Band: " + OpinionBands::title(band(*result)) + ".";
}

std::optional<std::string> note(const CodexScanOutcome& outcome) {
    const CodexProbeResult* result = outcome.result();
    return result && result->keepsRecord ? std::optional<std::string>(recordNote) : std::nullopt;
}

std::optional<std::string> versionLine(const CodexScanOutcome& outcome) {
    const CodexProbeResult* result = outcome.result();
    if (result == nullptr || (!result->toolVersion && !result->model)) return {};
    return std::string("Tool: ") + toolName +
           (result->toolVersion ? " " + *result->toolVersion : ", version not known") +
           (result->model ? "; model: " + *result->model : "") + ".";
}

} // namespace CodexPresentation

namespace RecordedScanPresentation {

std::string labelForTool(std::string_view tool) {
    return tool == RecordedScan::codexTool ? codexToolLabel : claudeToolLabel;
}

std::string toolLabel(const RecordedScan& scan) { return labelForTool(scan.tool); }

std::optional<std::string> windowShareLine(const RecordedScan& scan) {
    return WindowShare::line(scan.total, scan.contextWindow);
}

std::string bandScaleCaption(const RecordedScan& scan) {
    if (std::optional<std::string> share = windowShareLine(scan)) return *share;
    return OpinionBands::range(scan.band());
}

std::string largestCategories(const RecordedScan& scan) {
    std::vector<RecordedCategory> categories = scan.categories;
    std::stable_sort(
        categories.begin(), categories.end(),
        [](const RecordedCategory& a, const RecordedCategory& b) { return a.tokens > b.tokens; });
    const std::size_t shown = std::min<std::size_t>(2, categories.size());
    std::string text;
    for (std::size_t i = 0; i < shown; ++i)
        text +=
            (i == 0 ? "" : " · ") + categories[i].name + " " + LocaleFormat::compact(categories[i].tokens);
    if (categories.size() == shown) return text;
    return text + " · +" + LocaleFormat::grouped(static_cast<std::int64_t>(categories.size() - shown)) +
           " more";
}

} // namespace RecordedScanPresentation
} // namespace loadscope
