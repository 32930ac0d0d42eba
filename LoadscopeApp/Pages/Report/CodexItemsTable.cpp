// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/CodexItemsTable.h"

#include "LoadscopeApp/Pages/Report/NoteLabel.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Text/DisplayText.h"

#include <QVBoxLayout>

namespace loadscope {
namespace {

ReportTable* itemsTable(const std::vector<CodexItemLine>& lines) {
    std::vector<TableRow> rows;
    for (const CodexItemLine& line : lines)
        rows.push_back({{},
                        DisplayText::line(line.name),
                        DisplayText::own(line.source),
                        {DisplayText::own(CodexItemsPresentation::tokens(line))},
                        0,
                        {line.tokens}});
    return new ReportTable({DisplayText::own(CodexItemsPresentation::itemColumn),
                            {DisplayText::own(CodexItemsPresentation::tokensColumn)},
                            {}},
                           std::move(rows), DisplayText::own(CodexItemsPresentation::itemsTitle));
}

ReportTable* filesTable(const std::vector<CodexFileLine>& files) {
    std::vector<TableRow> rows;
    for (const CodexFileLine& file : files)
        rows.push_back({{},
                        DisplayText::line(file.path),
                        DisplayText::own(file.part),
                        {DisplayText::own(CodexItemsPresentation::bytesRead(file))},
                        0,
                        {file.readBytes}});
    auto* table = new ReportTable({DisplayText::own(CodexItemsPresentation::fileColumn),
                                   {DisplayText::own(CodexItemsPresentation::bytesColumn)},
                                   {}},
                                  std::move(rows), DisplayText::own(CodexItemsPresentation::filesTitle));
    table->setPaths([files](std::size_t file) { return files.at(file).path; });
    return table;
}

} // namespace

CodexItemsTable::CodexItemsTable(const CodexItemsView& items, QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    if (!items.lines.empty()) column->addWidget(itemsTable(items.lines));
    if (!items.files.empty()) column->addWidget(filesTable(items.files));
    for (const std::string& note : items.notes)
        column->addWidget(new NoteLabel(DisplayText::line(note)));
}

} // namespace loadscope
