// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/ElidedLabel.h"

#include "LoadscopeApp/Components/AccessibleTraits.h"
#include "LoadscopeApp/Components/PlainToolTip.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int fewestCharacters = 6;

} // namespace

ElidedLabel::ElidedLabel(const QString& text, TextStyle style, ThemeColor color, QWidget* parent)
    : QWidget(parent), style_(style), color_(color) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    AccessibleTraits::setRole(this, QAccessible::StaticText);
    setText(text);
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

void ElidedLabel::setText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    updateGeometry();
    update();
}

void ElidedLabel::setWeight(QFont::Weight weight) {
    weight_ = weight;
    updateGeometry();
    update();
}

void ElidedLabel::setElideMode(Qt::TextElideMode mode) {
    mode_ = mode;
    update();
}

QFont ElidedLabel::textFont() const {
    const AppTheme& theme = AppTheme::current();
    return weight_ ? theme.font(style_, *weight_) : theme.font(style_);
}

QSize ElidedLabel::sizeHint() const {
    const QFontMetrics metrics(textFont());
    return {metrics.horizontalAdvance(text_) + 1, metrics.height()};
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
    painter.setPen(AppTheme::current().color(color_));
    painter.drawText(rect(), Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(text_, mode_, width()));
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const bool cut = sizeHint().width() > width() + 1;
    PlainToolTip::show(static_cast<QHelpEvent*>(event)->globalPos(), cut ? text_ : QString(), this);
    return true;
}

} // namespace loadscope
