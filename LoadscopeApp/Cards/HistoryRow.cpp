// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/HistoryRow.h"

#include "LoadscopeApp/Text/ElidedLabel.h"
#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int narrowestValue = 64;
constexpr int lineSpacing = 2;

/// At least so wide, at every text scale: the numbers of all rows stand in columns.
void keepWidth(QWidget& number, int width) {
    AppTheme::bind(&number, [&number, width] { number.setMinimumWidth(AppTheme::current().scaled(width)); });
}

QVBoxLayout* lines() {
    auto* column = new QVBoxLayout;
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(lineSpacing);
    return column;
}

} // namespace

HistoryRow::HistoryRow(const Content& content, QWidget* accessory, QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 8, 0, 8);
    row->setSpacing(Metrics::rowSpacing);
    if (content.rank) {
        auto* rank = new NumberLabel(QString::fromStdString(LocaleFormat::grouped(*content.rank)),
                                     TextStyle::subheadline);
        rank->setWeight(QFont::DemiBold);
        rank->setAlignment(Qt::AlignLeading | Qt::AlignVCenter); // under the heading of the list
        keepWidth(*rank, Metrics::rankWidth);
        row->addWidget(rank);
    }
    auto* names = lines();
    auto* title = new ElidedLabel(content.title, TextStyle::subheadline);
    title->setWeight(QFont::Medium);
    title->setElideMode(Qt::ElideMiddle); // names alike differ at their ends
    names->addWidget(title);
    names->addWidget(TextLabel::note(content.detail));
    row->addLayout(names, 1);
    if (accessory != nullptr) row->addWidget(accessory, 0, Qt::AlignVCenter);

    auto* numbers = lines();
    auto* value =
        new NumberLabel(QString::fromStdString(LocaleFormat::grouped(content.value)), TextStyle::subheadline,
                        content.valueTint.value_or(ThemeColor::primaryText));
    value->setWeight(QFont::DemiBold);
    keepWidth(*value, narrowestValue);
    numbers->addWidget(value);
    if (!content.valueCaption.isEmpty()) {
        auto* caption = new TextLabel(content.valueCaption, TextStyle::caption, ThemeColor::secondaryText);
        caption->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
        numbers->addWidget(caption);
    }
    row->addLayout(numbers);
    row->setAlignment(numbers, Qt::AlignVCenter);
}

} // namespace loadscope
