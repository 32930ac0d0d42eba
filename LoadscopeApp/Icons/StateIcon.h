// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/ThemeColor.h"

#include <QWidget>

namespace loadscope {

class IconView;

/// The large icon of a state, on an area of its own tint.
class StateIcon : public QWidget {
    Q_OBJECT

public:
    StateIcon(const QString& symbol, ThemeColor tint, QWidget* parent = nullptr);

    void setSpinning(bool spinning);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ThemeColor tint_;
    IconView* icon_;
};

} // namespace loadscope
