// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/ThemeColor.h"

#include <QDBusVariant>
#include <QObject>
#include <QVariant>

#include <optional>

namespace loadscope {

/// Follows the desktop's wish for a dark or light appearance and for less motion through the settings portal
/// of the session bus, and passes it on to the theme. Where there is no bus or no portal it does nothing and
/// costs nothing. UI thread only.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    explicit DesktopAppearance(QObject* parent = nullptr);

    /// Asks a portal that is running already and waits for it at most a fraction of a second, so that the
    /// first frame has the right colours; then follows its changes.
    void start();

    /// One setting of the portal; passes the wishes on when it is one of those followed.
    void apply(const QString& nameSpace, const QString& key, const QVariant& value);

private Q_SLOTS:
    void settingChanged(const QString& nameSpace, const QString& key, const QDBusVariant& value);

private:
    void read(const QString& nameSpace, const QString& key);

    std::optional<Appearance> appearance_;
    std::optional<bool> reducedMotion_;
    std::optional<bool> animationsEnabled_;
};

} // namespace loadscope
