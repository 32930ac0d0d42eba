// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/TrendsView.h"

#include "LoadscopeApp/Components/ReportSurface.h"
#include "LoadscopeApp/Components/ScanEmptyState.h"
#include "LoadscopeApp/DisplayText.h"
#include "LoadscopeApp/Pages/BandGuide.h"

#include <QVBoxLayout>

namespace loadscope {

TrendsView::TrendsView(QWidget* parent)
    : PageFrame(parent),
      header_(new PageHeader(
          QStringLiteral("Trends"),
          QStringLiteral("Startup context over time, against the Lean, Heavy and Excessive bands."))),
      empty_(new ScanEmptyState(QStringLiteral("No recorded scans yet"), {})) {
    auto* surface = new ReportSurface;
    surface->content()->addWidget(empty_);
    column()->addWidget(header_);
    column()->addWidget(surface);
    column()->addWidget(BandGuide::makeSection());
    column()->addStretch();
}

void TrendsView::refresh(const std::vector<RecordedScan>& history, const std::optional<std::string>&) {
    empty_->setTexts(
        QStringLiteral("No recorded scans yet"),
        history.empty()
            ? QStringLiteral(
                  "Scans are recorded locally as you run them. Run one scan, then another, and the "
                  "trend appears here.")
            : QStringLiteral(
                  "Nothing recorded for this repository yet. Scan it twice and its trend appears here."));
}

} // namespace loadscope
