// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/LinkButton.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Controls/ReturnKey.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QDesktopServices>
#include <QFontMetrics>
#include <QPainter>

namespace loadscope {
namespace {

constexpr int padding = 2;

QRect textArea(const QString& text, int width) {
    return QFontMetrics(AppTheme::current().font(TextStyle::caption))
        .boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, text);
}

} // namespace

LinkButton::LinkButton(const QString& title, QUrl target, QWidget* parent)
    : QAbstractButton(parent), target_(std::move(target)) {
    setText(title);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    PlainToolTip::set(*this, target_.toDisplayString());
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    AccessibleTraits::setRole(this, QAccessible::Link, title);
    connect(this, &QAbstractButton::clicked, this, [this] { QDesktopServices::openUrl(target_); });
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

int LinkButton::heightForWidth(int width) const { return textArea(text(), width).height() + 2 * padding; }

QSize LinkButton::sizeHint() const {
    const QFontMetrics metrics(AppTheme::current().font(TextStyle::caption));
    return {metrics.horizontalAdvance(text()) + 2, metrics.height() + 2 * padding};
}

QSize LinkButton::minimumSizeHint() const {
    const QFontMetrics metrics(AppTheme::current().font(TextStyle::caption));
    return {metrics.averageCharWidth() * 12, metrics.height() + 2 * padding};
}

void LinkButton::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    QFont font = theme.font(TextStyle::caption);
    font.setUnderline(underMouse());
    painter.setFont(font);
    painter.setPen(theme.color(ThemeColor::accent));
    ReadingText::draw(painter, rect().adjusted(0, padding, 0, -padding),
                      Qt::AlignLeading | Qt::AlignTop | Qt::TextWordWrap, text());
    if (FocusRing::isWanted(this)) FocusRing::paint(painter, rect(), Metrics::barRadius);
}

bool LinkButton::event(QEvent* event) {
    return ReturnKey::press(*this, *event) || QAbstractButton::event(event);
}

} // namespace loadscope
