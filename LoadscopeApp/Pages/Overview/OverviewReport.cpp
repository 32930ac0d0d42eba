// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Overview/OverviewReport.h"

#include "LoadscopeApp/Accessibility/ReadingOrder.h"
#include "LoadscopeApp/Pages/Report/CodexCard.h"
#include "LoadscopeApp/Pages/Report/ReportBlocks.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QVBoxLayout>

namespace loadscope {

OverviewReport::OverviewReport(std::shared_ptr<const ScanReport> report,
                               const std::shared_ptr<const RecordedScan>& previous, QWidget* parent)
    : PageFrame(parent), report_(std::move(report)) {
    setAccessibleName(QStringLiteral("Overview"));
    for (QWidget* block : reportBlocks(report_, previous))
        column()->addWidget(block);
    column()->addStretch();
    ReadingOrder::follow(*this);
}

void OverviewReport::tellWhenMeasured() {
    const auto line = ScanPresentation::measuredLine(*report_);
    if (!line) return;
    column()->insertWidget(0, TextLabel::note(DisplayText::own(*line)));
    ReadingOrder::follow(*this);
}

CodexCard* OverviewReport::codexCard() const { return findChild<CodexCard*>(); }

} // namespace loadscope
