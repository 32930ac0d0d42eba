// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Readiness/OnboardingFlow.h"

#include <QSettings>

class QSplitter;
class QWidget;

namespace loadscope {

/// The user's settings file: whether the walkthrough was completed, and how the window was left.
class SettingsStore : public OnboardingCompletionStore {
public:
    /// The settings of the application's name and organisation.
    SettingsStore() = default;
    /// A file of its own, for tests.
    explicit SettingsStore(const QString& filePath) : settings_(filePath, QSettings::IniFormat) {}

    [[nodiscard]] bool onboardingCompleted() const override;
    void setOnboardingCompleted(bool completed) override;

    void saveWindow(const QWidget& window, const QSplitter& splitter);
    /// True when there was something to restore; a place outside every screen is corrected.
    bool restoreWindow(QWidget& window, QSplitter& splitter) const;

private:
    QSettings settings_;
};

} // namespace loadscope
