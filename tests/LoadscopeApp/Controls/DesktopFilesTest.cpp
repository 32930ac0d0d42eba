// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/DesktopFiles.h"
#include "tests/LoadscopeApp/Support/SessionBus.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <condition_variable>
#include <mutex>

namespace loadscope::testing {
namespace {

/// A file manager that notes what it is to show.
class FileManager : public QDBusVirtualObject {
public:
    explicit FileManager(const Bus& bus) : connection_(bus.connection("manager")) {
        EXPECT_TRUE(connection_.registerVirtualObject("/org/freedesktop/FileManager1", this));
        EXPECT_TRUE(connection_.registerService("org.freedesktop.FileManager1"));
    }
    ~FileManager() override { QDBusConnection::disconnectFromBus("manager"); }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        calls.append(message.member() + " " + message.arguments().value(0).toStringList().join(' '));
        return connection.send(message.createReply());
    }
    QStringList calls;

private:
    QDBusConnection connection_;
};

class DesktopFilesTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (Bus::program().isEmpty()) GTEST_SKIP() << "there is no dbus-daemon to make a bus with";
        bus = std::make_unique<Bus>();
    }
    void TearDown() override { QDBusConnection::disconnectFromBus("files"); }

    [[nodiscard]] std::unique_ptr<DesktopFiles> files(FolderAccess::Check isThere = nowhereMissing) {
        return std::make_unique<DesktopFiles>(
            bus->connection("files"),
            [this](const QUrl& url) {
                opened.append(url.toLocalFile());
                return opens;
            },
            std::move(isThere));
    }
    static std::optional<ProbeError> nowhereMissing(const std::string&) { return std::nullopt; }
    DesktopFiles::Answer noted() {
        return [this](const QString& failure) { answers.append(failure); };
    }

    std::unique_ptr<Bus> bus;
    QStringList opened;
    QStringList answers;
    bool opens = true;
};

TEST_F(DesktopFilesTest, OpensOnlyTextsAndSelectsWhatItShows) {
    FileManager manager(*bus);
    const auto desktop = files();
    const char* const texts[] = {"/src/a b/CLAUDE.md", "/src/RULES.MDC"};
    for (const char* text : texts)
        desktop->open(text, noted()); // the second takes the place of the first where that is still asked for
    ASSERT_TRUE(eventually([&] { return opened.contains(QString(texts[1])); }));
    EXPECT_EQ(manager.calls, QStringList());
    opened.clear();
    const struct {
        const char* path;
        const char* asked;
    } cases[] = {
        {"/src/run me.desktop", "ShowItems file:///src/run%20me.desktop"},
        {"/src/tool", "ShowItems file:///src/tool"},
        {"/src/a#b\n.sh", "ShowItems file:///src/a%23b%0A.sh"},
    };
    for (const auto& entry : cases) {
        manager.calls.clear();
        desktop->open(entry.path, noted());
        ASSERT_TRUE(eventually([&] { return !manager.calls.isEmpty(); })) << entry.path;
        EXPECT_EQ(manager.calls, QStringList(entry.asked));
    }
    EXPECT_EQ(opened, QStringList()) << "nothing that could be run";
}

TEST_F(DesktopFilesTest, SaysWhatItCouldNotDo) {
    const auto desktop = files();
    desktop->show("/src/app/CLAUDE.md", noted());
    ASSERT_TRUE(eventually([&] { return answers.size() == 1; }));
    EXPECT_EQ(opened, QStringList("/src/app")) << "without a file manager on the bus";
    EXPECT_EQ(answers, QStringList(QString()));
    opens = false;
    desktop->open("/src/app/CLAUDE.md", noted());
    ASSERT_TRUE(eventually([&] { return answers.size() == 2; }));
    EXPECT_EQ(answers[1], "No program is set to open this file.");
    const auto missing = files(FolderAccess::checkPresence);
    opened.clear();
    missing->open("/nowhere/CLAUDE.md", noted());
    ASSERT_TRUE(eventually([&] { return answers.size() == 3; }));
    EXPECT_EQ(answers[2], "The file is no longer there.");
    EXPECT_EQ(opened, QStringList());
}

TEST_F(DesktopFilesTest, LeavesADiskThatNeverAnswersToItself) {
    struct Disk {
        std::mutex mutex;
        std::condition_variable changed;
        bool isOver = false;
    };
    const auto disk = std::make_shared<Disk>();
    auto desktop = files([disk](const std::string& path) -> std::optional<ProbeError> {
        std::unique_lock lock(disk->mutex);
        if (path == "/gone/CLAUDE.md") disk->changed.wait(lock, [&] { return disk->isOver; });
        return std::nullopt;
    });
    desktop->open("/gone/CLAUDE.md", noted());
    desktop->open("/here/CLAUDE.md", noted());
    ASSERT_TRUE(eventually([&] { return !opened.isEmpty(); }));
    desktop->open("/gone/CLAUDE.md", noted());
    desktop.reset(); // does not wait for the disk
    EXPECT_EQ(opened, QStringList("/here/CLAUDE.md"));
    const std::lock_guard lock(disk->mutex);
    disk->isOver = true;
    disk->changed.notify_all();
}

} // namespace
} // namespace loadscope::testing
