// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/ColumnCard.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Cards/CardPieces.h"
#include "LoadscopeApp/Cards/Pill.h"
#include "LoadscopeApp/Charts/BarChart.h"
#include "LoadscopeApp/Pages/Compare/CategoryTable.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/ElidedLabel.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace loadscope {
namespace {

constexpr int unitGap = 6;

CategoryTable* makeTable(const std::vector<RecordedCategory>& categories) {
    std::vector<CategoryTable::Line> lines;
    lines.reserve(categories.size());
    for (const RecordedCategory& category : categories)
        lines.push_back(
            {DisplayText::line(category.name), DisplayText::own(LocaleFormat::grouped(category.tokens))});
    return new CategoryTable(lines);
}

QHBoxLayout* totalLine(const QString& total) {
    auto* number = new TextLabel(total, TextStyle::title);
    number->setSelectable();
    auto* row = new QHBoxLayout;
    row->setSpacing(unitGap);
    row->addWidget(number);
    row->addWidget(
        new TextLabel(DisplayText::own(TokenTexts::unit), TextStyle::body, ThemeColor::secondaryText), 1);
    return row;
}

} // namespace

ColumnCard::ColumnCard(const ComparePresentation& presentation, const ComparePresentation::Column& column,
                       const QString& longestPill)
    : categories_(makeTable(column.scan.categories)) {
    const ComparePresentation::ColumnText text = ComparePresentation::text(column);
    const QString label = DisplayText::line(column.label);
    const QString pill = DisplayText::own(text.pill);
    QStringList summary;
    for (const std::string& line : text.summary)
        summary.append(DisplayText::line(line));
    summary_ = summary.join(QLatin1Char('\n'));
    auto* heading = new ElidedLabel(label, TextStyle::headline);
    heading->setElideMode(Qt::ElideMiddle); // names alike differ at their ends
    heading->setWeight(QFont::DemiBold);
    heading->setSelectable();
    AccessibleTraits::setRole(heading, QAccessible::Heading, label);
    auto* scanned =
        new TextLabel(DisplayText::own(text.scanned), TextStyle::caption, ThemeColor::secondaryText);
    scanned->setSelectable();
    auto* chart = new BarChart(BarChart::Kind::column, presentation.columnChart(column),
                               {{label, column.paletteIndex}});
    chart->setAccessibleName(DisplayText::line(text.chartName));

    for (MarkedWidget* marks : {static_cast<MarkedWidget*>(chart), static_cast<MarkedWidget*>(categories_)})
        marks->setMenuExtras([this](QMenu& menu) {
            menu.addSeparator();
            addCopy(menu);
        });

    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(DisplayText::line(text.cardName));
    setAccessibleDescription(QStringLiteral("The key for Copy copies all of it."));

    content()->addWidget(heading);
    content()->addWidget(scanned);
    content()->addLayout(totalLine(DisplayText::own(text.total)));
    auto* band = new StatusPill(pill, QStringLiteral("scalemass"), ThemeColors::text(text.band));
    band->setWraps(longestPill);
    band->setSelectable();
    content()->addWidget(band, 0, Qt::AlignLeading);
    content()->addWidget(chart);
    content()->addWidget(CardPieces::divider());
    content()->addWidget(categories_);
    content()->addStretch();
}

QString ColumnCard::copyableText() const {
    const QString table = categories_->selectedText();
    return table.isEmpty() ? summary_ : summary_ + QStringLiteral("\n\n") + table;
}

void ColumnCard::copy() const { QGuiApplication::clipboard()->setText(copyableText()); }

void ColumnCard::addCopy(QMenu& menu) {
    menu.addAction(QStringLiteral("Copy"), this, &ColumnCard::copy)->setShortcut(QKeySequence::Copy);
}

void ColumnCard::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addCopy(*menu);
    menu->popup(event->globalPos());
}

void ColumnCard::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copy();
    else
        ReportSurface::keyPressEvent(event);
}

void ColumnCard::paintEvent(QPaintEvent* event) {
    ReportSurface::paintEvent(event);
    if (!FocusRing::isWanted(this)) return;
    QPainter painter(this);
    FocusRing::paint(painter, rect(), Metrics::cardRadius);
}

} // namespace loadscope
