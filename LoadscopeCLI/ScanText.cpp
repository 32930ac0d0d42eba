// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/ScanText.h"

#include "LoadscopeCLI/CodexText.h"
#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/Instructions/InstructionFileShare.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <algorithm>

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
    for (const std::string& note : ConditionsPresentation::notes(report))
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

std::string filesTable(const ScanReport& report, const Terminal& terminal) {
    struct File {
        InstructionFileEstimate estimate;
        InstructionFileTier tier;
    };
    std::vector<File> files;
    for (const InstructionFileTier tier : allInstructionFileTiers)
        for (const auto& file : report.fileSet.files(tier))
            files.push_back({file, tier});
    std::stable_sort(files.begin(), files.end(), [](const File& left, const File& right) {
        if (left.estimate.estimatedTokens != right.estimate.estimatedTokens)
            return left.estimate.estimatedTokens > right.estimate.estimatedTokens;
        return left.estimate.path < right.estimate.path;
    });
    Table table({{"Tokens", right}, {"Share", right}, {"Tier"}, {"Instruction file (estimate)"}});
    for (const auto& [file, tier] : files)
        table.addRow({LocaleFormat::grouped(file.estimatedTokens),
                      percentage(InstructionFileShare::fraction(file.estimatedTokens, report.total)),
                      rawValue(tier), file.path});
    return table.text(terminal);
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

std::string scanText(const ScanReport& report, const Terminal& terminal) {
    std::string text =
        summary(report, terminal) + conditionNotes(report, terminal) + '\n' + rowsTable(report, terminal);
    if (!report.files().empty()) text += '\n' + filesTable(report, terminal);
    text += codexItemsText(report.codex, terminal);
    for (const auto& note :
         {ScanPresentation::unreadableFilesNote(report), ScanPresentation::overAttributionNote(report),
          ScanPresentation::unreportedCategoryFilesNote(report), CodexPresentation::note(report.codex)})
        if (note) text += '\n' + Text::visible(*note) + '\n';
    return text;
}

} // namespace loadscope
