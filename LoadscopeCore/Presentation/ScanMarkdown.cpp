// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ScanMarkdown.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Markdown.h"
#include "LoadscopeCore/Presentation/BudgetPresentation.h"
#include "LoadscopeCore/Presentation/CheckPresentation.h"
#include "LoadscopeCore/Presentation/ConditionsPresentation.h"
#include "LoadscopeCore/Presentation/DetailsPresentation.h"
#include "LoadscopeCore/Presentation/DiffPresentation.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <algorithm>

namespace loadscope::ScanMarkdown {
namespace {

constexpr std::size_t mostMembers = 200; // a comment has an end

std::string categoriesTable(const ScanReport& report) {
    std::vector<std::vector<std::string>> rows;
    for (const SlabAttribution& row : report.rows)
        rows.push_back({Markdown::name(row.name), LocaleFormat::grouped(row.tokens),
                        LocaleFormat::oneDecimal(report.categoryShare(row) * 100) + '%',
                        Markdown::sentence(ScanPresentation::sourceLabel(report, row.provenance))});
    return Markdown::table({{"Category"}, {"Tokens", true}, {"Share", true}, {"Source"}}, rows);
}

std::string membersTable(const ScanReport& report) {
    std::vector<const ContextMember*> members;
    for (const ContextMember& member : report.details.members)
        members.push_back(&member);
    std::stable_sort(members.begin(), members.end(),
                     [](const auto* left, const auto* right) { return left->tokens > right->tokens; });
    std::vector<std::vector<std::string>> rows;
    for (const ContextMember* member : members) {
        if (rows.size() == mostMembers) break;
        rows.push_back(
            {Markdown::name(member->table), Markdown::name(member->group), Markdown::name(member->name),
             Markdown::sentence(DetailsPresentation::tokens({member->tokens, member->precision}))});
    }
    std::string table = Markdown::table({{"Table"}, {"Group"}, {"Name"}, {"Tokens", true}}, rows);
    if (members.size() > mostMembers)
        table += "\nand " + LocaleFormat::grouped(static_cast<std::int64_t>(members.size() - mostMembers)) +
                 " more\n";
    return table;
}

void addNote(std::string& text, const std::string& note) { text += "> " + Markdown::sentence(note) + "\n\n"; }

} // namespace

std::string report(const ScanReport& report, const std::vector<BudgetResult>& budgets,
                   const ScanComparison* baseline) {
    const LocaleFormat::EnglishScope english; // read by people of one team, whatever the machine's locale
    std::string text = "### Startup context of " + Markdown::name(report.repositoryName) + "\n\n**" +
                       LocaleFormat::grouped(report.total) + " tokens** · " +
                       Markdown::sentence(ScanPresentation::totalCaption(report)) + "\n\n";
    if (baseline != nullptr) {
        text += "Since the baseline: **" + DiffPresentation::totalLine(*baseline) + "**\n\n";
        for (const std::string& warning : DiffPresentation::warnings(*baseline))
            addNote(text, warning);
    }
    if (const std::string table = BudgetPresentation::markdown(budgets); !table.empty()) text += table + '\n';
    for (const std::string& note : ConditionsPresentation::notes(report))
        addNote(text, note);
    if (report.codexInstructions)
        if (const auto note =
                CheckPresentation::codexCutNote(*report.codexInstructions, report.repositoryPath))
            addNote(text, *note);
    text += categoriesTable(report);
    if (const std::string members = membersTable(report); !members.empty())
        text += '\n' + Markdown::folded("What is inside", members);
    return text + '\n' + Markdown::sentence(ScanPresentation::measurementNote(report)) + '\n';
}

} // namespace loadscope::ScanMarkdown
