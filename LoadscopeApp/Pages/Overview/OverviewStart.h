// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Scan/RecentFolders.h"

#include <QScrollArea>

#include <string>
#include <vector>

class QVBoxLayout;

namespace loadscope {

class PushButton;
class ReportSurface;
class TextLabel;

/// Overview before a scan: what to do, a button that chooses a folder, and the folders to go back to.
class OverviewStart : public QScrollArea {
    Q_OBJECT

public:
    static constexpr std::size_t mostFolders = 5;

    explicit OverviewStart(QWidget* parent = nullptr);

    /// Those that are gone cannot be pressed and say so.
    void refresh(const std::vector<RecentFolders::Folder>& folders);

Q_SIGNALS:
    void chooseRequested();
    void folderRequested(std::string path);
    /// It came into view: whether the folders are still there is of interest now.
    void shown();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void rebuild();

    PushButton* choose_;
    TextLabel* heading_;
    ReportSurface* list_;
    QVBoxLayout* rows_;
    std::vector<RecentFolders::Folder> folders_;
};

} // namespace loadscope
