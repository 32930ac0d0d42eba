// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>

namespace loadscope {

/// A line of text to type, in the theme's look. What it is for is its accessible name and, while it is empty,
/// stands in it.
class TextField : public QLineEdit {
    Q_OBJECT

public:
    explicit TextField(const QString& purpose, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void applyTheme();
};

} // namespace loadscope
