// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QEasingCurve>
#include <QVariantAnimation>

#include <functional>

namespace loadscope {

/// One animated number. Where motion is unwelcome it takes its end value at once. It runs no timer while it
/// rests.
class ValueAnimation : public QVariantAnimation {
    Q_OBJECT

public:
    using Step = std::function<void(double value)>;

    /// `step` is called with each value; the number starts at `value`.
    ValueAnimation(QObject* parent, double value, Step step);

    [[nodiscard]] double value() const { return value_; }

    /// Goes from the present value to `end`.
    void animateTo(double end, int milliseconds, QEasingCurve::Type curve = QEasingCurve::OutCubic);
    /// The same for what changes without moving, which is welcome everywhere.
    void fadeTo(double end, int milliseconds);
    /// The first time that this is asked for: goes from 0 to the present value.
    void appear(int milliseconds, QEasingCurve::Type curve = QEasingCurve::OutCubic);
    /// Takes `value` at once.
    void jumpTo(double value);

protected:
    void updateCurrentValue(const QVariant& value) override;

private:
    void run(double end, int milliseconds, QEasingCurve::Type curve);

    double value_;
    Step step_;
    bool hasAppeared_ = false;
};

} // namespace loadscope
