// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "LoadscopeApp/Theme/ThemeColor.h"

namespace loadscope {

class ValueAnimation;

/// The score as an open ring with the number in it, 100 by 100 points. It counts up when it first comes into
/// view.
class ScoreGauge : public QWidget {
    Q_OBJECT

public:
    ScoreGauge(int score, OpinionBand band, QWidget* parent = nullptr);

    /// The score that is shown now.
    [[nodiscard]] double shownScore() const;

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    int score_;
    ThemeColor color_;
    ValueAnimation* progress_;
};

} // namespace loadscope
