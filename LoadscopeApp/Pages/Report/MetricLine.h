// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QWidget>

namespace loadscope {

/// A large number followed by the word "tokens" on the same baseline. A number that is too long for the line
/// is written smaller.
class MetricLine : public QWidget {
    Q_OBJECT

public:
    MetricLine(QString number, TextStyle style, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString number_;
    TextStyle style_;
};

} // namespace loadscope
