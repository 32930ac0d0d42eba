// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>
#include <QVariantAnimation>
#include <QWidget>

namespace loadscope {

/// Moves from one picture of a widget to the next: the old one leaves to one side while the new one comes in
/// from the other, both fading. It covers the widget while it runs and then removes itself.
class SlideCover : public QWidget {
    Q_OBJECT

public:
    /// `before` is how `widget` looked; it shows its new content already. Without movement the pictures only
    /// cross-fade.
    static void start(QWidget* widget, const QPixmap& before, bool forward, bool moves, int milliseconds);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SlideCover(QWidget* widget, const QPixmap& before, double way);

    QPixmap before_;
    QPixmap after_;
    double way_;
    QVariantAnimation progress_;
};

} // namespace loadscope
