// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/App/QtUIThread.h"
#include "LoadscopeApp/Window/ContentView.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "LoadscopeCore/Scan/CodexEstimateModel.h"
#include "tests/LoadscopeApp/Support/FakeTools.h"

#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <string>
#include <vector>

namespace loadscope::screenshots {

/// A window over scripted tools, brought into one state to be pictured.
class Stage {
public:
    explicit Stage(const std::vector<RecordedScan>& history = {});

    /// Lets the event loop run until `condition` holds; ends the program when it never does.
    void settle(const std::function<bool()>& condition = {});
    void choose(const std::string& path);
    void scan(testing::FakeProbe::Answer answer);

    QTemporaryDir folder; ///< holds the history
    testing::FakeTools tools;
    testing::MemoryCompletionStore store{true};
    ReadinessChecker::Result readinessAnswer{ToolReadiness::ready, ToolReadiness::ready};
    QtUIThread uiThread;
    ScanModel model;
    CodexEstimateModel codexEstimates;
    ReadinessModel readiness;
    RecentFolders recent; ///< a folder named "monorepo" is gone
    ScanBatch batch;
    ContentView view;
};

/// One picture: its name and how to get there. The window is already shown when `prepare` runs.
struct Scene {
    QString name;
    std::function<void(Stage&)> prepare;
    std::vector<RecordedScan> history = {}; ///< what was recorded before
};

[[nodiscard]] const std::vector<Scene>& scenes();

/// The report of a scan: the usual one and the extremes.
[[nodiscard]] std::vector<Scene> reportScenes();

} // namespace loadscope::screenshots
