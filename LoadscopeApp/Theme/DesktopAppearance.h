// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/ThemeColor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QObject>
#include <QVariant>

#include <optional>

namespace loadscope {

/// Follows the desktop's wish for a dark or light appearance and for less motion through the settings portal
/// of the session bus, and passes it on to the theme. Where there is no bus or no portal it does nothing and
/// costs nothing; a portal that comes later, or comes back, is asked then, and the last wishes of one that
/// went stay. UI thread only.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    explicit DesktopAppearance(const QDBusConnection& bus = QDBusConnection::sessionBus(),
                               QObject* parent = nullptr);

    /// Asks a portal that is running already and waits for it at most a fraction of a second, so that the
    /// first frame has the right colours; then follows its changes.
    void start();

    /// One setting of the portal; passes the wishes on when it is one of those followed.
    void apply(const QString& nameSpace, const QString& key, const QVariant& value);

private Q_SLOTS:
    void settingChanged(const QDBusMessage& message);

private:
    struct Setting {
        QString nameSpace;
        QString key;
    };
    [[nodiscard]] static const QList<Setting>& followed();
    [[nodiscard]] QDBusPendingCall question(const Setting& setting, const QString& method) const;
    /// Takes an answer; false when the portal does not know the method that it was asked by.
    bool take(const Setting& setting, const QDBusPendingCall& answer);
    void askLater(const Setting& setting, const QString& method);

    QDBusConnection bus_;
    std::optional<Appearance> appearance_;
    std::optional<bool> reducedMotion_;
    std::optional<bool> animationsEnabled_;
};

} // namespace loadscope
