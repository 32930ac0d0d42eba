// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanText.h"

#include "LoadscopeCLI/CodexText.h"
#include "LoadscopeCLI/DetailsText.h"
#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/ChangeablePresentation.h"
#include "LoadscopeCore/Presentation/CheckPresentation.h"
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"
#include "LoadscopeCore/Presentation/FilesPresentation.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <map>

namespace loadscope {
namespace {

using enum Table::Alignment;

std::string percentage(double fraction) { return LocaleFormat::oneDecimal(fraction * 100) + '%'; }

/// The copyable summary, line by line for its styles.
std::string summary(const ScanReport& report, const Terminal& terminal) {
    std::string text;
    const auto lines = ScanPresentation::summaryLines(report);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string line = Text::visible(lines[i]);
        const TextStyle style = i == 1 ? TextStyle::bold : i == 2 ? styleOf(report.band) : TextStyle::plain;
        text += terminal.styled(style, line) + '\n';
    }
    const auto addDim = [&](const std::string& line) {
        text += terminal.styled(TextStyle::dim, Text::visible(line)) + '\n';
    };
    text += '\n';
    addDim(ScanPresentation::measurementNote(report));
    for (const std::string& line : ConditionsPresentation::lines(report.conditions))
        addDim(line);
    if (const auto line = CodexPresentation::versionLine(report.codex)) addDim(*line);
    return text;
}

/// What a reader must know stands before the tables, where it is seen.
std::string conditionNotes(const ScanReport& report, const Terminal& terminal) {
    std::string text;
    std::vector<std::string> notes = ConditionsPresentation::notes(report);
    if (auto note = ChangeablePresentation::missingServersNote(report)) notes.push_back(*std::move(note));
    for (const std::string& note : notes)
        text += '\n' + terminal.styled(TextStyle::warning, Text::visible(note)) + '\n';
    return text;
}

std::string rowsTable(const ScanReport& report, const Terminal& terminal) {
    Table table({{"Category"}, {"Tokens", right}, {"Share", right}, {"Source"}});
    for (const SlabAttribution& row : report.rows)
        table.addRow({row.name,
                      LocaleFormat::grouped(row.tokens),
                      percentage(report.categoryShare(row)),
                      {ScanPresentation::sourceLabel(report, row.provenance), TextStyle::dim}});
    return table.text(terminal);
}

/// What the rows leave out of the window, in small print below them.
std::string spaceLines(const ScanReport& report, const Terminal& terminal) {
    std::string text;
    for (const auto& line :
         {DetailsPresentation::onDemandLine(report), DetailsPresentation::spaceLine(report)})
        if (line) text += terminal.styled(TextStyle::dim, Text::visible(*line)) + '\n';
    return text.empty() ? text : '\n' + text;
}

/// "repository", "inherited" or "personal" by the path of a file that was found.
std::map<std::string, std::string> tiersOf(const InstructionFileSet& set) {
    std::map<std::string, std::string> tiers;
    for (const InstructionFileTier tier : allInstructionFileTiers)
        for (const InstructionFileEstimate& file : set.files(tier))
            tiers.emplace(file.path, rawValue(tier));
    return tiers;
}

std::string filesTable(const ScanReport& report, const Terminal& terminal) {
    const std::map<std::string, std::string> tiers = tiersOf(report.fileSet);
    const bool hasReported = FilesPresentation::hasReported(report);
    Table estimates({{"Tokens", right}, {"Share", right}, {"Tier"}, {"Instruction file (estimate)"}});
    Table counts({{"Tokens", right},
                  {"Share", right},
                  {"By size", right},
                  {"Tier"},
                  {"Source"},
                  {"Instruction file"}});
    for (const FilesPresentation::File& file : FilesPresentation::files(report)) {
        const std::string share = DetailsPresentation::share(report, file.count.tokens);
        const std::string tier = file.isFound ? tiers.at(file.path) : file.place;
        if (hasReported)
            counts.addRow({file.tokens, share, file.bySize, tier, {file.source, TextStyle::dim}, file.path});
        else
            estimates.addRow({file.tokens, share, tier, file.path});
    }
    std::string text = (hasReported ? counts : estimates).text(terminal);
    if (const auto note = FilesPresentation::twoNumbersNote(report))
        text += '\n' + terminal.styled(TextStyle::dim, *note) + '\n';
    return text;
}

} // namespace

TextStyle styleOf(OpinionBand band) {
    switch (band) {
    case OpinionBand::lean:
        return TextStyle::good;
    case OpinionBand::heavy:
        return TextStyle::warning;
    case OpinionBand::excessive:
        return TextStyle::bad;
    }
    return TextStyle::plain;
}

std::string scanText(const ScanReport& report, const ScanTextOptions& options, const Terminal& terminal) {
    std::string text =
        summary(report, terminal) + conditionNotes(report, terminal) + '\n' + rowsTable(report, terminal);
    text += spaceLines(report, terminal);
    if (options.details) text += detailsText(report, options.top, terminal);
    if (!report.files().empty() || FilesPresentation::hasReported(report))
        text += '\n' + filesTable(report, terminal);
    text += codexItemsText(report.codex, terminal);
    for (const auto& note :
         {ScanPresentation::unreadableFilesNote(report), ScanPresentation::overAttributionNote(report),
          ScanPresentation::unreportedCategoryFilesNote(report), CodexPresentation::note(report.codex)})
        if (note) text += '\n' + Text::visible(*note) + '\n';
    if (report.codexInstructions)
        if (const auto note =
                CheckPresentation::codexCutNote(*report.codexInstructions, report.repositoryPath))
            text += '\n' + terminal.styled(TextStyle::warning, Text::visible(*note)) + '\n';
    return text;
}

} // namespace loadscope
