// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Compare/CategoryTable.h"

#include "LoadscopeApp/Text/NumberLabel.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QClipboard>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int lineSpacing = 7;
constexpr double nameGap = 12; ///< at least, between a name and its number
constexpr int narrowest = 120;
constexpr double selectionOpacity = 0.16;

QFont tableFont() { return AppTheme::current().font(TextStyle::body); }

} // namespace

CategoryTable::CategoryTable(std::vector<Line> lines, QWidget* parent)
    : QWidget(parent), lines_(std::move(lines)) {
    AccessibleMarks::install();
    setAccessibleName(QStringLiteral("Categories"));
    setFocusPolicy(Qt::ClickFocus);
    setCursor(Qt::IBeamCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

int CategoryTable::lineHeight() const {
    return static_cast<int>(std::ceil(QFontMetricsF(tableFont()).height())) + lineSpacing;
}

QSize CategoryTable::sizeHint() const { return {200, lineHeight() * markCount()}; }

QSize CategoryTable::minimumSizeHint() const { return {narrowest, sizeHint().height()}; }

QString CategoryTable::markText(int mark) const {
    const Line& line = lines_.at(static_cast<std::size_t>(mark));
    return line.name + QStringLiteral(": ") + line.number + QStringLiteral(" tokens");
}

QRect CategoryTable::markArea(int mark) const { return {0, mark * lineHeight(), width(), lineHeight()}; }

int CategoryTable::lineAt(int y) const {
    return std::clamp(y / lineHeight(), 0, std::max(markCount() - 1, 0));
}

QString CategoryTable::text(std::size_t first, std::size_t last) const {
    QStringList rows;
    for (std::size_t index = first; index <= last && index < lines_.size(); ++index)
        rows.append(lines_[index].name + QLatin1Char('\t') + lines_[index].number);
    return rows.join(QLatin1Char('\n'));
}

QString CategoryTable::selectedText() const {
    if (lines_.empty()) return {};
    if (!selection_) return text(0, lines_.size() - 1);
    const auto [first, last] = std::minmax(selection_->first, selection_->second);
    return text(static_cast<std::size_t>(first), static_cast<std::size_t>(last));
}

void CategoryTable::select(int first, int last) {
    if (lines_.empty()) return;
    selection_ = {first, last};
    update();
}

void CategoryTable::paintEvent(QPaintEvent* event) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QFont font = tableFont();
    const QFontMetricsF metrics(font);
    const int height = lineHeight();
    const int first = std::max(0, event->rect().top() / height);
    const int last = std::min(markCount() - 1, event->rect().bottom() / height);
    const bool rightToLeft = layoutDirection() == Qt::RightToLeft;
    for (int index = first; index <= last; ++index) {
        const Line& line = lines_[static_cast<std::size_t>(index)];
        const QRectF area = markArea(index);
        if (selection_ && index >= std::min(selection_->first, selection_->second) &&
            index <= std::max(selection_->first, selection_->second))
            painter.fillRect(area, theme.color(ThemeColor::accent, selectionOpacity));
        const double number = TabularDigits::width(line.number, font);
        const double room = area.width() - number - nameGap;
        painter.setPen(theme.color(ThemeColor::primaryText));
        painter.setFont(font);
        const QRectF name(rightToLeft ? area.right() - room : 0, area.top(), room, area.height());
        ReadingText::draw(painter, name, Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                          metrics.elidedText(line.name, Qt::ElideRight, room));
        const double baseline = area.top() + (area.height() - metrics.height()) / 2 + metrics.ascent();
        TabularDigits::paint(painter, {rightToLeft ? 0 : area.right() - number, baseline}, line.number, font);
    }
}

void CategoryTable::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QWidget::mousePressEvent(event);
    const int line = lineAt(static_cast<int>(event->position().y()));
    select(line, line);
}

void CategoryTable::mouseMoveEvent(QMouseEvent* event) {
    if (selection_ && event->buttons().testFlag(Qt::LeftButton))
        select(selection_->first, lineAt(static_cast<int>(event->position().y())));
}

void CategoryTable::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        QGuiApplication::clipboard()->setText(selectedText());
    else if (event->matches(QKeySequence::SelectAll))
        select(0, markCount() - 1);
    else
        QWidget::keyPressEvent(event);
}

void CategoryTable::focusOutEvent(QFocusEvent*) {
    selection_.reset();
    update();
}

bool CategoryTable::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || lines_.empty()) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const Line& line = lines_[static_cast<std::size_t>(lineAt(help->y()))];
    const QFont font = tableFont();
    const bool isCut =
        QFontMetricsF(font).horizontalAdvance(line.name) + nameGap + TabularDigits::width(line.number, font) >
        width();
    PlainToolTip::show(help->globalPos(), isCut ? line.name : QString(), this);
    return true;
}

} // namespace loadscope
