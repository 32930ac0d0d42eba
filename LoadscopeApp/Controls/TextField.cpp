// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/TextField.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QPainter>

namespace loadscope {
namespace {

constexpr int inset = 6;
constexpr int usualCharacters = 16;
constexpr int fewestCharacters = 8;
constexpr double height = 28;
constexpr double disabledOpacity = 0.5;

} // namespace

TextField::TextField(const QString& purpose, QWidget* parent) : QLineEdit(parent) {
    setFrame(false);
    setTextMargins(inset, 0, inset, 0);
    setPlaceholderText(purpose);
    setAccessibleName(purpose);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    AppTheme::bind(this, [this] { applyTheme(); });
}

void TextField::applyTheme() {
    const AppTheme& theme = AppTheme::current();
    setFont(theme.font(TextStyle::body));
    QPalette palette = theme.palette();
    palette.setColor(QPalette::All, QPalette::Base, Qt::transparent); // the frame below has the ground
    palette.setColor(QPalette::All, QPalette::PlaceholderText, theme.color(ThemeColor::secondaryText));
    setPalette(palette);
    updateGeometry();
}

QSize TextField::sizeHint() const {
    return {QFontMetrics(font()).averageCharWidth() * usualCharacters,
            AppTheme::current().scaled(loadscope::height)};
}

QSize TextField::minimumSizeHint() const {
    return {QFontMetrics(font()).averageCharWidth() * fewestCharacters, sizeHint().height()};
}

void TextField::paintEvent(QPaintEvent* event) {
    const AppTheme& theme = AppTheme::current();
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (testAttribute(Qt::WA_ForceDisabled)) painter.setOpacity(disabledOpacity);
        painter.setBrush(theme.color(ThemeColor::card));
        painter.setPen(theme.color(ThemeColor::border));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Metrics::controlRadius,
                                Metrics::controlRadius);
        // Also for the mouse: it shows where the next letter goes.
        if (hasFocus()) {
            painter.setOpacity(1);
            FocusRing::paint(painter, rect(), Metrics::controlRadius);
        }
    }
    QLineEdit::paintEvent(event);
}

} // namespace loadscope
