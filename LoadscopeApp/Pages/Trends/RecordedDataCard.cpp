// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Trends/RecordedDataCard.h"

#include "LoadscopeApp/Cards/SaveFilePanel.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Controls/MenuButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/History/ScanHistoryExport.h"

#include <QHBoxLayout>

namespace loadscope {
namespace {

const QString fileName = QStringLiteral("loadscope-history");

} // namespace

RecordedDataCard::RecordedDataCard(const std::shared_ptr<const TrendsPresentation>& presentation)
    : clear_(new PushButton(PushButton::Kind::secondary, DisplayText::own(TrendsPresentation::clearButton))) {
    auto* save = new MenuButton(PushButton::Kind::secondary, QStringLiteral("Export…"));
    const QString title = QStringLiteral("Export Recorded Data");
    save->addChoice(QStringLiteral("CSV Table…"), [this, title, presentation] {
        SaveFilePanel::open(this, {title, fileName, QStringLiteral("csv"), QStringLiteral("CSV table")},
                            QByteArray::fromStdString(ScanHistoryExport::csv(presentation->history())));
    });
    save->addChoice(QStringLiteral("JSON Document…"), [this, title, presentation] {
        SaveFilePanel::open(
            this, {title, fileName, QStringLiteral("json"), QStringLiteral("JSON document")},
            QByteArray::fromStdString(ScanHistoryExport::json(presentation->history()) + '\n'));
    });
    clear_->setSymbol(QStringLiteral("trash"));
    connect(clear_, &PushButton::clicked, this, &RecordedDataCard::clearWanted);

    auto* row = new QHBoxLayout;
    row->setSpacing(8);
    row->addWidget(new SectionHeader(DisplayText::own(TrendsPresentation::recordedDataTitle),
                                     DisplayText::own(presentation->recordedDataDetail())),
                   1);
    row->addSpacing(Metrics::rowSpacing);
    row->addWidget(save, 0, Qt::AlignVCenter);
    row->addWidget(clear_, 0, Qt::AlignVCenter);
    content()->addLayout(row);
}

void RecordedDataCard::setClearing(bool clearing) {
    clear_->setTitle(
        DisplayText::own(clearing ? TrendsPresentation::clearingButton : TrendsPresentation::clearButton));
    clear_->setAvailable(!clearing);
}

} // namespace loadscope
