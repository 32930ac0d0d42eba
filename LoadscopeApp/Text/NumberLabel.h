// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Text/LineLabel.h"

class QPainter;

namespace loadscope {

/// Digits of equal width, so that numbers line up and do not jitter while they count: the toolkit cannot ask
/// the font for them.
namespace TabularDigits {

[[nodiscard]] double width(const QString& text, const QFont& font);

/// Paints `text` in the painter's pen with its baseline starting at `origin`.
void paint(QPainter& painter, const QPointF& origin, const QString& text, const QFont& font);

} // namespace TabularDigits

/// A number with digits of equal width, set to the trailing edge unless told otherwise.
class NumberLabel : public LineLabel {
    Q_OBJECT

public:
    explicit NumberLabel(const QString& text, TextStyle style = TextStyle::body,
                         ThemeColor color = ThemeColor::primaryText, QWidget* parent = nullptr);

    void setAlignment(Qt::Alignment alignment);
    /// Distance of the baseline from the top of the label.
    [[nodiscard]] int baseline() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::Alignment alignment_ = Qt::AlignTrailing | Qt::AlignVCenter;
};

} // namespace loadscope
