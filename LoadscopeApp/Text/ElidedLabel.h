// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Text/LineLabel.h"

namespace loadscope {

class WholeSelection;

/// A text on one line that is cut with an ellipsis where it does not fit and then shown whole on hover.
/// Assistive technologies always get the whole text.
class ElidedLabel : public LineLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(const QString& text, TextStyle style = TextStyle::body,
                         ThemeColor color = ThemeColor::primaryText, QWidget* parent = nullptr);

    void setElideMode(Qt::TextElideMode mode);
    /// Lets the mouse select the text, all of it.
    void setSelectable();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    Qt::TextElideMode mode_ = Qt::ElideRight;
    WholeSelection* selection_ = nullptr; ///< when it can be selected
};

} // namespace loadscope
