// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ContextDetails.h"
#include "LoadscopeCore/ClaudeProbe/TerminalReport.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"
#include "LoadscopeCore/Presentation/MemberTreemap.h"
#include "fuzz/FuzzInput.h"

#include <algorithm>

using namespace loadscope;

namespace {

ContextDetails checkedDetails(std::string_view text) {
    ContextDetails details = ContextDetailsParser::parse(text);
    for (const ContextMember& member : details.members)
        require(!member.name.empty() && member.tokens >= 0);
    for (const auto* const list : {&details.deferred, &details.reserved}) {
        for (const SelfReportedSlab& slab : *list)
            require(slab.tokens >= 0);
    }
    require(!details.model || !details.model->empty());
    return details;
}

/// Counts the members of a list that is in order and whose rest is a rest.
std::size_t checkedMembers(const MemberList& list) {
    const auto isBefore = [](const auto& left, const auto& right) { return left.tokens > right.tokens; };
    require(std::ranges::is_sorted(list.groups, isBefore));
    for (const MemberGroup& group : list.groups)
        require(!group.members.empty() && std::ranges::is_sorted(group.members, isBefore));
    require(!list.notItemised || list.notItemised->tokens > 0);
    return list.memberCount();
}

/// Every member of a report whose scan found no file stands in one place, and nothing shows a number twice.
void checkReport(std::string_view text) {
    ProbeResult probe;
    probe.details = checkedDetails(text);
    probe.selfReportedSlabs = ContextBreakdownParser::categories(text);
    probe.authoritativeTotal = 1000;
    const ScanReport report = ScanReportBuilder::build(
        RepoSelection("/r"), probe, {}, CodexScanOutcome::unavailable(CodexScanOutcome::notIncludedReason));
    const CategoryMembers members(report);
    require(members.rows().size() == report.rows.size());
    std::size_t placed = 0;
    for (const MemberList& list : members.rows())
        placed += checkedMembers(list);
    for (const CategoryMembers::OnDemand& category : members.onDemand())
        placed += checkedMembers(category.members);
    for (const MemberList& list : members.withoutCategory())
        placed += checkedMembers(list);
    require(placed == report.details.members.size());
    const MemberTreemap treemap(report, members);
    for (std::size_t node = 0; node < treemap.nodes().size(); ++node)
        require(treemap.nodes()[node].weight > 0 && treemap.nodes()[node].depth <= 2);
    const std::string copied = DetailsPresentation::copyableDetails(report);
    require(static_cast<std::size_t>(std::ranges::count(copied, '\n')) == report.details.members.size() + 1);
}

} // namespace

/// Members and categories have names and counts that are not negative, of the report as it is and of what the
/// drawn form of it becomes, and all of them find their place below the rows.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text = fuzzInput(bytes, size);
    checkReport(text);
    checkReport(TerminalReport::asMarkdown(text));
    return 0;
}
