// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QCheckBox>

namespace loadscope {

class ValueAnimation;

/// A switch with its title on the leading side; a click anywhere on the row turns it.
class ToggleSwitch : public QCheckBox {
    Q_OBJECT

public:
    explicit ToggleSwitch(const QString& title, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override;

private:
    ValueAnimation* knob_;
};

} // namespace loadscope
