// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/ElidedLabel.h"

#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Text/TextWidths.h"
#include "LoadscopeApp/Text/WholeSelection.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

constexpr int fewestCharacters = 6;

} // namespace

ElidedLabel::ElidedLabel(const QString& text, TextStyle style, ThemeColor color, QWidget* parent)
    : LineLabel(text, style, color, parent) {}

void ElidedLabel::setElideMode(Qt::TextElideMode mode) {
    mode_ = mode;
    update();
}

void ElidedLabel::setSelectable() {
    selection_ = new WholeSelection(this, [this] { return text(); });
}

QSize ElidedLabel::sizeHint() const {
    const QFont font = textFont();
    return {static_cast<int>(std::ceil(TextWidths::of(text(), font))) + 1, QFontMetrics(font).height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    const QFontMetrics metrics(textFont());
    const QSize whole = sizeHint();
    return {std::min(whole.width(), metrics.averageCharWidth() * fewestCharacters), whole.height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QFont font = textFont();
    painter.setFont(font);
    painter.setPen(textColor());
    const QFontMetrics metrics(font);
    const QString shown = metrics.elidedText(text(), mode_, width());
    if (selection_ != nullptr && selection_->isSelected()) {
        const QRect area(0, 0, metrics.horizontalAdvance(shown) + 1, height());
        WholeSelection::paint(painter, QStyle::visualRect(layoutDirection(), rect(), area), 0);
    }
    ReadingText::draw(painter, rect(), Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, shown);
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return LineLabel::event(event);
    const bool cut = sizeHint().width() > width() + 1;
    PlainToolTip::show(static_cast<QHelpEvent*>(event)->globalPos(), cut ? text() : QString(), this);
    return true;
}

} // namespace loadscope
