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

TableRow rowOf(const DetailsPresentation::Line& line, int level) {
    return {{},
            DisplayText::line(line.name),
            {},
            {DisplayText::own(line.tokens), DisplayText::own(line.share), DisplayText::own(line.source)},
            level};
}

} // namespace

void BreakdownRows::add(const ScanReport& report, const MemberList& list, std::size_t category) {
    const int level = list.isGrouped() ? 2 : 1;
    for (const MemberGroup& group : list.groups) {
        if (list.isGrouped()) rows.push_back(rowOf(DetailsPresentation::line(report, list, group), 1));
        paths.resize(rows.size());
        for (const CategoryMember& member : group.members) {
            rows.push_back(rowOf(DetailsPresentation::line(report, list, member), level));
            paths.push_back(MemberPath::ofMember(report, list, member));
        }
    }
    for (const DetailsPresentation::Line& line : DetailsPresentation::restLines(report, list))
        rows.push_back(rowOf(line, 1));
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
                             DisplayText::own(ScanPresentation::sourceLabel(report, row.provenance))}});
        all.add(report, members.rows().at(category), category);
    }
    return all;
}

BreakdownRows BreakdownRows::besides(const ScanReport& report, const CategoryMembers& members) {
    BreakdownRows all;
    std::size_t category = 0;
    const auto addTable = [&](const std::string& name, const std::string& tokens, const MemberList& list) {
        all.tops.push_back(all.rows.size());
        all.rows.push_back(
            {{},
             DisplayText::line(name),
             {},
             {DisplayText::own(tokens), {}, DisplayText::own(DetailsPresentation::contents(list))}});
        all.add(report, list, category++);
    };
    for (const CategoryMembers::OnDemand& list : members.onDemand())
        if (list.members.memberCount() > 0)
            addTable(list.category, LocaleFormat::grouped(list.tokens), list.members);
    for (const MemberList& list : members.withoutCategory())
        addTable(list.table, DetailsPresentation::tokens(list.sum()), list);
    return all;
}

} // namespace loadscope
