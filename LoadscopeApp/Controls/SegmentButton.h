// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QRadioButton>

namespace loadscope {

/// One of a few choices that stand side by side; the chosen one is tinted.
class SegmentButton : public QRadioButton {
    Q_OBJECT

public:
    explicit SegmentButton(const QString& title, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override;
};

} // namespace loadscope
