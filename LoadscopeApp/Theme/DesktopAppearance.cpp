// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Theme/DesktopAppearance.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace loadscope {
namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceNamespace = QStringLiteral("org.freedesktop.appearance");
const QString gnomeNamespace = QStringLiteral("org.gnome.desktop.interface");
/// Wraps its answer in one variant less than the old one, which is all that older portals have.
const QString newMethod = QStringLiteral("ReadOne");
const QString oldMethod = QStringLiteral("Read");
constexpr int answerMilliseconds = 200;

QVariant unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

DesktopAppearance::DesktopAppearance(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), bus_(bus) {}

const QList<DesktopAppearance::Setting>& DesktopAppearance::followed() {
    static const QList<Setting> settings{{appearanceNamespace, QStringLiteral("color-scheme")},
                                         {appearanceNamespace, QStringLiteral("reduced-motion")},
                                         {gnomeNamespace, QStringLiteral("enable-animations")}};
    return settings;
}

void DesktopAppearance::start() {
    if (!bus_.isConnected()) return;
    bus_.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QDBusMessage)));
    auto* watcher =
        new QDBusServiceWatcher(portalService, bus_, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, [this] {
        for (const Setting& setting : followed())
            askLater(setting, newMethod);
    });
    // Asking would start a portal that is not there yet and wait for it.
    if (!bus_.interface()->isServiceRegistered(portalService)) return;
    // All questions at once: a portal that hangs delays the window once, not for each of them.
    QList<QDBusPendingCall> answers;
    for (const Setting& setting : followed())
        answers.append(question(setting, newMethod));
    for (qsizetype index = 0; index < answers.size(); ++index) {
        answers[index].waitForFinished();
        if (take(followed()[index], answers[index])) continue;
        QDBusPendingCall again = question(followed()[index], oldMethod);
        again.waitForFinished();
        take(followed()[index], again);
    }
}

QDBusPendingCall DesktopAppearance::question(const Setting& setting, const QString& method) const {
    QDBusMessage message =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, method);
    message << setting.nameSpace << setting.key;
    return bus_.asyncCall(message, answerMilliseconds);
}

bool DesktopAppearance::take(const Setting& setting, const QDBusPendingCall& answer) {
    const QDBusMessage reply = answer.reply();
    if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
        apply(setting.nameSpace, setting.key, reply.arguments().constFirst());
    return reply.errorName() != QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod");
}

void DesktopAppearance::askLater(const Setting& setting, const QString& method) {
    auto* answer = new QDBusPendingCallWatcher(question(setting, method), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, setting, method, answer] {
        answer->deleteLater();
        if (!take(setting, *answer) && method == newMethod) askLater(setting, oldMethod);
    });
}

void DesktopAppearance::settingChanged(const QDBusMessage& message) {
    const QVariantList arguments = message.arguments();
    if (arguments.size() == 3) apply(arguments[0].toString(), arguments[1].toString(), arguments[2]);
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
