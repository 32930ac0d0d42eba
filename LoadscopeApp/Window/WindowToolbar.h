// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace loadscope {

class PushButton;

/// The bar at the top of the window: its title and the two commands that drive everything.
class WindowToolbar : public QWidget {
    Q_OBJECT

public:
    explicit WindowToolbar(QWidget* parent = nullptr);

    struct Input {
        bool isScanning = false;
        bool hasSelection = false;
        bool canScan = false;
    };
    void refresh(const Input& input);

Q_SIGNALS:
    void chooseRequested();
    void scanRequested();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PushButton* choose_;
    PushButton* scan_;
};

} // namespace loadscope
