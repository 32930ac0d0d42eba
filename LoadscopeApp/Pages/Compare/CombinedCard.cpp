// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/CombinedCard.h"

#include "LoadscopeApp/Cards/CardPieces.h"
#include "LoadscopeApp/Charts/BarChart.h"
#include "LoadscopeApp/Charts/ChartLegend.h"
#include "LoadscopeApp/Charts/SaveChartButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Presentation/ComparePresentation.h"

#include <QHBoxLayout>

namespace loadscope {
namespace {

std::vector<BarChart::Series> seriesOf(const ComparePresentation& presentation) {
    std::vector<BarChart::Series> series;
    for (const ComparePresentation::Column& column : presentation.columns())
        series.push_back({DisplayText::line(column.label), column.paletteIndex});
    return series;
}

} // namespace

CombinedCard::CombinedCard(const ComparePresentation& presentation)
    : chart_(new BarChart(BarChart::Kind::grouped, presentation.combinedChart(), seriesOf(presentation))),
      legend_(new ChartLegend) {
    std::vector<ChartLegend::Entry> entries;
    for (const BarChart::Series& series : seriesOf(presentation))
        entries.push_back({series.name, series.paletteIndex});
    legend_->setEntries(std::move(entries));
    const QString title = DisplayText::own(ComparePresentation::combinedTitle);
    chart_->setAccessibleName(title);
    chart_->setAccessibleDescription(QStringLiteral("The arrow keys walk the bars."));
    auto* save = new SaveChartButton(QStringLiteral("category-for-category"), [this] { return picture(); });
    content()->addLayout(
        CardPieces::header(title, DisplayText::own(ComparePresentation::combinedDetail()), save));
    content()->addWidget(chart_);
    content()->addWidget(legend_);
}

ChartPicture CombinedCard::picture() const {
    const double width = chart_->width();
    const QSizeF size(width, chart_->shapes().height());
    return {DisplayText::own(ComparePresentation::combinedTitle),
            {size,
             [this, size](QPainter& painter) {
                 chart_->paint(painter, chart_->geometryFor(size.width()), QRectF({0, 0}, size));
             }},
            {QSizeF(width, legend_->heightForWidth(chart_->width())),
             [this, width](QPainter& painter) { legend_->paint(painter, width); }}};
}

} // namespace loadscope
