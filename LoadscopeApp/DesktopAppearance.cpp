// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/DesktopAppearance.h"

#include "LoadscopeApp/AppTheme.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

namespace loadscope {
namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceNamespace = QStringLiteral("org.freedesktop.appearance");
const QString gnomeNamespace = QStringLiteral("org.gnome.desktop.interface");
constexpr int answerMilliseconds = 200;

/// `Read` wraps its answer in one variant more than `ReadOne`.
QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

DesktopAppearance::DesktopAppearance(QObject* parent) : QObject(parent) {}

void DesktopAppearance::start() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    // Asking would start a portal that is not there yet and wait for it; its signals come all the same.
    if (!bus.interface()->isServiceRegistered(portalService)) return;
    read(appearanceNamespace, QStringLiteral("color-scheme"));
    read(appearanceNamespace, QStringLiteral("reduced-motion"));
    read(gnomeNamespace, QStringLiteral("enable-animations"));
}

void DesktopAppearance::read(const QString& nameSpace, const QString& key) {
    for (const QString& method : {QStringLiteral("ReadOne"), QStringLiteral("Read")}) {
        QDBusMessage question =
            QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, method);
        question << nameSpace << key;
        const QDBusMessage answer =
            QDBusConnection::sessionBus().call(question, QDBus::Block, answerMilliseconds);
        if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
            apply(nameSpace, key, answer.arguments().constFirst());
            return;
        }
        if (answer.errorName() != QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod")) return;
    }
}

void DesktopAppearance::settingChanged(const QString& nameSpace, const QString& key,
                                       const QDBusVariant& value) {
    apply(nameSpace, key, value.variant());
}

void DesktopAppearance::apply(const QString& nameSpace, const QString& key, const QVariant& value) {
    const QVariant plain = unwrapped(value);
    if (nameSpace == appearanceNamespace && key == QStringLiteral("color-scheme")) {
        appearance_.reset();
        if (plain.toUInt() == 1)
            appearance_ = Appearance::dark;
        else if (plain.toUInt() == 2)
            appearance_ = Appearance::light;
    } else if (nameSpace == appearanceNamespace && key == QStringLiteral("reduced-motion")) {
        reducedMotion_ = plain.toUInt() == 1;
    } else if (nameSpace == gnomeNamespace && key == QStringLiteral("enable-animations")) {
        animationsEnabled_ = plain.toBool();
    } else {
        return;
    }
    std::optional<bool> reduced = reducedMotion_;
    if (!reduced.value_or(false) && animationsEnabled_) reduced = !*animationsEnabled_;
    AppTheme::current().setDesktopPreferences(appearance_, reduced);
}

} // namespace loadscope
