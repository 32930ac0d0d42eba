// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/QtUIThread.h"
#include "LoadscopeApp/Controls/AppStyle.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Window/ContentView.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "benchmarks/SampleTexts.h"
#include "tests/LoadscopeApp/Support/FakeTools.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace loadscope {
namespace {

constexpr int rounds = 15;
constexpr double goal = 50; // milliseconds

/// Waits for the first frame after a change: the end of the event loop's turn in which something was painted.
class FirstFrame : public QObject {
public:
    FirstFrame() { qApp->installEventFilter(this); }

    double millisecondsAfter(const std::function<void()>& change) {
        isPainted_ = isShown_ = false;
        QElapsedTimer timer;
        timer.start();
        change();
        while (!isShown_)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !isPainted_) {
            isPainted_ = true;
            QTimer::singleShot(0, this, [this] { isShown_ = true; });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    bool isPainted_ = false;
    bool isShown_ = false;
};

void settle() {
    for (int turn = 0; turn < 20; ++turn)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

/// A full history of so many repositories; every page is built anew in each round.
double switchTo(AppPage page, int repositories) {
    const QTemporaryDir folder;
    std::vector<RecordedScan> history = Samples::history(200, 20);
    for (std::size_t i = 0; i < history.size(); ++i) {
        history[i].repositoryName += "-" + std::to_string(i % static_cast<std::size_t>(repositories));
        history[i].repositoryPath = "/home/someone/src/" + history[i].repositoryName;
        history[i].tool = RecordedScan::claudeTool;
        for (int c = 0; history[i].categories.size() < 20; ++c)
            history[i].categories.push_back({"Category " + std::to_string(c), 50 * c});
    }
    testing::FakeTools tools;
    tools.history = std::make_shared<ScanHistoryStore>(folder.path().toStdString());
    if (!AtomicFile::write(tools.history->filePath(), ScanHistoryFile::encode(history))) std::abort();

    std::vector<double> times;
    for (int round = 0; round <= rounds; ++round) {
        QtUIThread uiThread;
        ScanModel model(uiThread, tools.collaborators());
        ReadinessModel readiness(uiThread, [](StopToken) {
            return ReadinessChecker::Result{ToolReadiness::ready, ToolReadiness::ready};
        });
        testing::MemoryCompletionStore onboarding{true};
        ContentView window(model, readiness, onboarding,
                           [](QWidget*, const std::string&, const std::function<void(std::string)>&) {});
        window.show();
        while (model.historyActivity() != HistoryActivity::none)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        settle();
        FirstFrame frame;
        const double time = frame.millisecondsAfter([&] { window.setPage(page); });
        if (round > 0) times.push_back(time); // the first warms the caches
        settle();
    }
    std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
    return times[rounds / 2];
}

} // namespace
} // namespace loadscope

/// Prints a line per page for the table of `benchmarks/window`; 2 when one is slower than its goal.
int main(int count, char** arguments) {
    using namespace loadscope;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(count, arguments);
    QApplication::setStyle(new AppStyle);
    AppTheme theme;
    theme.force(Appearance::light, true); // without movement: the first frame is the whole page
    struct Case {
        const char* what;
        AppPage page;
        int repositories;
    };
    bool allHold = true;
    for (const Case& each : {Case{"Trends, 200 scans x 20 categories (ms)", AppPage::trends, 1},
                             Case{"Compare, 200 scans of 8 folders (ms)", AppPage::compare, 1},
                             Case{"Compare, 200 scans of 40 folders (ms)", AppPage::compare, 5},
                             Case{"Compare, 200 scans of 200 folders (ms)", AppPage::compare, 25}}) {
        const double time = switchTo(each.page, each.repositories);
        const bool holds = time <= goal;
        std::printf("%s\t%d.%d\t-\t-\t<= 50\t%s\n", each.what, static_cast<int>(time),
                    static_cast<int>(time * 10) % 10, holds ? "yes" : "NO");
        allHold = allHold && holds;
    }
    return allHold ? 0 : 2;
}
