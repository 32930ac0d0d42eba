// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"

#include <system_error>

namespace loadscope {

struct ReadinessModel::Implementation {
    Implementation(UIThread& uiThread, Check check) : uiThread(uiThread), check(std::move(check)) {}

    UIThread& uiThread;
    const Check check;
    ReadinessChecker::Result last;
    bool isChecking = false;
    Observers observers;
    /// Gone with the model; a result that arrives later finds out by it. Both live on the UI thread.
    const std::shared_ptr<bool> alive = std::make_shared<bool>(true);
    JoiningThread worker; // last, so that it is joined first

    void publish(const ReadinessChecker::Result& result) {
        last = result;
        isChecking = false;
        observers.notify();
    }
};

namespace {

ReadinessChecker::Result resultOf(const ReadinessModel::Check& check, const StopToken& stop) {
    try {
        return check(stop);
    } catch (...) {
        return {ToolReadiness::unknown, ToolReadiness::unknown};
    }
}

} // namespace

ReadinessModel::ReadinessModel(UIThread& uiThread, Check check)
    : implementation_(std::make_unique<Implementation>(uiThread, std::move(check))) {}

ReadinessModel::~ReadinessModel() = default;

ToolReadiness ReadinessModel::claude() const { return implementation_->last.claude; }

ToolReadiness ReadinessModel::codex() const { return implementation_->last.codex; }

bool ReadinessModel::isChecking() const { return implementation_->isChecking; }

void ReadinessModel::recheck() {
    if (implementation_->isChecking) return;
    Implementation* const model = implementation_.get();
    const std::weak_ptr<bool> alive = model->alive;
    model->isChecking = true;
    try {
        model->worker = JoiningThread([model, alive, &uiThread = model->uiThread](const StopToken& stop) {
            const auto result = resultOf(model->check, stop);
            uiThread.post([model, alive, result] {
                if (!alive.expired()) model->publish(result);
            });
        });
    } catch (const std::system_error&) {
        model->publish({ToolReadiness::unknown, ToolReadiness::unknown});
        return;
    }
    model->observers.notify();
}

std::optional<std::string> ReadinessModel::scanBlocker(bool includeCodex) const {
    if (isChecking()) return label(ToolReadiness::checking);
    if (blocksScan(claude())) return label("Claude", claude());
    if (includeCodex && blocksScan(codex())) return label("Codex", codex());
    return {};
}

Subscription ReadinessModel::observe(std::function<void()> observer) {
    return implementation_->observers.add(std::move(observer));
}

} // namespace loadscope
