// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Screenshots/Stage.h"

#include "LoadscopeApp/Tables/DataTable.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Platform/StopToken.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdio>
#include <cstdlib>

namespace loadscope::screenshots {
namespace {

constexpr int patienceMilliseconds = 20'000;
constexpr int pollMilliseconds = 20;

testing::FakeTools withHistory(const QTemporaryDir& folder, const std::vector<RecordedScan>& scans) {
    testing::FakeTools tools;
    tools.history = std::make_shared<ScanHistoryStore>(folder.path().toStdString());
    if (!scans.empty() && !AtomicFile::write(tools.history->filePath(), ScanHistoryFile::encode(scans)))
        std::fputs("The history could not be prepared.\n", stderr);
    return tools;
}

} // namespace

namespace {

std::optional<ProbeError> isThere(const std::string& path) {
    if (!path.ends_with("monorepo")) return std::nullopt;
    return ProbeError(ProbeError::RepositoryUnreadable{path});
}

} // namespace

Stage::Stage(const std::vector<RecordedScan>& history)
    : tools(withHistory(folder, history)),
      model(uiThread, tools.collaborators()),
      codexEstimates(uiThread, tools.codex),
      readiness(uiThread, [this](StopToken) { return readinessAnswer; }),
      recent(uiThread, isThere),
      batch(
          uiThread, [this] { return tools.collaborators(); }, 1),
      view(model, readiness, store,
           [](QWidget*, const std::string&, const std::function<void(std::string)>&) {}) {
    DataTable::forgetSorts(); // those of the picture before
    view.setCodexEstimates(codexEstimates);
    view.setRecentFolders(recent);
    view.setBatch(batch);
    settle([this] { return model.historyActivity() == HistoryActivity::none; });
}

void Stage::settle(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, pollMilliseconds);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (timer.elapsed() > patienceMilliseconds) {
            std::fputs("A state was never reached.\n", stderr);
            std::exit(1);
        }
    } while (condition && !condition());
    QCoreApplication::processEvents();
}

void Stage::choose(const std::string& path) {
    view.selectFolder(path);
    settle();
}

void Stage::scan(testing::FakeProbe::Answer answer) {
    const bool hangs = std::holds_alternative<testing::FakeProbe::Hang>(answer);
    tools.probe->answer(std::move(answer));
    view.startScan();
    settle([this, hangs] {
        return hangs ? model.scanStage() == "Reading Claude startup context…" : !model.isScanTaskRunning();
    });
}

} // namespace loadscope::screenshots
