// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Trends/PreviousRunsCard.h"

#include "LoadscopeApp/Cards/CardPieces.h"
#include "LoadscopeApp/Cards/HistoryRow.h"
#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/TrendsPresentation.h"

#include <QHBoxLayout>

namespace loadscope {

PreviousRunsCard::PreviousRunsCard(const TrendsPresentation& presentation)
    : RowButtonList(static_cast<QWidget&>(*this)) {
    content()->setContentsMargins(0, Metrics::cardInset, 0, Metrics::cardInset);
    content()->addLayout(CardPieces::inset(new SectionHeader(DisplayText::own(TrendsPresentation::runsTitle),
                                                             DisplayText::own(presentation.runsDetail()))));
    auto* rows = new QVBoxLayout;
    rows->setSpacing(0);
    const std::vector<TrendsPresentation::Run> runs = presentation.runs();
    for (std::size_t index = 0; index < runs.size(); ++index) {
        const HistoryRowText& text = runs[index].row;
        const QString tool = DisplayText::own(runs[index].toolLabel);
        const QString title = DisplayText::line(text.title);
        const QString detail = DisplayText::line(text.detail);
        const QString band = DisplayText::own(text.valueCaption);
        auto* row = new RowButton(new HistoryRow({{},
                                                  title,
                                                  detail,
                                                  presentation.listedRuns()[index].total,
                                                  ThemeColors::text(text.band),
                                                  band},
                                                 new ProvenancePill(tool)),
                                  DisplayText::line(text.spoken(runs[index].toolLabel)));
        row->setSubject({title,
                         DisplayText::own(LocaleFormat::grouped(presentation.listedRuns()[index].total)),
                         text.repositoryPath, true});
        row->setAccessibleDescription(QStringLiteral("Opens the repository"));
        if (index > 0) row->setDivided();
        connect(row, &RowButton::clicked, this,
                [this, path = text.repositoryPath] { Q_EMIT repositoryRequested(path); });
        rows->addWidget(row);
        add(row);
    }
    content()->addLayout(rows);
    content()->addLayout(
        CardPieces::inset(TextLabel::note(DisplayText::own(TrendsPresentation::runsFooter))));
}

} // namespace loadscope
