// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/SettingsStore.h"

#include <QSplitter>
#include <QWidget>

namespace loadscope {
namespace {

const QString geometryKey = QStringLiteral("window/geometry");
const QString splitterKey = QStringLiteral("window/splitter");

} // namespace

bool SettingsStore::onboardingCompleted() const {
    return settings_.value(QLatin1String(onboardingCompletedKey), false).toBool();
}

void SettingsStore::setOnboardingCompleted(bool completed) {
    settings_.setValue(QLatin1String(onboardingCompletedKey), completed);
    // Written at once: a crash later must not bring the walkthrough back.
    settings_.sync();
}

void SettingsStore::saveWindow(const QWidget& window, const QSplitter& splitter) {
    settings_.setValue(geometryKey, window.saveGeometry());
    settings_.setValue(splitterKey, splitter.saveState());
}

bool SettingsStore::restoreWindow(QWidget& window, QSplitter& splitter) const {
    const bool restored = window.restoreGeometry(settings_.value(geometryKey).toByteArray());
    splitter.restoreState(settings_.value(splitterKey).toByteArray());
    return restored;
}

} // namespace loadscope
