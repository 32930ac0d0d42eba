// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/DisclosureButton.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Controls/ReturnKey.h"
#include "LoadscopeApp/Icons/Icon.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QHBoxLayout>
#include <QPainter>

namespace loadscope {
namespace {

constexpr double quarterTurn = 90;
constexpr int chevronSize = 16;
constexpr int smallChevronSize = 13;
constexpr int gap = 8;

} // namespace

DisclosureButton::DisclosureButton(const QString& title, QWidget* body, ChevronSide side, QWidget* parent)
    : QAbstractButton(parent),
      chevron_(new IconView(QStringLiteral("chevron.right"),
                            side == ChevronSide::trailing ? chevronSize : smallChevronSize,
                            ThemeColor::secondaryText)),
      turn_(new ValueAnimation(this, 0, [this](double turn) { turnChevron(turn); })) {
    turnChevron(0);
    setText(title);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    AccessibleTraits::setRole(this, QAccessible::PushButton, title);
    setAccessibleDescription(QStringLiteral("Shows or hides this section"));
    AccessibleTraits::setValue(this, QStringLiteral("Collapsed"));
    AccessibleTraits::setExpanded(this, false);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    if (side == ChevronSide::leading) row->addWidget(chevron_, 0, Qt::AlignVCenter);
    row->addWidget(body, 1);
    if (side == ChevronSide::trailing) row->addWidget(chevron_, 0, Qt::AlignVCenter);
    body->setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(this, &QAbstractButton::clicked, this, [this] { setExpanded(!expanded_); });
}

void DisclosureButton::setExpanded(bool expanded) {
    if (expanded == expanded_) return;
    expanded_ = expanded;
    AccessibleTraits::setValue(this, expanded ? QStringLiteral("Expanded") : QStringLiteral("Collapsed"));
    AccessibleTraits::setExpanded(this, expanded);
    if (isVisible())
        turn_->animateTo(expanded ? 1 : 0, Metrics::collapseMilliseconds);
    else
        turn_->jumpTo(expanded ? 1 : 0);
    Q_EMIT expandedChanged(expanded);
}

void DisclosureButton::turnChevron(double turn) {
    const double closed = layoutDirection() == Qt::RightToLeft ? 2 * quarterTurn : 0;
    chevron_->setRotation(closed + turn * (quarterTurn - closed));
}

QSize DisclosureButton::sizeHint() const { return layout()->sizeHint(); }

QSize DisclosureButton::minimumSizeHint() const { return layout()->minimumSize(); }

bool DisclosureButton::hasHeightForWidth() const {
    return layout() != nullptr && layout()->hasHeightForWidth();
}

int DisclosureButton::heightForWidth(int width) const {
    return layout()->hasHeightForWidth() ? layout()->heightForWidth(width) : layout()->sizeHint().height();
}

void DisclosureButton::paintEvent(QPaintEvent*) {
    if (!FocusRing::isWanted(this)) return;
    QPainter painter(this);
    FocusRing::paint(painter, rect(), Metrics::barRadius);
}

bool DisclosureButton::event(QEvent* event) {
    return ReturnKey::press(*this, *event) || QAbstractButton::event(event);
}

} // namespace loadscope
