// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/App/QtUIThread.h"
#include "LoadscopeApp/Window/ContentView.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "tests/LoadscopeApp/Support/FakeTools.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <vector>

namespace loadscope::testing {

/// Runs the event loop until `condition` holds; false when it did not within a generous limit.
inline bool eventually(const std::function<bool()>& condition, int limitMilliseconds = 10'000) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > limitMilliseconds) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

/// The real window over scripted tools and a real, empty folder.
class Window {
public:
    struct Options {
        bool onboardingCompleted = true;
        ReadinessChecker::Result readiness{ToolReadiness::ready, ToolReadiness::ready};
        std::vector<RecordedScan> history{}; ///< with any, scans are recorded in a folder of their own
    };

    Window() : Window(Options{}) {}
    explicit Window(const Options& options)
        : tools(toolsWith(options.history)),
          store(options.onboardingCompleted),
          readinessAnswer(options.readiness) {
        view.setRecentFolders(recent);
        view.setBatch(batch);
    }

    void show() {
        view.show();
        EXPECT_TRUE(eventually([this] {
            return !readiness.isChecking() && model.historyActivity() != HistoryActivity::loading;
        }));
    }
    [[nodiscard]] std::string folderPath() const { return folder.path().toStdString(); }
    void choose() { view.selectFolder(folderPath()); }

    /// The visible button with this text or accessible name, else null.
    [[nodiscard]] QAbstractButton* button(const QString& name) const {
        for (auto* button : view.findChildren<QAbstractButton*>()) {
            if (button->isVisible() && (button->text() == name || button->accessibleName() == name))
                return button;
        }
        return nullptr;
    }
    /// Everything that the window says: the names and texts of its visible widgets.
    [[nodiscard]] bool says(const QString& text) const;

    QTemporaryDir folder;
    QTemporaryDir data; ///< holds the history
    FakeTools tools;
    MemoryCompletionStore store;
    ReadinessChecker::Result readinessAnswer;
    QtUIThread uiThread;
    ScanModel model{uiThread, tools.collaborators()};
    ReadinessModel readiness{uiThread, [this](StopToken) { return readinessAnswer; }};
    RecentFolders recent{uiThread};
    ScanBatch batch{uiThread, [this] { return tools.collaborators(); }, 2};
    std::optional<std::string> nextChoice;
    std::string askedFrom;
    ContentView view{
        model, readiness, store,
        [this](QWidget*, const std::string& start, const std::function<void(std::string)>& done) {
            askedFrom = start;
            if (nextChoice) done(*nextChoice);
        }};

private:
    [[nodiscard]] FakeTools toolsWith(const std::vector<RecordedScan>& history) const;
};

} // namespace loadscope::testing
