// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Motion/ValueAnimation.h"

#include "LoadscopeApp/Theme/AppTheme.h"

namespace loadscope {

ValueAnimation::ValueAnimation(QObject* parent, double value, Step step)
    : QVariantAnimation(parent), value_(value), step_(std::move(step)) {}

void ValueAnimation::animateTo(double end, int milliseconds, QEasingCurve::Type curve) {
    run(end, AppTheme::current().reducedMotion() ? 0 : milliseconds, curve);
}

void ValueAnimation::fadeTo(double end, int milliseconds) { run(end, milliseconds, QEasingCurve::OutCubic); }

void ValueAnimation::appear(int milliseconds, QEasingCurve::Type curve) {
    if (hasAppeared_) return;
    hasAppeared_ = true;
    if (AppTheme::current().reducedMotion()) return;
    const double end = value_;
    jumpTo(0);
    animateTo(end, milliseconds, curve);
}

void ValueAnimation::run(double end, int milliseconds, QEasingCurve::Type curve) {
    stop();
    if (milliseconds <= 0 || value_ == end) {
        jumpTo(end);
        Q_EMIT finished();
        return;
    }
    setStartValue(value_);
    setEndValue(end);
    setDuration(milliseconds);
    setEasingCurve(curve);
    start();
}

void ValueAnimation::jumpTo(double value) {
    stop();
    value_ = value;
    step_(value);
}

void ValueAnimation::updateCurrentValue(const QVariant& value) {
    if (state() != QAbstractAnimation::Running) return;
    value_ = value.toDouble();
    step_(value_);
}

} // namespace loadscope
