// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/PushButton.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Controls/ReturnKey.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace loadscope {
namespace {

constexpr int symbolSize = 15;
constexpr int symbolGap = 7;
constexpr double disabledOpacity = 0.5;
constexpr int ringInset = 2; ///< between the edge of a filled button and its focus ring

} // namespace

PushButton::PushButton(Kind kind, const QString& title, QWidget* parent)
    : QPushButton(title, parent), kind_(kind) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

void PushButton::setTitle(const QString& title) {
    if (title == text()) return;
    const QKeySequence keys = shortcut();
    setText(title);
    setShortcut(keys);
}

void PushButton::setSymbol(const QString& key) {
    symbol_ = key;
    updateGeometry();
    update();
}

void PushButton::setAvailable(bool available) {
    keepsKeyboard_ = true;
    setEnabled(available);
    keepsKeyboard_ = false;
}

// The toolkit moves the keyboard on from a widget that is disabled.
bool PushButton::focusNextPrevChild(bool next) {
    return keepsKeyboard_ || QPushButton::focusNextPrevChild(next);
}

void PushButton::setFillsWidth() { setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed); }

QFont PushButton::titleFont() const { return AppTheme::current().font(TextStyle::body, QFont::Medium); }

int PushButton::horizontalInset() const { return kind_ == Kind::plain ? 6 : (symbol_.isEmpty() ? 14 : 12); }

QSize PushButton::sizeHint() const {
    const AppTheme& theme = AppTheme::current();
    int width = QFontMetrics(titleFont()).horizontalAdvance(text()) + 2 * horizontalInset();
    if (!symbol_.isEmpty()) width += theme.scaled(symbolSize) + symbolGap;
    return {width, theme.scaled(Metrics::controlHeight)};
}

PushButton::Colors PushButton::colors() const {
    const AppTheme& theme = AppTheme::current();
    switch (kind_) {
    case Kind::primary: {
        const QColor accent = theme.color(ThemeColor::accent);
        const QColor shade = theme.color(ThemeColor::primaryText);
        const QColor fill = isDown()       ? ThemeColors::blended(shade, 0.18, accent)
                            : underMouse() ? ThemeColors::blended(shade, 0.08, accent)
                                           : accent;
        return {fill, QColor(Qt::transparent), theme.color(ThemeColor::onAccent)};
    }
    case Kind::secondary: {
        const ThemeColor fill = isDown()       ? ThemeColor::controlPressed
                                : underMouse() ? ThemeColor::controlHover
                                               : ThemeColor::control;
        return {theme.color(fill), theme.color(ThemeColor::border), theme.color(ThemeColor::primaryText)};
    }
    case Kind::destructive: {
        const double strength = isDown() ? 0.24 : (underMouse() ? 0.18 : 0.12);
        const QColor red = theme.color(ThemeColor::bandExcessive);
        return {theme.color(ThemeColor::bandExcessive, strength), QColor(Qt::transparent), red};
    }
    case Kind::plain:
        break;
    }
    const double wash = isDown() ? 0.12 : (underMouse() ? 0.06 : 0);
    return {theme.color(ThemeColor::primaryText, wash), QColor(Qt::transparent),
            theme.color(ThemeColor::secondaryText)};
}

void PushButton::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    const Colors colors = this->colors();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // Dimmed only when it was disabled itself: behind a sheet the whole window is, and keeps its look.
    if (testAttribute(Qt::WA_ForceDisabled)) painter.setOpacity(disabledOpacity);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setBrush(colors.fill);
    painter.setPen(colors.border);
    painter.drawRoundedRect(frame, Metrics::controlRadius, Metrics::controlRadius);

    const QFont font = titleFont();
    const int symbolWidth = symbol_.isEmpty() ? 0 : theme.scaled(symbolSize) + symbolGap;
    const int textWidth = QFontMetrics(font).horizontalAdvance(text());
    QRect content(0, 0, symbolWidth + textWidth, height());
    content.moveLeft((width() - content.width()) / 2);
    content = QStyle::visualRect(layoutDirection(), rect(), content);
    if (symbolWidth > 0) {
        const double side = theme.scaled(symbolSize);
        const double left = layoutDirection() == Qt::RightToLeft ? content.right() - side : content.left();
        Icon::paint(painter, QRectF(left, (height() - side) / 2, side, side), symbol_, colors.text);
    }
    painter.setFont(font);
    painter.setPen(colors.text);
    const QRect textArea = layoutDirection() == Qt::RightToLeft ? content.adjusted(0, 0, -symbolWidth, 0)
                                                                : content.adjusted(symbolWidth, 0, 0, 0);
    ReadingText::draw(painter, textArea, Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip, text());
    if (!FocusRing::isWanted(this)) return;
    // On the accent's own fill the usual ring would not be seen.
    if (kind_ == Kind::primary)
        FocusRing::paint(painter, rect().adjusted(ringInset, ringInset, -ringInset, -ringInset),
                         Metrics::controlRadius - ringInset, ThemeColor::onAccent);
    else
        FocusRing::paint(painter, rect(), Metrics::controlRadius);
}

bool PushButton::event(QEvent* event) { return ReturnKey::press(*this, *event) || QPushButton::event(event); }

} // namespace loadscope
