// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Window/AppPage.h"

#include <QScrollArea>

namespace loadscope {

class PageList;
class ReadinessModel;
class ScanModel;
class ScanSetupView;
class SidebarRepository;

/// The leading column of the window: the repository, the scan set-up and the pages. It scrolls when it is
/// higher than the window.
class Sidebar : public QScrollArea {
    Q_OBJECT

public:
    Sidebar(ReadinessModel& readiness, ScanModel& model, QWidget* parent = nullptr);

    /// Brings it in line with the scan model.
    void refresh();
    void selectPage(AppPage page);

    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void walkthroughRequested();
    void pageSelected(loadscope::AppPage page);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ScanModel& model_;
    SidebarRepository* repository_;
    ScanSetupView* setup_;
    PageList* pages_;
};

} // namespace loadscope
