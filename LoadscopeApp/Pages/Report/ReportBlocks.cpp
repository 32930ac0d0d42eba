// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ReportBlocks.h"

#include "LoadscopeApp/Cards/AdaptiveLayout.h"
#include "LoadscopeApp/Cards/PageFrame.h"
#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Pages/Report/BreakdownSection.h"
#include "LoadscopeApp/Pages/Report/ChangeableCard.h"
#include "LoadscopeApp/Pages/Report/ClaudeCard.h"
#include "LoadscopeApp/Pages/Report/CodexCard.h"
#include "LoadscopeApp/Pages/Report/HealthScoreCard.h"
#include "LoadscopeApp/Pages/Report/InstructionFilesSection.h"
#include "LoadscopeApp/Pages/Report/MembersSection.h"
#include "LoadscopeApp/Pages/Report/MethodologyCard.h"
#include "LoadscopeApp/Pages/Report/ReportSection.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QHBoxLayout>

namespace loadscope {
namespace {

constexpr AdaptiveLayout::Rule claudeBesideCodex{.widths = AdaptiveLayout::Widths::firstByShare,
                                                 .spacing = Metrics::blockSpacing,
                                                 .stackedSpacing = Metrics::blockSpacing,
                                                 .sideBySideFrom = 740,
                                                 .firstShare = 0.63};

QWidget* header() {
    auto* header = new QWidget;
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(
        new PageHeader(
            QStringLiteral("Overview"),
            QStringLiteral("Everything this startup-context scan measured, in Claude Code and in Codex.")),
        1);
    row->addWidget(new StatusPill(DisplayText::own(ScanPresentation::completeLabel),
                                  QStringLiteral("checkmark.circle.fill"), ThemeColor::bandLean),
                   0, Qt::AlignTop);
    return header;
}

QWidget* totals(const ScanReport& report, const std::shared_ptr<const RecordedScan>& previous) {
    auto* row = new QWidget;
    auto* pair = new AdaptiveLayout(claudeBesideCodex, row);
    pair->addWidget(new ClaudeCard(report, previous));
    pair->addWidget(new CodexCard(report.codex));
    return row;
}

} // namespace

std::vector<QWidget*> reportBlocks(const std::shared_ptr<const ScanReport>& report,
                                   const std::shared_ptr<const RecordedScan>& previous) {
    auto* breakdown = new BreakdownSection(*report);
    std::vector<QWidget*> blocks{header(), totals(*report, previous), new HealthScoreCard(*report),
                                 breakdown};
    if (ChangeableCard::isNeeded(*report)) blocks.push_back(new ChangeableCard(*report));
    if (!report->details.members.empty()) {
        auto* members = new MembersSection(report);
        if (breakdown->table() != nullptr) members->connectRows(breakdown->table());
        blocks.push_back(members);
    }
    blocks.insert(blocks.end(), {new InstructionFilesSection(*report), new MethodologyCard(*report),
                                 new ReportSection(report)});
    return blocks;
}

} // namespace loadscope
