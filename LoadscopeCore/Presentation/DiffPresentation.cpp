// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/DiffPresentation.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Markdown.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <algorithm>

namespace loadscope::DiffPresentation {
namespace {

using Warning = ScanComparison::Warning;

constexpr const char* absent = "–";
constexpr std::size_t mostReasons = 3;

/// The change as a share of what was before; nothing when there was nothing.
std::string percentage(const TokenChange& tokens) {
    if (tokens.before.value_or(0) <= 0) return {};
    const double share = static_cast<double>(tokens.change()) / static_cast<double>(*tokens.before) * 100;
    return ", " + std::string(share > 0 ? "+" : "") + LocaleFormat::oneDecimal(share) + '%';
}

std::string fromTo(const std::string& before, const std::string& after) {
    return " (" + before + " before, " + after + " now)";
}

std::string sourceName(const ScanMeasurement& side) {
    return side.totalSource ? label(*side.totalSource) : std::string();
}

std::string sentence(const ScanComparison& comparison, Warning warning) {
    const ScanMeasurement& before = comparison.before;
    const ScanMeasurement& after = comparison.after;
    switch (warning) {
    case Warning::otherTool:
        return "The two scans are of different tools" +
               fromTo(RecordedScanPresentation::labelForTool(before.tool),
                      RecordedScanPresentation::labelForTool(after.tool)) +
               ": their totals cannot be compared.";
    case Warning::otherRepository:
        return "The two scans are of different folders" +
               fromTo(before.repositoryPath, after.repositoryPath) + '.';
    case Warning::otherModel:
        return "The two scans used different models" + fromTo(*before.model, *after.model) +
               ": models count tokens differently.";
    case Warning::otherWindow:
        return "The two scans had different context windows" +
               fromTo(WindowShare::compactWindow(*before.contextWindow),
                      WindowShare::compactWindow(*after.contextWindow)) +
               '.';
    case Warning::otherVersion:
        return "The tool's version changed" + fromTo(*before.toolVersion, *after.toolVersion) +
               ": it may load or count other things.";
    case Warning::otherSource:
        return "The two totals come from different sources" + fromTo(sourceName(before), sourceName(after)) +
               ": they are not of one kind.";
    case Warning::estimate:
        return "The tool estimated a total instead of counting it: the two are not of one kind.";
    }
    return {};
}

std::string dayOf(const ScanMeasurement& before, const ScanMeasurement& after) {
    if (!before.date) return "the scan before";
    constexpr std::chrono::days mostOfAYear{300};
    const bool isRecent = after.date && *after.date - *before.date < mostOfAYear;
    return isRecent ? LocaleFormat::monthAndDay(*before.date) : LocaleFormat::date(*before.date);
}

/// The largest real changes among the categories: what moved the total.
std::string reasons(const ScanComparison& comparison) {
    std::string text;
    std::size_t told = 0;
    for (const CategoryChange& category : comparison.categories) {
        if (!category.tokens.isReal() || told == mostReasons) continue;
        text += (told++ == 0 ? ": " : ", ") + category.name + ' ' +
                LocaleFormat::signedGrouped(category.tokens.change());
    }
    return text;
}

std::string markdownCategories(const ScanComparison& comparison) {
    std::vector<std::vector<std::string>> rows;
    for (const CategoryChange& category : comparison.categories) {
        if (category.tokens.kind() == TokenChange::Kind::unchanged) continue;
        rows.push_back({Markdown::name(category.name), count(category.tokens.before),
                        count(category.tokens.after), change(category.tokens), source(category.source)});
    }
    return Markdown::table({{"Category"}, {"Before", true}, {"After", true}, {"Change", true}, {"Source"}},
                           rows);
}

std::string markdownMembers(const ScanComparison& comparison) {
    if (!comparison.members) return {};
    constexpr std::size_t mostRows = 200; // a comment has an end
    std::vector<std::vector<std::string>> rows;
    std::size_t changed = 0;
    for (const MemberChange& member : *comparison.members) {
        if (member.tokens.kind() == TokenChange::Kind::unchanged || ++changed > mostRows) continue;
        rows.push_back({Markdown::name(member.table), Markdown::name(member.group),
                        Markdown::name(member.name), count(member.tokens.before), count(member.tokens.after),
                        change(member.tokens)});
    }
    if (rows.empty()) return {};
    std::string table = Markdown::table(
        {{"Table"}, {"Group"}, {"Name"}, {"Before", true}, {"After", true}, {"Change", true}}, rows);
    if (changed > mostRows)
        table += "\nand " + LocaleFormat::grouped(static_cast<std::int64_t>(changed - mostRows)) + " more\n";
    return '\n' +
           Markdown::folded("What is inside (" + LocaleFormat::grouped(static_cast<std::int64_t>(changed)) +
                                " changed)",
                            table);
}

} // namespace

std::string totalLine(const ScanComparison& comparison) {
    const TokenChange& total = comparison.total;
    const std::string numbers = count(total.before) + " → " + count(total.after) + " tokens";
    if (total.kind() == TokenChange::Kind::unchanged) return numbers + " (no change)";
    if (total.withinRounding)
        return numbers + " (" + LocaleFormat::signedGrouped(total.change()) + ", " + withinRounding + ')';
    return numbers + " (" + LocaleFormat::signedGrouped(total.change()) + percentage(total) + ')';
}

std::string sideLine(const ScanMeasurement& side) {
    std::string line;
    const auto add = [&](const std::string& part) { line += (line.empty() ? "" : " · ") + part; };
    if (side.date) add(LocaleFormat::dateAndTime(*side.date));
    if (side.toolVersion) add(*side.toolVersion);
    if (side.model) add(*side.model);
    return line.empty() ? "unknown" : line;
}

std::string beforeLine(const ScanComparison& comparison) { return "Before: " + sideLine(comparison.before); }

std::string afterLine(const ScanComparison& comparison) { return "After: " + sideLine(comparison.after); }

std::vector<std::string> warnings(const ScanComparison& comparison) {
    std::vector<std::string> sentences;
    for (const Warning warning : comparison.warnings)
        sentences.push_back(sentence(comparison, warning));
    return sentences;
}

std::string count(const std::optional<std::int64_t>& tokens) {
    return tokens ? LocaleFormat::grouped(*tokens) : absent;
}

std::string unchangedLine(std::size_t categories) {
    if (categories == 0) return {};
    return LocaleFormat::grouped(static_cast<std::int64_t>(categories)) +
           (categories == 1 ? " category did not change." : " categories did not change.");
}

std::string change(const TokenChange& tokens) {
    const std::string number = LocaleFormat::signedGrouped(tokens.change());
    switch (tokens.kind()) {
    case TokenChange::Kind::added:
        return number + " (new)";
    case TokenChange::Kind::gone:
        return number + " (gone)";
    case TokenChange::Kind::unchanged:
        return "no change";
    case TokenChange::Kind::grown:
    case TokenChange::Kind::shrunk:
        break;
    }
    return tokens.withinRounding ? number + " (" + withinRounding + ')' : number;
}

std::string source(FigureSource source) {
    switch (source) {
    case FigureSource::reported:
        return "reported by Claude Code";
    case FigureSource::estimated:
        return "estimated from file sizes";
    case FigureSource::derived:
        return "derived: total minus attributed";
    }
    return {};
}

std::string sinceLine(const ScanComparison& comparison) {
    const std::string since = " since " + dayOf(comparison.before, comparison.after);
    const TokenChange& total = comparison.total;
    if (total.kind() == TokenChange::Kind::unchanged) return "No change" + since;
    const std::string number = LocaleFormat::signedGrouped(total.change()) + since;
    if (total.withinRounding) return number + ", " + withinRounding;
    return number + reasons(comparison);
}

std::string markdown(const ScanComparison& comparison) {
    const LocaleFormat::EnglishScope english; // read by people of one team, whatever the machine's locale
    std::string text = "### Startup context of " + Markdown::name(comparison.after.repositoryName) +
                       "\n\n**" + totalLine(comparison) + "**\n\n";
    for (const std::string& warning : warnings(comparison))
        text += "> " + Markdown::sentence(warning) + "\n\n";
    const std::string categories = markdownCategories(comparison);
    text += categories.empty() ? std::string(noCategoryChanged) + '\n' : categories;
    text += markdownMembers(comparison);
    text += '\n' + Markdown::sentence(beforeLine(comparison)) + "  \n" +
            Markdown::sentence(afterLine(comparison)) + '\n';
    return text;
}

} // namespace loadscope::DiffPresentation
