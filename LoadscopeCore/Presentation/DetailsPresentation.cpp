// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/DetailsPresentation.h"

#include "LoadscopeCore/ClaudeProbe/CountSum.h"
#include "LoadscopeCore/Instructions/InstructionFileShare.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/FilesPresentation.h"

#include <algorithm>

namespace loadscope::DetailsPresentation {
namespace {

/// What the groups and the members of a table are called.
struct Nouns {
    const char* group;
    const char* member;
};

bool isTable(const MemberList& list, std::string_view name) {
    return Text::lowercased(list.table) == Text::lowercased(name);
}

Nouns nounsOf(const MemberList& list) {
    if (isTable(list, ContextDetailsParser::toolsTable)) return {"server", "tool"};
    if (isTable(list, ContextDetailsParser::agentsTable)) return {"source", "agent"};
    if (isTable(list, ContextDetailsParser::skillsTable)) return {"source", "skill"};
    const bool isFiles = list.table.empty() || isTable(list, ContextDetailsParser::memoryFilesTable);
    return isFiles ? Nouns{"type", "file"} : Nouns{"group", "item"};
}

std::string counted(std::size_t count, const char* noun) {
    return LocaleFormat::grouped(static_cast<std::int64_t>(count)) + " " + noun + (count == 1 ? "" : "s");
}

/// Thousands or millions with at most one decimal, as the tool prints them.
std::string inThousands(std::int64_t tokens) {
    const bool isInMillions = tokens >= 1'000'000;
    const double unit = isInMillions ? 1e6 : 1e3;
    std::string text = LocaleFormat::oneDecimal(static_cast<double>(tokens) / unit);
    if (text.ends_with(".0")) text.resize(text.size() - 2);
    return text + (isInMillions ? "m" : "k");
}

/// A name that does not begin its sentence: "system tools" of "System tools", but "MCP tools" as it is.
std::string withinSentence(const std::string& name) {
    const auto isUpper = [&](std::size_t i) { return i < name.size() && name[i] >= 'A' && name[i] <= 'Z'; };
    if (!isUpper(0) || isUpper(1)) return name;
    return Text::lowercased(name.substr(0, 1)) + name.substr(1);
}

std::string sourceOf(const ScanReport& report, const CategoryMember& member) {
    switch (member.origin) {
    case MemberOrigin::listed:
        return FilesPresentation::reportedLabel(report);
    case MemberOrigin::loadedElsewhere:
        return FilesPresentation::reportedLabel(report) + " · " + loadedElsewhere;
    case MemberOrigin::found:
        return member.reported ? std::string(estimatedBySize) + " · " + tokens(*member.reported) + " " +
                                     FilesPresentation::reportedLabel(report)
                               : estimatedBySize;
    case MemberOrigin::foundNotListed:
        break;
    }
    return std::string(estimatedBySize) + " · " + foundNotListed;
}

Line lineOf(const ScanReport& report, const MemberList& list, std::string name, const PreciseCount& count,
            std::string source) {
    Line line{std::move(name), tokens(count), {}, std::move(source), {}};
    if (list.isInTotal) line.share = share(report, count.tokens);
    line.spoken = line.name + ", " + spokenTokens(count);
    for (const std::string* part : {&line.share, &line.source})
        if (!part->empty()) line.spoken += ", " + *part;
    return line;
}

std::string cell(const std::string& text) { return Text::visible(text); }

} // namespace

std::string tokens(const PreciseCount& count) {
    const std::string number = LocaleFormat::grouped(count.tokens);
    switch (count.precision) {
    case CountPrecision::exact:
        return number;
    case CountPrecision::rounded:
        return inThousands(count.tokens);
    case CountPrecision::about:
        return "~" + number;
    case CountPrecision::below:
        break;
    }
    return "< " + number;
}

std::string spokenTokens(const PreciseCount& count) {
    const std::string number =
        LocaleFormat::grouped(count.tokens) + (count.tokens == 1 ? " token" : " tokens");
    switch (count.precision) {
    case CountPrecision::exact:
        return number;
    case CountPrecision::rounded:
        return number + ", rounded";
    case CountPrecision::about:
        return "about " + number;
    case CountPrecision::below:
        break;
    }
    return "fewer than " + number;
}

std::string share(const ScanReport& report, std::int64_t tokens) {
    return LocaleFormat::oneDecimal(InstructionFileShare::fraction(tokens, report.total) * 100) + "%";
}

std::optional<std::string> onDemandLine(const ScanReport& report) {
    if (report.details.deferred.empty()) return {};
    SaturatingSum sum;
    std::string names;
    for (const SelfReportedSlab& category : report.details.deferred) {
        sum.add(category.tokens);
        names += (names.empty() ? "" : ", ") + withinSentence(category.name);
    }
    return "On demand, not counted: " + LocaleFormat::grouped(sum.value()) + " (" + names + ")";
}

std::optional<std::string> spaceLine(const ScanReport& report) {
    std::string text;
    for (const SelfReportedSlab& space : report.details.reserved)
        text += (text.empty() ? "Reserved: " : ", ") + LocaleFormat::grouped(space.tokens) + " " +
                withinSentence(space.name);
    if (report.details.free)
        text += (text.empty() ? "Free: " : " · Free: ") + LocaleFormat::grouped(*report.details.free);
    return text.empty() ? std::nullopt : std::optional(text);
}

std::string contents(const MemberList& list) {
    const Nouns nouns = nounsOf(list);
    const std::size_t members = list.memberCount();
    if (members == 0) return {};
    return (list.isGrouped() ? counted(list.groups.size(), nouns.group) + ", " : std::string()) +
           counted(members, nouns.member);
}

Line line(const ScanReport& report, const MemberList& list, const MemberGroup& group) {
    const Nouns nouns = nounsOf(list);
    std::string name = group.name.empty() ? std::string("no ") + nouns.group : group.name;
    return lineOf(report, list, std::move(name), group.count(), counted(group.members.size(), nouns.member));
}

Line line(const ScanReport& report, const MemberList& list, const CategoryMember& member) {
    std::string source = sourceOf(report, member);
    // The tool says 0 of a server's tool whose tokens it did not count.
    if (member.tokens == 0 && isTable(list, ContextDetailsParser::toolsTable))
        source += std::string(" · ") + notCounted;
    return lineOf(report, list, member.name, member.count(), std::move(source));
}

std::vector<Line> restLines(const ScanReport& report, const MemberList& list) {
    std::vector<Line> lines;
    if (list.estimateDifference)
        lines.push_back(lineOf(report, list, estimateDifference, *list.estimateDifference, {}));
    if (list.notItemised) lines.push_back(lineOf(report, list, notItemised, *list.notItemised, {}));
    return lines;
}

Line moreLine(const ScanReport& report, const MemberList& list, const MemberGroup& group, std::size_t shown) {
    CountSum sum;
    for (std::size_t i = shown; i < group.members.size(); ++i)
        sum.add(group.members[i].count());
    const auto left = static_cast<std::int64_t>(group.members.size() - shown);
    return lineOf(report, list, LocaleFormat::grouped(left) + " more", sum.value(), {});
}

std::vector<std::int64_t> ringTokens(const MemberList& list) {
    std::vector<std::int64_t> values;
    const auto add = [&](std::int64_t tokens) { values.push_back(std::max<std::int64_t>(tokens, 0)); };
    for (const MemberGroup& group : list.groups)
        add(group.tokens);
    for (const auto& rest : {list.estimateDifference, list.notItemised})
        if (rest) add(rest->tokens);
    return values;
}

std::string copyableDetails(const ScanReport& report) {
    std::string text = "Table\tGroup\tName\tTokens\tPrecision\tOn demand\n";
    for (const ContextMember& member : report.details.members)
        text += cell(member.table) + "\t" + cell(member.group) + "\t" + cell(member.name) + "\t" +
                std::to_string(member.tokens) + "\t" + rawValue(member.precision) + "\t" +
                (member.onDemand ? "yes" : "no") + "\n";
    return text;
}

} // namespace loadscope::DetailsPresentation
