// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Comparison/ComparisonTable.h"

#include "LoadscopeApp/Pages/Report/NoteLabel.h"
#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/DiffPresentation.h"

#include <QVBoxLayout>

#include <limits>

namespace loadscope {
namespace {

/// Stands before every number where the order is by a side that does not have the category.
constexpr auto nothing = std::numeric_limits<std::int64_t>::min();

std::vector<TableRow> rowsOf(const ScanComparison& comparison) {
    std::vector<TableRow> rows;
    for (const CategoryChange& category : comparison.categories) {
        if (category.tokens.kind() == TokenChange::Kind::unchanged) continue;
        rows.push_back({{},
                        DisplayText::line(category.name),
                        DisplayText::own(DiffPresentation::source(category.source)),
                        {DisplayText::own(DiffPresentation::count(category.tokens.before)),
                         DisplayText::own(DiffPresentation::count(category.tokens.after)),
                         DisplayText::own(DiffPresentation::change(category.tokens))},
                        0,
                        {category.tokens.before.value_or(nothing), category.tokens.after.value_or(nothing),
                         category.tokens.change()}});
    }
    return rows;
}

} // namespace

ComparisonTable::ComparisonTable(const ScanComparison& comparison, QWidget* parent) : QWidget(parent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    const auto line = [column](const std::string& text, TextStyle style, ThemeColor color) {
        auto* label = new TextLabel(DisplayText::line(text), style, color);
        label->setWraps();
        column->addWidget(label);
    };
    line(DiffPresentation::totalLine(comparison), TextStyle::body, ThemeColor::primaryText);
    line(DiffPresentation::beforeLine(comparison), TextStyle::caption, ThemeColor::secondaryText);
    line(DiffPresentation::afterLine(comparison), TextStyle::caption, ThemeColor::secondaryText);
    for (const std::string& warning : DiffPresentation::warnings(comparison))
        column->addWidget(new NoteLabel(DisplayText::line(warning)));
    std::vector<TableRow> rows = rowsOf(comparison);
    if (rows.empty()) {
        line(DiffPresentation::noCategoryChanged, TextStyle::body, ThemeColor::secondaryText);
        return;
    }
    const auto title = [](const char* text) { return DisplayText::own(text); };
    column->addWidget(
        new ReportTable({title("Category"), {title("Before"), title("After"), title("Change")}, {}},
                        std::move(rows), title(DiffPresentation::tableTitle)));
}

} // namespace loadscope
