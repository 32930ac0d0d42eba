// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/Pill.h"

#include "LoadscopeApp/Components/AccessibleTraits.h"
#include "LoadscopeApp/Components/Icon.h"
#include "LoadscopeApp/Components/PlainToolTip.h"
#include "LoadscopeApp/ThemeMetrics.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>

#include <algorithm>

namespace loadscope {
namespace {

constexpr int symbolSize = 13;
constexpr int symbolGap = 5;
constexpr int leastText = 40;

} // namespace

Pill::Pill(Look look, QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    AccessibleTraits::setRole(this, QAccessible::StaticText);
    setLook(std::move(look));
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

void Pill::setLook(Look look) {
    look_ = std::move(look);
    setAccessibleName(look_.text);
    updateGeometry();
    update();
}

QFont Pill::textFont() const { return AppTheme::current().font(look_.style, look_.weight); }

int Pill::symbolWidth() const {
    return look_.symbol.isEmpty() ? 0 : AppTheme::current().scaled(symbolSize) + symbolGap;
}

QSize Pill::sizeHint() const {
    const QFontMetrics metrics(textFont());
    return {metrics.horizontalAdvance(look_.text) + symbolWidth() + 2 * Metrics::pillHorizontalInset + 1,
            metrics.height() + 2 * Metrics::pillVerticalInset};
}

QSize Pill::minimumSizeHint() const {
    const QSize whole = sizeHint();
    return {std::min(whole.width(), symbolWidth() + 2 * Metrics::pillHorizontalInset + leastText),
            whole.height()};
}

void Pill::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(look_.tint ? QPen(theme.tintBorder(*look_.tint)) : QPen(Qt::NoPen));
    painter.setBrush(look_.tint ? theme.tint(*look_.tint) : theme.color(ThemeColor::muted));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), height() / 2.0, height() / 2.0);

    const QColor ink = theme.color(look_.tint.value_or(ThemeColor::secondaryText));
    QRect area = rect().adjusted(Metrics::pillHorizontalInset, 0, -Metrics::pillHorizontalInset, 0);
    if (symbolWidth() > 0) {
        const double side = theme.scaled(symbolSize);
        const bool mirrored = layoutDirection() == Qt::RightToLeft;
        Icon::paint(
            painter,
            QRectF(mirrored ? area.right() + 1 - side : area.left(), (height() - side) / 2, side, side),
            look_.symbol, ink);
        area.adjust(mirrored ? 0 : symbolWidth(), 0, mirrored ? -symbolWidth() : 0, 0);
    }
    painter.setFont(textFont());
    painter.setPen(ink);
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(look_.text, Qt::ElideRight, area.width()));
}

bool Pill::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty()) return QWidget::event(event);
    const bool cut = sizeHint().width() > width() + 1;
    PlainToolTip::show(static_cast<QHelpEvent*>(event)->globalPos(), cut ? look_.text : QString(), this);
    return true;
}

} // namespace loadscope
