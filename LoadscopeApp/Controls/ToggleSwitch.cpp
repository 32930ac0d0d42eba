// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/ToggleSwitch.h"

#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Motion/ValueAnimation.h"
#include "LoadscopeApp/Text/ReadingText.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QFontMetrics>
#include <QPainter>

namespace loadscope {
namespace {

constexpr double trackWidth = 32;
constexpr double trackHeight = 19;
constexpr double knobInset = 2;
constexpr int gap = 12;
constexpr double disabledOpacity = 0.5;

} // namespace

ToggleSwitch::ToggleSwitch(const QString& title, QWidget* parent)
    : QCheckBox(title, parent), knob_(new ValueAnimation(this, 0, [this](double) { update(); })) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QCheckBox::toggled, this, [this](bool on) {
        if (isVisible())
            knob_->animateTo(on ? 1 : 0, Metrics::switchMilliseconds);
        else
            knob_->jumpTo(on ? 1 : 0);
    });
    AppTheme::bind(this, [this] {
        updateGeometry();
        update();
    });
}

QSize ToggleSwitch::sizeHint() const {
    const AppTheme& theme = AppTheme::current();
    const QFontMetrics metrics(theme.font(TextStyle::body));
    return {metrics.horizontalAdvance(text()) + gap + theme.scaled(trackWidth),
            qMax(metrics.height(), theme.scaled(trackHeight)) + 4};
}

bool ToggleSwitch::hitButton(const QPoint& position) const { return rect().contains(position); }

void ToggleSwitch::paintEvent(QPaintEvent*) {
    const AppTheme& theme = AppTheme::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(theme.font(TextStyle::body));
    painter.setPen(theme.color(ThemeColor::primaryText));
    ReadingText::draw(painter, rect(), Qt::AlignVCenter | Qt::AlignLeading | Qt::TextSingleLine, text());

    if (testAttribute(Qt::WA_ForceDisabled)) painter.setOpacity(disabledOpacity);
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const QSizeF size(theme.scaled(trackWidth), theme.scaled(trackHeight));
    const QRectF track(QPointF(mirrored ? 0 : width() - size.width(), (height() - size.height()) / 2), size);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ThemeColors::blended(theme.color(ThemeColor::accent), knob_->value(),
                                          theme.color(ThemeColor::switchOff)));
    painter.drawRoundedRect(track, size.height() / 2, size.height() / 2);
    const double side = size.height() - 2 * knobInset;
    const double way = size.width() - side - 2 * knobInset;
    const double offset = (mirrored ? 1 - knob_->value() : knob_->value()) * way;
    painter.setBrush(theme.color(ThemeColor::knob));
    painter.drawEllipse(QRectF(track.left() + knobInset + offset, track.top() + knobInset, side, side));
    if (FocusRing::isWanted(this)) {
        painter.setOpacity(1);
        FocusRing::paint(painter, rect(), Metrics::barRadius);
    }
}

} // namespace loadscope
