// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/DiffText.h"

#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/DiffPresentation.h"

#include <algorithm>

namespace loadscope {
namespace {

using enum Table::Alignment;

TextStyle styleOf(const TokenChange& tokens) {
    if (!tokens.isReal()) return TextStyle::dim;
    return tokens.change() > 0 ? TextStyle::warning : TextStyle::good;
}

Table::Cell changeCell(const TokenChange& tokens) {
    Table::Cell cell = Table::Cell::own(DiffPresentation::change(tokens));
    cell.style = styleOf(tokens);
    return cell;
}

std::string categoriesTable(const ScanComparison& comparison, const Terminal& terminal) {
    Table table({{"Category"}, {"Before", right}, {"After", right}, {"Change", right}, {"Source"}});
    std::size_t unchanged = 0;
    for (const CategoryChange& category : comparison.categories) {
        if (category.tokens.kind() == TokenChange::Kind::unchanged && ++unchanged > 0) continue;
        table.addRow({category.name,
                      DiffPresentation::count(category.tokens.before),
                      DiffPresentation::count(category.tokens.after),
                      changeCell(category.tokens),
                      {DiffPresentation::source(category.source), TextStyle::dim}});
    }
    if (unchanged == comparison.categories.size())
        return terminal.styled(TextStyle::dim, DiffPresentation::noCategoryChanged) + '\n';
    const std::string rest = DiffPresentation::unchangedLine(unchanged);
    return table.text(terminal) + (rest.empty() ? rest : terminal.styled(TextStyle::dim, rest) + '\n');
}

bool hasChanged(const MemberChange& member) { return member.tokens.kind() != TokenChange::Kind::unchanged; }

std::string membersTable(const ScanComparison& comparison, const Terminal& terminal) {
    if (!comparison.members) return terminal.styled(TextStyle::dim, DiffPresentation::noMembers) + '\n';
    if (std::none_of(comparison.members->begin(), comparison.members->end(), hasChanged)) return {};
    Table table({{"Table"}, {"Group"}, {"Name"}, {"Before", right}, {"After", right}, {"Change", right}});
    for (const MemberChange& member : *comparison.members) {
        if (!hasChanged(member)) continue;
        table.addRow({member.table, member.group, member.name, DiffPresentation::count(member.tokens.before),
                      DiffPresentation::count(member.tokens.after), changeCell(member.tokens)});
    }
    return table.text(terminal);
}

} // namespace

std::string diffText(const ScanComparison& comparison, const Terminal& terminal) {
    const auto line = [&](TextStyle style, const std::string& text) {
        return terminal.styled(style, Text::visible(text)) + '\n';
    };
    std::string text = line(TextStyle::plain, comparison.after.repositoryName);
    // The marks of direction of a locale's own signs are obeyed.
    text += terminal.styled(TextStyle::bold, DiffPresentation::totalLine(comparison)) + '\n';
    text += line(TextStyle::dim, DiffPresentation::beforeLine(comparison));
    text += line(TextStyle::dim, DiffPresentation::afterLine(comparison));
    for (const std::string& warning : DiffPresentation::warnings(comparison))
        text += '\n' + line(TextStyle::warning, warning);
    if (!comparison.categories.empty()) text += '\n' + categoriesTable(comparison, terminal);
    const std::string members = membersTable(comparison, terminal);
    if (!members.empty()) text += '\n' + members;
    return text;
}

} // namespace loadscope
