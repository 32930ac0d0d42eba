// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/RowButton.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Controls/ReturnKey.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QContextMenuEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr double hoverOpacity = 0.035;
constexpr double pressedOpacity = 0.07;

} // namespace

RowButton::RowButton(QWidget* content, const QString& name, QWidget* parent) : QAbstractButton(parent) {
    AccessibleTraits::setRole(this, QAccessible::PushButton, name);
    AccessibleTraits::setLeaf(this);
    AccessibleTraits::setHasMenu(this);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(Metrics::cardInset, 0, Metrics::cardInset, 0);
    column->addWidget(content);
    AppTheme::bind(this, [this] { update(); });
}

void RowButton::setDivided() {
    divided_ = true;
    update();
}

QSize RowButton::sizeHint() const { return layout()->totalSizeHint(); }

QSize RowButton::minimumSizeHint() const { return layout()->totalMinimumSize(); }

void RowButton::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    const double wash = isDown() ? pressedOpacity : (underMouse() && isEnabled() ? hoverOpacity : 0);
    // One point from the edges, where the card has its border.
    if (wash > 0) painter.fillRect(rect().adjusted(1, 0, -1, 0), theme.color(ThemeColor::primaryText, wash));
    if (divided_)
        painter.fillRect(QRect(Metrics::cardInset, 0, width() - 2 * Metrics::cardInset, 1),
                         theme.color(ThemeColor::divider));
    if (FocusRing::isWanted(this))
        FocusRing::paint(painter,
                         QRectF(rect()).adjusted(Metrics::controlRadius, 2, -Metrics::controlRadius, -2),
                         Metrics::controlRadius);
}

void RowButton::contextMenuEvent(QContextMenuEvent* event) {
    MarkMenu::popup(this, subject_, MarkMenu::place(*this, *event, rect()));
}

bool RowButton::event(QEvent* event) {
    return ReturnKey::press(*this, *event) || QAbstractButton::event(event);
}

} // namespace loadscope
