// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/DesktopAppearance.h"
#include "tests/LoadscopeApp/Support/SessionBus.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QMap>
#include <QMutex>
#include <QThread>

namespace loadscope::testing {
namespace {

const QString service = "org.freedesktop.portal.Desktop";
const QString path = "/org/freedesktop/portal/desktop";
const QString settings = "org.freedesktop.portal.Settings";
const QString appearance = "org.freedesktop.appearance";

/// A settings portal that answers from a thread of its own, as another process would.
class Portal : public QDBusVirtualObject {
public:
    enum class Kind { current, withoutReadOne, silent };

    explicit Portal(const Bus& bus, Kind kind = Kind::current)
        : kind_(kind), connection_(bus.connection("portal")) {
        moveToThread(&thread_);
        thread_.start();
        EXPECT_TRUE(connection_.registerVirtualObject(path, this));
    }
    ~Portal() override {
        connection_.unregisterObject(path);
        QDBusConnection::disconnectFromBus("portal");
        thread_.quit();
        thread_.wait();
        // The thread sanitizer does not see the toolkit's thread end, but takes its order from a lock.
        const QMutexLocker lock(&mutex_);
    }
    void appear() { EXPECT_TRUE(connection_.registerService(service)); }
    void vanish() { EXPECT_TRUE(connection_.unregisterService(service)); }
    void set(const QString& key, uint value, bool tells = true) {
        {
            const QMutexLocker lock(&mutex_);
            values_[key] = value;
        }
        QDBusMessage signal = QDBusMessage::createSignal(path, settings, "SettingChanged");
        signal << appearance << key << QVariant::fromValue(QDBusVariant(value));
        if (tells) connection_.send(signal);
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const QMutexLocker lock(&mutex_);
        if (kind_ == Kind::silent) return true;
        const QString method = message.member();
        if (kind_ == Kind::withoutReadOne && method == "ReadOne")
            return connection.send(message.createErrorReply(QDBusError::UnknownMethod, method));
        const QString key = message.arguments().value(1).toString();
        if (message.arguments().value(0) != appearance || !values_.contains(key))
            return connection.send(message.createErrorReply("org.freedesktop.portal.Error.NotFound", key));
        QVariant answer = QVariant::fromValue(QDBusVariant(values_[key]));
        if (method == "Read") answer = QVariant::fromValue(QDBusVariant(answer));
        return connection.send(message.createReply(answer));
    }

private:
    const Kind kind_;
    QDBusConnection connection_;
    QThread thread_;
    QMutex mutex_;
    QMap<QString, uint> values_;
};

class DesktopPortal : public ::testing::Test {
protected:
    void SetUp() override {
        if (Bus::program().isEmpty()) GTEST_SKIP() << "there is no dbus-daemon to make a bus with";
        AppTheme::current().force({}, {});
        bus = std::make_unique<Bus>();
        desktop = std::make_unique<DesktopAppearance>(bus->connection("desktop"));
    }
    void TearDown() override {
        desktop.reset();
        QDBusConnection::disconnectFromBus("desktop");
        AppTheme::current().setDesktopPreferences({}, {});
        AppTheme::current().force(Appearance::light, true);
    }
    static bool becomes(bool dark, bool reduced) {
        return eventually([=] { return isNow(dark, reduced); });
    }
    static bool isNow(bool dark, bool reduced) {
        return AppTheme::current().isDark() == dark && AppTheme::current().reducedMotion() == reduced;
    }

    std::unique_ptr<Bus> bus;
    std::unique_ptr<DesktopAppearance> desktop;
};

TEST_F(DesktopPortal, IsFollowedWhileItComesChangesGoesAndComesBack) {
    desktop->start();
    EXPECT_TRUE(isNow(false, false)) << "no portal";
    Portal portal(*bus);
    portal.set("color-scheme", 1, false);
    portal.set("reduced-motion", 1, false);
    portal.appear();
    EXPECT_TRUE(becomes(true, true)) << "asked when it came";
    portal.set("color-scheme", 2);
    EXPECT_TRUE(becomes(false, true)) << "light, live";
    portal.set("color-scheme", 1);
    portal.set("reduced-motion", 0);
    EXPECT_TRUE(becomes(true, false)) << "dark, live";
    portal.vanish();
    portal.set("color-scheme", 2, false);
    QCoreApplication::processEvents();
    EXPECT_TRUE(isNow(true, false)) << "its last wishes stay";
    portal.appear();
    EXPECT_TRUE(becomes(false, false)) << "asked again";
}

TEST_F(DesktopPortal, IsKnownBeforeTheFirstFrameAndNeverWaitedForLong) {
    struct Case {
        const char* name;
        Portal::Kind kind;
        bool dark;
    };
    for (const Case& testCase : {Case{"current", Portal::Kind::current, true},
                                 Case{"without ReadOne", Portal::Kind::withoutReadOne, true},
                                 Case{"silent", Portal::Kind::silent, false}}) {
        AppTheme::current().setDesktopPreferences({}, {});
        Portal portal(*bus, testCase.kind);
        portal.set("color-scheme", 1, false);
        portal.appear();
        DesktopAppearance fresh(bus->connection("desktop"));
        QElapsedTimer timer;
        timer.start();
        fresh.start();
        EXPECT_EQ(AppTheme::current().isDark(), testCase.dark) << testCase.name;
        EXPECT_LT(timer.elapsed(), 5'000) << testCase.name;
    }
}

} // namespace
} // namespace loadscope::testing
