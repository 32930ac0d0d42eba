// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/CodexText.h"

#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/CodexItemsPresentation.h"

namespace loadscope {
namespace {

using enum Table::Alignment;

std::string linesTable(const CodexItemsView& view, const Terminal& terminal) {
    Table table({{"Codex starts with"}, {"Tokens", right}, {"Source"}});
    for (const CodexItemLine& line : view.lines)
        table.addRow({line.name, LocaleFormat::grouped(line.tokens), {line.source, TextStyle::dim}});
    return table.text(terminal);
}

std::string filesTable(const CodexItemsView& view, const Terminal& terminal) {
    Table table({{"Bytes read", right}, {"Of", right}, {"Part"}, {"Instruction file of Codex"}});
    for (const CodexFileLine& file : view.files)
        table.addRow({LocaleFormat::grouped(file.readBytes), LocaleFormat::grouped(file.byteCount), file.part,
                      file.path});
    return table.text(terminal);
}

std::string tables(const CodexItemsView& view, const Terminal& terminal) {
    std::string text;
    if (!view.lines.empty()) text += '\n' + linesTable(view, terminal);
    if (!view.files.empty()) text += '\n' + filesTable(view, terminal);
    return text;
}

} // namespace

std::string codexItemsText(const CodexScanOutcome& outcome, const Terminal& terminal) {
    const auto view = CodexItemsPresentation::ofMeasurement(outcome);
    if (!view) return "";
    std::string text = tables(*view, terminal);
    for (const std::string& note : view->notes)
        text += "\nCodex, item by item: " + Text::visible(note) + '\n';
    return text;
}

std::string codexEstimateText(const std::string& repositoryName, const CodexItems& items,
                              const Terminal& terminal) {
    const CodexItemsView view = CodexItemsPresentation::ofEstimate(items);
    std::string text = Text::visible("Repository: " + repositoryName) + '\n' +
                       terminal.styled(TextStyle::bold, CodexItemsPresentation::estimateLine(items)) + "\n\n";
    const auto addDim = [&](const std::string& line) {
        text += terminal.styled(TextStyle::dim, Text::visible(line)) + '\n';
    };
    addDim(CodexItemsPresentation::estimateNote);
    addDim(CodexItemsPresentation::serversNote);
    if (const auto line = CodexItemsPresentation::modelLine(items)) addDim(*line);
    text += tables(view, terminal);
    for (const std::string& note : view.notes)
        text += '\n' + Text::visible(note) + '\n';
    return text;
}

} // namespace loadscope
