// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

/// A hairline between two parts of a card.
class DividerLine : public QWidget {
    Q_OBJECT

public:
    explicit DividerLine(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace loadscope
