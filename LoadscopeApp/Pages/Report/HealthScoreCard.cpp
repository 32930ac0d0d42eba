// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/HealthScoreCard.h"

#include "LoadscopeApp/Cards/AdaptiveLayout.h"
#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Charts/ScoreGauge.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Scoring/HealthScore.h"

#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr AdaptiveLayout::Rule gaugeBesideText{.widths = AdaptiveLayout::Widths::firstAsItAsks,
                                               .spacing = 24,
                                               .stackedSpacing = 12,
                                               .sideBySideFrom = 380,
                                               .equalHeights = false,
                                               .centersFirst = true};

QWidget* explanation(const ScanReport& report) {
    auto* texts = new QWidget;
    auto* column = new QVBoxLayout(texts);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(new SectionHeader(QStringLiteral("Context headroom"),
                                        DisplayText::own(HealthScore::meaning(report.total))));
    column->addWidget(new Pill({QStringLiteral("Illustrative score — not a measurement"),
                                {},
                                ThemeColors::text(report.band),
                                TextStyle::caption,
                                QFont::DemiBold}));
    column->addWidget(TextLabel::note(DisplayText::own(HealthScore::origin(report.conditions.isEstimate))));
    if (const auto note = HealthScore::scaleNote(report.total, report.band))
        column->addWidget(TextLabel::note(DisplayText::own(*note)));
    return texts;
}

} // namespace

HealthScoreCard::HealthScoreCard(const ScanReport& report, QWidget* parent) : ReportSurface(parent) {
    const int score = HealthScore::value(report.total);
    auto* body = new QWidget;
    auto* pair = new AdaptiveLayout(gaugeBesideText, body);
    pair->addWidget(new ScoreGauge(score, report.band));
    pair->addWidget(explanation(report));
    content()->addWidget(body);
}

} // namespace loadscope
