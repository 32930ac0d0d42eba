// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/LeaderboardCard.h"

#include "LoadscopeApp/Cards/CardPieces.h"
#include "LoadscopeApp/Cards/HistoryRow.h"
#include "LoadscopeApp/Cards/SectionHeader.h"
#include "LoadscopeApp/Cards/TrendPill.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/ComparePresentation.h"

#include <QHBoxLayout>

namespace loadscope {
namespace {

constexpr int spaceBetweenGroups = 8;

QWidget* groupLabel(const QString& text) {
    return TextLabel::heading(text, TextStyle::caption, ThemeColor::secondaryText);
}

RowButton* makeRow(const ComparePresentation::LeaderboardRow& row, const LeaderboardEntry& entry) {
    const HistoryRowText& text = row.row;
    const QString title = DisplayText::line(text.title);
    const QString detail = DisplayText::own(text.detail);
    const QString band = DisplayText::own(text.valueCaption);
    std::optional<int> rank;
    if (text.rank) rank = static_cast<int>(*text.rank);
    auto* button = new RowButton(
        new HistoryRow({rank, title, detail, entry.latest.total, ThemeColors::text(text.band), band},
                       new TrendPill(row.trend)),
        DisplayText::line(text.spoken(row.trend.text)));
    button->setSubject(
        {title, DisplayText::own(LocaleFormat::grouped(entry.latest.total)), text.repositoryPath, true});
    button->setAccessibleDescription(QStringLiteral("Opens the repository"));
    return button;
}

} // namespace

LeaderboardCard::LeaderboardCard(const ComparePresentation& presentation)
    : RowButtonList(static_cast<QWidget&>(*this)) {
    content()->setContentsMargins(0, Metrics::cardInset, 0, Metrics::cardInset / 2);
    content()->addLayout(
        CardPieces::inset(new SectionHeader(DisplayText::own(ComparePresentation::leaderboardTitle),
                                            DisplayText::own(ComparePresentation::leaderboardDetail))));
    bool isFirst = true;
    for (const ComparePresentation::LeaderboardGroup& group : presentation.leaderboardGroups()) {
        if (!isFirst) content()->addSpacing(spaceBetweenGroups);
        isFirst = false;
        auto* rows = new QVBoxLayout;
        rows->setSpacing(0);
        rows->addLayout(CardPieces::inset(groupLabel(DisplayText::own(group.label))));
        const std::vector<ComparePresentation::LeaderboardRow> texts = ComparePresentation::rows(group);
        for (std::size_t index = 0; index < texts.size(); ++index) {
            RowButton* row = makeRow(texts[index], group.entries[index]);
            if (index > 0) row->setDivided();
            connect(row, &RowButton::clicked, this,
                    [this, path = texts[index].row.repositoryPath] { Q_EMIT repositoryRequested(path); });
            rows->addWidget(row);
            add(row);
        }
        content()->addLayout(rows);
    }
}

} // namespace loadscope
