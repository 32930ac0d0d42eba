// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Motion/TransitionCover.h"

#include <QPixmap>

namespace loadscope {

/// Moves from one picture of a widget to the next: the old one leaves to one side while the new one comes in
/// from the other, both fading.
class SlideCover : public TransitionCover {
    Q_OBJECT

public:
    /// `before` is how `widget` looked; it shows its new content already. Where motion is unwelcome the
    /// pictures only cross-fade, in less time.
    static void start(QWidget* widget, const QPixmap& before, bool forward);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SlideCover(QWidget* widget, const QPixmap& before, const QPixmap& after, double way);

    QPixmap before_;
    QPixmap after_;
    double way_;
};

} // namespace loadscope
