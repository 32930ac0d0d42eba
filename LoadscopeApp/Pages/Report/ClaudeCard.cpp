// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ClaudeCard.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Charts/BandMeter.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Pages/Comparison/SinceLine.h"
#include "LoadscopeApp/Pages/Report/MetricLine.h"
#include "LoadscopeApp/Pages/Report/ToolLabel.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int leadSymbol = 24;

QHBoxLayout* lead(const ScanReport& report) {
    const ThemeColor color = ThemeColors::text(report.band);
    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(new IconView(QStringLiteral("scalemass"), leadSymbol, color), 0, Qt::AlignTop);
    auto* title =
        new TextLabel(DisplayText::own(ScanPresentation::headline(report)), TextStyle::title, color);
    AccessibleTraits::setRole(title, QAccessible::Heading, title->text());
    title->setWraps();
    row->addWidget(title, 1);
    return row;
}

/// As the history would tell of the report, so that both sides name their categories alike.
ScanComparison since(const RecordedScan& previous, const ScanReport& report) {
    const Timestamp now = std::chrono::system_clock::now();
    ScanMeasurement after = ScanMeasurement::ofRecord(RecordedScan::ofReport(report, now, previous.id));
    after.isEstimate = report.conditions.isEstimate;
    return ScanComparison::of(ScanMeasurement::ofRecord(previous), std::move(after));
}

} // namespace

ClaudeCard::ClaudeCard(const ScanReport& report, const std::shared_ptr<const RecordedScan>& previous,
                       QWidget* parent)
    : ReportSurface(parent) {
    QVBoxLayout* column = content();
    column->setSpacing(4);
    column->addWidget(new ToolLabel(QStringLiteral("Claude Code")));
    column->addSpacing(8);
    column->addLayout(lead(report));
    column->addWidget(
        TextLabel::note(DisplayText::own(ScanPresentation::bandVerdictLine(report)), TextStyle::body));
    column->addSpacing(8);
    column->addWidget(
        new MetricLine(DisplayText::own(LocaleFormat::grouped(report.total)), TextStyle::heroMetric));
    column->addWidget(
        TextLabel::note(DisplayText::own(ScanPresentation::totalCaption(report)), TextStyle::body));
    if (previous) {
        column->addSpacing(8);
        column->addWidget(new SinceLine(since(*previous, report)));
    }
    column->addSpacing(12);
    if (const auto share = ScanPresentation::windowShareLine(report))
        column->addWidget(TextLabel::note(DisplayText::own(*share), TextStyle::body));
    else
        column->addWidget(new BandMeter(report.total, report.band));
    column->addStretch(1);
}

} // namespace loadscope
