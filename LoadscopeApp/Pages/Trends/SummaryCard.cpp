// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Trends/SummaryCard.h"

#include "LoadscopeApp/Cards/AdaptiveLayout.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include <QVBoxLayout>

namespace loadscope {
namespace {

QWidget* metricView(const TrendsPresentation::Metric& metric) {
    auto* view = new QWidget;
    auto* column = new QVBoxLayout(view);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addWidget(
        new TextLabel(DisplayText::own(metric.title), TextStyle::caption, ThemeColor::secondaryText));
    auto* value = new TextLabel(DisplayText::own(metric.value), TextStyle::title,
                                metric.tint ? ThemeColors::text(*metric.tint) : ThemeColor::primaryText);
    value->setSelectable();
    column->addWidget(value);
    column->addWidget(
        new TextLabel(DisplayText::own(metric.caption), TextStyle::caption, ThemeColor::secondaryText));
    column->addStretch();
    return view;
}

} // namespace

SummaryCard::SummaryCard(const TrendsPresentation& presentation) {
    auto* metrics = new AdaptiveLayout(AdaptiveLayout::equal(0, Metrics::rowSpacing));
    for (const TrendsPresentation::Metric& metric : presentation.metrics())
        metrics->addWidget(metricView(metric));
    content()->addWidget(new SectionHeader(DisplayText::own(TrendsPresentation::summaryTitle),
                                           DisplayText::own(presentation.summaryDetail())));
    content()->addLayout(metrics);
}

} // namespace loadscope
