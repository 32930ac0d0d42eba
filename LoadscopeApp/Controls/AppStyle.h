// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

namespace loadscope {

/// What the toolkit itself still draws, in the theme's look: slim scroll bars, tool tips and texts.
class AppStyle : public QProxyStyle {
    Q_OBJECT

public:
    AppStyle();

    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* result) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl part, const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    /// In the reading direction of the text, not of the window.
    void drawItemText(QPainter* painter, const QRect& area, int flags, const QPalette& palette,
                      bool isEnabled, const QString& text, QPalette::ColorRole role) const override;
};

} // namespace loadscope
