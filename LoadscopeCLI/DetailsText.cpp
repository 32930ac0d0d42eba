// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/DetailsText.h"

#include "LoadscopeCLI/Table.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/ChangeablePresentation.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"

#include <algorithm>
#include <limits>

namespace loadscope {
namespace {

using enum Table::Alignment;
using DetailsPresentation::Line;

/// Categories with their groups and members, one a line; names stand last, so that a long one moves nothing.
class MembersTable {
public:
    MembersTable(const ScanReport& report, std::optional<std::size_t> top)
        : report_(report), top_(top.value_or(std::numeric_limits<std::size_t>::max())) {}

    void add(const std::string& category, std::optional<std::int64_t> tokens, const MemberList& list) {
        if (list.isEmpty()) return;
        isEmpty_ = false;
        table_.addRow(
            {tokens ? LocaleFormat::grouped(*tokens) : std::string(),
             tokens && list.isInTotal ? DetailsPresentation::share(report_, *tokens) : std::string(),
             {DetailsPresentation::contents(list), TextStyle::dim},
             {category, TextStyle::bold}});
        addMembers(list);
        for (const Line& line : DetailsPresentation::restLines(report_, list))
            addLine(line, 1);
        if (list.mayHoldOnDemand)
            table_.addRow({"", "", "", indented(DetailsPresentation::mayHoldOnDemandNote, 1)});
    }

    [[nodiscard]] bool isEmpty() const { return isEmpty_; }
    [[nodiscard]] std::string text(const Terminal& terminal) const { return table_.text(terminal); }

private:
    static Table::Cell indented(const std::string& name, std::size_t depth) {
        Table::Cell cell(name);
        cell.text.insert(0, 2 * depth, ' ');
        return cell;
    }

    void addLine(const Line& line, std::size_t depth) {
        table_.addRow({line.tokens, line.share, {line.source, TextStyle::dim}, indented(line.name, depth)});
    }

    void addMembers(const MemberList& list) {
        const std::size_t depth = list.isGrouped() ? 2 : 1;
        for (const MemberGroup& group : list.groups) {
            if (list.isGrouped()) addLine(DetailsPresentation::line(report_, list, group), 1);
            const std::size_t shown = std::min(top_, group.members.size());
            for (std::size_t i = 0; i < shown; ++i)
                addLine(DetailsPresentation::line(report_, list, group.members[i]), depth);
            if (shown < group.members.size())
                addLine(DetailsPresentation::moreLine(report_, list, group, shown), depth);
        }
    }

    const ScanReport& report_;
    std::size_t top_;
    bool isEmpty_ = true;
    Table table_{{{"Tokens", right}, {"Share", right}, {"Source"}, {"Category, group and member"}}};
};

std::string changeable(const ScanReport& report, const Terminal& terminal) {
    if (report.largestChangeable.empty()) return {};
    std::string text = '\n' + terminal.styled(TextStyle::bold, ChangeablePresentation::title) + '\n';
    for (const ChangeableGroup& group : report.largestChangeable) {
        const std::string place = ChangeablePresentation::place(group);
        text += Text::visible(ChangeablePresentation::kind(group) + " " + group.name + ": " +
                              ChangeablePresentation::number(report, group) +
                              (place.empty() ? "" : " — " + place)) +
                '\n';
        if (const auto copyable = ChangeablePresentation::copyable(group))
            text += "    " + Text::visible(*copyable) + '\n';
    }
    return text;
}

} // namespace

std::string detailsText(const ScanReport& report, std::optional<std::size_t> top, const Terminal& terminal) {
    const CategoryMembers members(report);
    MembersTable loaded(report, top);
    for (std::size_t i = 0; i < report.rows.size(); ++i)
        loaded.add(report.rows[i].name, report.rows[i].tokens, members.rows()[i]);
    for (const MemberList& list : members.withoutCategory())
        loaded.add(list.table + " (" + DetailsPresentation::withoutCategory + ")", std::nullopt, list);
    MembersTable onDemand(report, top);
    for (const CategoryMembers::OnDemand& category : members.onDemand())
        onDemand.add(category.category + " (" + DetailsPresentation::onDemand + ")", category.tokens,
                     category.members);
    std::string text;
    for (const MembersTable* table : {&loaded, &onDemand})
        if (!table->isEmpty()) text += '\n' + table->text(terminal);
    if (text.empty()) text = std::string("\n") + DetailsPresentation::noDetails + '\n';
    return text + changeable(report, terminal);
}

} // namespace loadscope
