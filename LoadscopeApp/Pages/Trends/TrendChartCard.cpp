// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Trends/TrendChartCard.h"

#include "LoadscopeApp/Accessibility/ReadingOrder.h"
#include "LoadscopeApp/Cards/CardPieces.h"
#include "LoadscopeApp/Charts/ChartLegend.h"
#include "LoadscopeApp/Charts/SaveChartButton.h"
#include "LoadscopeApp/Charts/TrendChart.h"
#include "LoadscopeApp/Charts/TrendChartPainter.h"
#include "LoadscopeApp/Pages/Comparison/ComparisonTable.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Platform/FilePath.h"

#include <QHBoxLayout>

#include <algorithm>
#include <cmath>

namespace loadscope {

TrendChartCard::TrendChartCard(const std::shared_ptr<const TrendsPresentation>& presentation)
    : chart_(new TrendChart(this)), legend_(new ChartLegend) {
    const std::string& repository = presentation->scans().back().repositoryName;
    auto* save = new SaveChartButton(DisplayText::own("startup-tokens-" + FilePath::namePiece(repository)),
                                     [this] { return picture(); });
    chart_->setPresentation(presentation);
    std::vector<ChartLegend::Entry> entries;
    for (const TrendsPresentation::ToolSeries& series : presentation->series())
        entries.push_back({DisplayText::own(series.label), series.paletteIndex});
    legend_->setEntries(std::move(entries));

    content()->addLayout(CardPieces::header(DisplayText::own(TrendsPresentation::chartTitle),
                                            DisplayText::own(TrendsPresentation::chartDetail), save));
    auto* tooltipRoom = new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Fixed);
    content()->addItem(tooltipRoom);
    content()->addWidget(chart_);
    content()->addWidget(legend_);
    content()->addWidget(TextLabel::note(DisplayText::own(presentation->chartCaption())));
    showChosen();
    connect(chart_, &TrendChart::chosenChanged, this, &TrendChartCard::showChosen);
    // The tooltip stands above the plot; it must not cover the header.
    AppTheme::bind(this, [this, tooltipRoom] {
        TrendsPresentation::Tooltip tallest;
        tallest.conditions.resize(chart_->presentation().mostConditionLines());
        const double height = TrendChartPainter::tooltip(tallest).size().height();
        const double above = -chart_->shapes().tooltipRect(0, {0, height}).y;
        const int room = static_cast<int>(std::ceil(above)) - content()->spacing();
        tooltipRoom->changeSize(0, std::max(0, room), QSizePolicy::Minimum, QSizePolicy::Fixed);
        content()->invalidate();
    });
}

void TrendChartCard::showChosen() {
    delete comparison_;
    std::vector<std::size_t> chosen = chart_->chosen();
    std::sort(chosen.begin(), chosen.end()); // by date
    if (chosen.size() == 2) {
        const std::vector<RecordedScan>& scans = chart_->presentation().scans();
        comparison_ = new ComparisonTable(ScanComparison::of(ScanMeasurement::ofRecord(scans[chosen[0]]),
                                                             ScanMeasurement::ofRecord(scans[chosen[1]])));
    } else {
        comparison_ = TextLabel::note(DisplayText::own(
            chosen.empty() ? TrendsPresentation::chooseHint : TrendsPresentation::chooseSecondHint));
    }
    content()->addWidget(comparison_);
    ReadingOrder::follow(*this);
    comparison_->show();
}

ChartPicture TrendChartCard::picture() const {
    const QSizeF size = chart_->size();
    return {DisplayText::line(chart_->presentation().pictureTitle()),
            {size,
             [this, size](QPainter& painter) {
                 TrendChartPainter::paint(painter, chart_->geometryFor(size), chart_->palette());
             }},
            {QSizeF(size.width(), legend_->heightForWidth(chart_->width())),
             [this, size](QPainter& painter) { legend_->paint(painter, size.width()); }}};
}

} // namespace loadscope
