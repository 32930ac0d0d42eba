// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/ThemeColor.h"

#include <QString>
#include <QWidget>

class QPainter;
class QVariantAnimation;

namespace loadscope {

/// The application's own icons, by key. They are drawn once per size, colour and pixel ratio.
namespace Icon {

/// Paints the icon `key` in `color` into the square `area`; an unknown key paints nothing.
void paint(QPainter& painter, const QRectF& area, const QString& key, const QColor& color);

} // namespace Icon

/// One icon as a widget. It is decoration: assistive technologies do not see it.
class IconView : public QWidget {
    Q_OBJECT

public:
    IconView(const QString& key, int size, ThemeColor color, QWidget* parent = nullptr);

    void setColor(ThemeColor color);
    /// Degrees clockwise.
    void setRotation(double degrees);
    /// Turns for as long as it is shown; stands still where motion is unwelcome.
    void setSpinning(bool spinning);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void updateSpin();

    QString key_;
    int size_;
    ThemeColor color_;
    double rotation_ = 0;
    bool spinning_ = false;
    QVariantAnimation* spin_ = nullptr;
};

} // namespace loadscope
