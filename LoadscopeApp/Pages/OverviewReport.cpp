// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/OverviewReport.h"

#include "LoadscopeApp/Components/Pill.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace loadscope {
namespace {

QWidget* header() {
    auto* header = new QWidget;
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(
        new PageHeader(
            QStringLiteral("Overview"),
            QStringLiteral("Everything this startup-context scan measured, in Claude Code and in Codex.")),
        1);
    row->addWidget(new StatusPill(QStringLiteral("Scan complete"), QStringLiteral("checkmark.circle.fill"),
                                  ThemeColor::bandLean),
                   0, Qt::AlignTop);
    return header;
}

} // namespace

OverviewReport::OverviewReport(std::shared_ptr<const ScanReport> report, QWidget* parent)
    : PageFrame(parent), report_(std::move(report)) {
    column()->addWidget(header());
    column()->addStretch();
}

} // namespace loadscope
