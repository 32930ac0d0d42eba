// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/CodexEstimate.h"

#include "LoadscopeCLI/CodexText.h"
#include "LoadscopeCLI/Failure.h"
#include "LoadscopeCLI/Folder.h"
#include "LoadscopeCLI/LoopUIThread.h"
#include "LoadscopeCLI/Readiness.h"
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Presentation/CodexItemsPresentation.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"
#include "LoadscopeCore/Scan/CodexEstimateModel.h"
#include "LoadscopeCore/Scan/FolderAccess.h"

#include <unistd.h>

namespace loadscope {
namespace {

/// Nothing when a signal came.
std::optional<CodexItems> ask(const std::string& folder, LoopUIThread& loop, Terminal& errors) {
    CodexEstimateModel model(loop, std::make_shared<CodexProbe>());
    errors.showProgress(CodexItemsPresentation::estimateStage);
    model.estimate(folder);
    loop.run([&] { return !model.isRunning(); }, [&] { model.cancel(); });
    errors.clearProgress();
    return loop.wasInterrupted() ? std::nullopt : model.items();
}

} // namespace

ExitCode estimateCodex(const std::string& folder, bool json) {
    Terminal errors(STDERR_FILENO);
    const auto fail = [&](std::string_view name, const std::string& headline, const std::string& detail) {
        showFailure(errors, headline, detail);
        if (!json) return ExitCode::failure;
        return writeResult(ScanReportJson::failure(name, headline, detail) + '\n', ExitCode::failure);
    };
    const auto failUnreadable = [&](const ProbeError& error) {
        return fail(error.caseName(), error.headline(), error.detail());
    };
    const auto interrupted = [&] { return showInterrupted(errors, "Interrupted."); };
    const auto path = absoluteFolder(folder);
    if (!path) return failUnreadable(ProbeError::RepositoryUnreadable{folder});

    LoopUIThread loop;
    std::optional<ProbeError> unreadable;
    const auto check = [&](const StopToken& stop) { unreadable = FolderAccess::checkDetached(*path, stop); };
    if (!runOnWorker(loop, check)) return interrupted();
    if (unreadable) return failUnreadable(*unreadable);
    const auto items = ask(*path, loop, errors);
    if (!items) return interrupted();
    if (!items->areTold())
        return fail("codexNotEstimated", CodexItemsPresentation::failureHeadline, items->reason);
    const RepoSelection selection(*path);
    return writeResult(json ? ScanReportJson::codexEstimate(selection, *items) + '\n'
                            : codexEstimateText(selection.displayName, *items, Terminal(STDOUT_FILENO)));
}

} // namespace loadscope
