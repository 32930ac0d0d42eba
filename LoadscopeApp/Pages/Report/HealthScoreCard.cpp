// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/HealthScoreCard.h"

#include "LoadscopeApp/Cards/AdaptiveLayout.h"
#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Charts/ScoreGauge.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
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

QString meaning(int score, std::int64_t maximum) {
    return DisplayText::own(std::to_string(score) + " of 100 — how much of the " +
                            LocaleFormat::grouped(maximum) + "-token band scale is still free.");
}

QWidget* explanation(const ScanReport& report, int score) {
    auto* texts = new QWidget;
    auto* column = new QVBoxLayout(texts);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(new SectionHeader(QStringLiteral("Context headroom"),
                                        meaning(score, BandScale::maximum(report.total))));
    column->addWidget(new Pill({QStringLiteral("Illustrative score — not a measurement"),
                                {},
                                ThemeColors::text(report.band),
                                TextStyle::caption,
                                QFont::DemiBold}));
    column->addWidget(
        TextLabel::note(QStringLiteral("Derived from where the %1 total sits on the band scale. ")
                            .arg(report.conditions.isEstimate ? QStringLiteral("estimated")
                                                              : QStringLiteral("Claude-reported")) +
                        DisplayText::own(OpinionBands::opinionNote)));
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
    pair->addWidget(explanation(report, score));
    content()->addWidget(body);
}

} // namespace loadscope
