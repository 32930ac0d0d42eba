// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/ThemeColor.h"

#include <QVariantAnimation>
#include <QWidget>

namespace loadscope {

/// An icon that bobs gently along its diagonal for as long as it is shown; still where motion is unwelcome.
/// It points somewhere in the window, and so is mirrored with it.
class BobbingIcon : public QWidget {
    Q_OBJECT

public:
    BobbingIcon(const QString& symbol, int size, ThemeColor color, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void updateMotion();

    QString symbol_;
    int size_;
    ThemeColor color_;
    QVariantAnimation bob_;
};

} // namespace loadscope
