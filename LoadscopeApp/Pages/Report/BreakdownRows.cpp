// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/BreakdownRows.h"

#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"
#include "LoadscopeCore/Report/MemberPath.h"

namespace loadscope {
namespace {

TableRow rowOf(const DetailsPresentation::Line& line, int level, std::int64_t tokens) {
    return {
        {},    DisplayText::line(line.name),
        {},    {DisplayText::own(line.tokens), DisplayText::own(line.share), DisplayText::own(line.source)},
        level, {tokens}};
}

} // namespace

void BreakdownRows::add(const ScanReport& report, const MemberList& list, std::size_t category) {
    const int level = list.isGrouped() ? 2 : 1;
    for (const MemberGroup& group : list.groups) {
        if (list.isGrouped())
            rows.push_back(rowOf(DetailsPresentation::line(report, list, group), 1, group.tokens));
        paths.resize(rows.size());
        for (const CategoryMember& member : group.members) {
            rows.push_back(rowOf(DetailsPresentation::line(report, list, member), level, member.tokens));
            paths.push_back(MemberPath::ofMember(report, list, member));
        }
    }
    std::vector<std::int64_t> rest;
    for (const auto& count : {list.estimateDifference, list.notItemised})
        if (count) rest.push_back(count->tokens);
    const std::vector<DetailsPresentation::Line> lines = DetailsPresentation::restLines(report, list);
    for (std::size_t index = 0; index < lines.size(); ++index)
        rows.push_back(rowOf(lines[index], 1, rest.at(index)));
    categories.resize(rows.size(), category);
    paths.resize(rows.size());
}

BreakdownRows BreakdownRows::loaded(const ScanReport& report, const CategoryMembers& members) {
    BreakdownRows all;
    for (std::size_t category = 0; category < report.rows.size(); ++category) {
        const SlabAttribution& row = report.rows[category];
        all.tops.push_back(all.rows.size());
        all.rows.push_back({category,
                            DisplayText::line(row.name),
                            {},
                            {DisplayText::own(LocaleFormat::grouped(row.tokens)),
                             DisplayText::own(TokenTexts::percent(report.categoryShare(row))),
                             DisplayText::own(ScanPresentation::sourceLabel(report, row.provenance))},
                            0,
                            {row.tokens}});
        all.add(report, members.rows().at(category), category);
    }
    return all;
}

BreakdownRows BreakdownRows::besides(const ScanReport& report, const CategoryMembers& members) {
    BreakdownRows all;
    std::size_t category = 0;
    const auto addTable = [&](const std::string& name, const std::string& tokens, std::int64_t count,
                              const MemberList& list) {
        all.tops.push_back(all.rows.size());
        all.rows.push_back(
            {{},
             DisplayText::line(name),
             {},
             {DisplayText::own(tokens), {}, DisplayText::own(DetailsPresentation::contents(list))},
             0,
             {count}});
        all.add(report, list, category++);
    };
    for (const CategoryMembers::OnDemand& list : members.onDemand())
        if (list.members.memberCount() > 0)
            addTable(list.category, LocaleFormat::grouped(list.tokens), list.tokens, list.members);
    for (const MemberList& list : members.withoutCategory())
        addTable(list.table, DetailsPresentation::tokens(list.sum()), list.sum().tokens, list);
    return all;
}

} // namespace loadscope
