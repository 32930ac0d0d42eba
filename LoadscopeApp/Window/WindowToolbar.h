// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Scan/RecentFolders.h"

#include <QWidget>

#include <string>
#include <vector>

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

    /// What the menu beside the choice of a folder offers; those that are gone cannot be chosen and say so.
    void setRecent(const std::vector<RecentFolders::Folder>& folders);

Q_SIGNALS:
    void chooseRequested();
    void scanRequested();
    void recentRequested(std::string path);
    /// The menu opens: whether its folders are still there is of interest now.
    void recentShown();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PushButton* choose_;
    PushButton* recent_;
    PushButton* scan_;
};

} // namespace loadscope
