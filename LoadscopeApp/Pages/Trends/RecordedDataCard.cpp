// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Trends/RecordedDataCard.h"

#include "LoadscopeApp/Cards/SaveFilePanel.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/History/ScanHistoryExport.h"

#include <QHBoxLayout>
#include <QMenu>

namespace loadscope {
namespace {

const QString fileName = QStringLiteral("loadscope-history");

} // namespace

RecordedDataCard::RecordedDataCard(const std::shared_ptr<const TrendsPresentation>& presentation)
    : clear_(new PushButton(PushButton::Kind::secondary, DisplayText::own(TrendsPresentation::clearButton))) {
    auto* save = new PushButton(PushButton::Kind::secondary, QStringLiteral("Export…"));
    const QString title = QStringLiteral("Export Recorded Data");
    auto* choices = new QMenu(save);
    choices->addAction(QStringLiteral("CSV Table…"), this, [this, title, presentation] {
        SaveFilePanel::open(this, {title, fileName, QStringLiteral("csv"), QStringLiteral("CSV table")},
                            QByteArray::fromStdString(ScanHistoryExport::csv(presentation->history())));
    });
    choices->addAction(QStringLiteral("JSON Document…"), this, [this, title, presentation] {
        SaveFilePanel::open(
            this, {title, fileName, QStringLiteral("json"), QStringLiteral("JSON document")},
            QByteArray::fromStdString(ScanHistoryExport::json(presentation->history()) + '\n'));
    });
    save->setMenu(choices);
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
