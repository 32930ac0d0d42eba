// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/CodexEstimateModel.h"

#include "LoadscopeCore/Platform/StopToken.h"

#include <system_error>
#include <utility>

namespace loadscope {

/// Shared with the functions that the worker posts: those hold it weakly, so that none touches a model that
/// is gone.
struct CodexEstimateModel::Implementation : std::enable_shared_from_this<Implementation> {
    Implementation(UIThread& thread, std::shared_ptr<CodexProbeRunning> given)
        : uiThread(thread), codex(std::move(given)) {}

    UIThread& uiThread;
    std::shared_ptr<CodexProbeRunning> codex;
    Observers observers;
    std::string repository;
    std::optional<CodexItems> items;
    bool isRunning = false;
    bool isCancelling = false;
    JoiningThread worker;

    void start() {
        const auto work = [weak = weak_from_this(), codex = codex, &uiThread = uiThread,
                           repository = repository](const StopToken& stop) {
            CodexItems answer = codex->estimate(repository, stop);
            uiThread.post([weak, answer = std::move(answer)]() mutable {
                if (const auto self = weak.lock()) self->finish(std::move(answer));
            });
        };
        try {
            worker = JoiningThread(work);
        } catch (const std::system_error& error) { // no thread is to be had
            items = CodexItems::unavailable(error.what());
            isRunning = false;
        }
    }

    void finish(CodexItems answer) {
        worker.join(); // it posted this as its last act
        if (!isCancelling) items = std::move(answer);
        isRunning = false;
        isCancelling = false;
        observers.notify();
    }

    void cancel() {
        if (!isRunning || isCancelling) return;
        isCancelling = true;
        worker.requestStop();
    }
};

CodexEstimateModel::CodexEstimateModel(UIThread& uiThread, std::shared_ptr<CodexProbeRunning> codex)
    : implementation_(std::make_shared<Implementation>(uiThread, std::move(codex))) {}

CodexEstimateModel::~CodexEstimateModel() {
    implementation_->worker.requestStop();
    if (implementation_->worker.joinable()) implementation_->worker.join();
}

bool CodexEstimateModel::isRunning() const { return implementation_->isRunning; }
bool CodexEstimateModel::isCancelling() const { return implementation_->isCancelling; }
const std::optional<CodexItems>& CodexEstimateModel::items() const { return implementation_->items; }
const std::string& CodexEstimateModel::repository() const { return implementation_->repository; }

void CodexEstimateModel::estimate(const std::string& repository) {
    if (implementation_->isRunning) return;
    implementation_->repository = repository;
    implementation_->items.reset();
    implementation_->isRunning = true;
    implementation_->start();
    implementation_->observers.notify();
}

void CodexEstimateModel::cancel() {
    if (!implementation_->isRunning || implementation_->isCancelling) return;
    implementation_->cancel();
    implementation_->observers.notify();
}

void CodexEstimateModel::clear() {
    if (!implementation_->isRunning && !implementation_->items) return;
    implementation_->cancel();
    implementation_->items.reset();
    implementation_->observers.notify();
}

Subscription CodexEstimateModel::observe(std::function<void()> observer) {
    return implementation_->observers.add(std::move(observer));
}

} // namespace loadscope
