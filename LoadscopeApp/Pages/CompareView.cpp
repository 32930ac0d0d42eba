// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/CompareView.h"

#include "LoadscopeApp/Components/ReportSurface.h"
#include "LoadscopeApp/Components/ScanEmptyState.h"
#include "LoadscopeApp/DisplayText.h"
#include "LoadscopeApp/Pages/BandGuide.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QVBoxLayout>

namespace loadscope {

CompareView::CompareView(QWidget* parent)
    : PageFrame(parent),
      empty_(new ScanEmptyState(
          QStringLiteral("No recorded scans yet"),
          QStringLiteral("Scan two repositories and their latest results appear here side by side."))) {
    auto* surface = new ReportSurface;
    surface->content()->addWidget(empty_);
    column()->addWidget(new PageHeader(
        QStringLiteral("Compare"),
        QStringLiteral("The latest recorded Claude Code scan of each repository, side by side, category for "
                       "category. ") +
            DisplayText::own(CodexPresentation::noBreakdownNote)));
    column()->addWidget(surface);
    column()->addWidget(BandGuide::makeSection());
    column()->addStretch();
}

void CompareView::refresh(const std::vector<RecordedScan>&) {}

} // namespace loadscope
