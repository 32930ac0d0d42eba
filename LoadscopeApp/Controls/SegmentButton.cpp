// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/SegmentButton.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QPainter>

namespace loadscope {
namespace {

constexpr int inset = 6;
constexpr double height = 26;
constexpr double disabledOpacity = 0.5;

QFont titleFont() { return AppTheme::current().font(TextStyle::body, QFont::Medium); }

} // namespace

SegmentButton::SegmentButton(const QString& title, QWidget* parent) : QRadioButton(title, parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

QSize SegmentButton::sizeHint() const {
    return {QFontMetrics(titleFont()).horizontalAdvance(text()) + 2 * inset,
            AppTheme::current().scaled(loadscope::height)};
}

bool SegmentButton::hitButton(const QPoint& position) const { return rect().contains(position); }

void SegmentButton::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (testAttribute(Qt::WA_ForceDisabled)) painter.setOpacity(disabledOpacity);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setBrush(
        theme.color(underMouse() && isEnabled() ? ThemeColor::controlHover : ThemeColor::control));
    painter.setPen(theme.color(ThemeColor::border));
    painter.drawRoundedRect(frame, Metrics::controlRadius, Metrics::controlRadius);
    if (isChecked()) {
        painter.setBrush(theme.tint(ThemeColor::accent));
        painter.setPen(theme.color(ThemeColor::accent));
        painter.drawRoundedRect(frame, Metrics::controlRadius, Metrics::controlRadius);
    }
    painter.setFont(titleFont());
    painter.setPen(theme.color(isChecked() ? ThemeColor::selected : ThemeColor::primaryText));
    ReadingText::draw(painter, rect(), Qt::AlignCenter | Qt::TextSingleLine, text());
    if (!FocusRing::isWanted(this)) return;
    painter.setOpacity(1);
    FocusRing::paint(painter, rect(), Metrics::controlRadius);
}

} // namespace loadscope
