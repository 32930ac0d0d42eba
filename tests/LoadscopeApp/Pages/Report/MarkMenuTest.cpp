// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Charts/DonutChart.h"
#include "LoadscopeApp/Charts/MemberTreemapView.h"
#include "LoadscopeApp/Charts/TreemapView.h"
#include "LoadscopeApp/Controls/DesktopFiles.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Pages/Report/FileInventory.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

/// The desktop as menus see it, which opens whatever it is given.
class Desktop {
public:
    Desktop()
        : files_(
              QDBusConnection(QStringLiteral("none")),
              [this](const QUrl& url) {
                  opened.append(url.toLocalFile());
                  return true;
              },
              [](const std::string&) { return std::nullopt; }) {
        DesktopFiles::setCurrent(&files_);
    }
    ~Desktop() { DesktopFiles::setCurrent(nullptr); }
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    QStringList opened;

private:
    DesktopFiles files_;
};

void askForMenu(QWidget* widget, QContextMenuEvent::Reason reason, QPoint place = {}) {
    QContextMenuEvent event(reason, place, widget->mapToGlobal(place));
    QApplication::sendEvent(widget, &event);
}

/// What the menu of a widget offers, what is disabled in brackets; it is closed behind it.
QStringList offered(const QWidget* widget, QString* copied = nullptr) {
    QStringList texts;
    auto* menu = widget->findChild<QMenu*>();
    if (menu == nullptr) return texts;
    for (QAction* action : menu->actions()) {
        if (action->isSeparator()) continue;
        texts.append(action->isEnabled() ? action->text() : "[" + action->text() + "]");
        if (copied != nullptr && action->text().startsWith("Copy Name")) action->trigger();
    }
    if (copied != nullptr) *copied = QGuiApplication::clipboard()->text();
    delete menu;
    return texts;
}

const QStringList allOfIt{"Open File", "Show in File Manager", "Copy Path", "Copy Name and Number"};
const QStringList onlyText{"[Open File]", "[Show in File Manager]", "[Copy Path]", "Copy Name and Number"};

ScanReport report() {
    InstructionFileSet files;
    files.repositoryFiles = {{"/home/dev/two\nlines/CLAUDE.md", 400}};
    return reportOf(sampleResult(), files);
}

TEST(MarkMenu, IsTheSameOnRowsTilesAndSectors) {
    const Desktop desktop;
    ReportPage page(report());
    auto* inventory = page.find<FileInventory>();
    auto* tiles = page.find<TreemapView>();
    auto* ring = page.find<DonutChart>();
    auto* rows = page.find<ReportTable>("Rows by category");
    ASSERT_TRUE(inventory != nullptr && tiles != nullptr && ring != nullptr && rows != nullptr);
    const QString file = "/home/dev/two\\nlines/CLAUDE.md\t100";
    const QString category = rows->rows()[0].name + "\t" + rows->rows()[0].cells[0];
    const struct {
        MarkedWidget* widget;
        const QStringList& entries;
        QString copied;
    } cases[] = {{inventory, allOfIt, file},
                 {tiles, allOfIt, file},
                 {ring, onlyText, category},
                 {rows, onlyText, category}};
    for (const auto& entry : cases) {
        const QString name = entry.widget->accessibleName();
        SCOPED_TRACE(name.toStdString());
        QString copied;
        entry.widget->setActive(0);
        askForMenu(entry.widget, QContextMenuEvent::Keyboard);
        EXPECT_EQ(offered(entry.widget, &copied), entry.entries);
        EXPECT_EQ(copied, entry.copied);
        entry.widget->setActive(std::nullopt);
        askForMenu(entry.widget, QContextMenuEvent::Keyboard);
        EXPECT_EQ(offered(entry.widget), QStringList()) << "the keyboard is on none";
        // As a reader of the screen asks for it: the last of its marks is always an item.
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(entry.widget);
        QAccessibleInterface* mark = spoken->child(static_cast<int>(*entry.widget->markOf(0)));
        mark->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        EXPECT_EQ(offered(entry.widget), entry.entries);
    }
    askForMenu(inventory, QContextMenuEvent::Mouse, inventory->rowArea(0).center());
    auto* menu = inventory->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    menu->actions()[3]->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "/home/dev/two\nlines/CLAUDE.md") << "as it is";
}

TEST(MarkMenu, OpensAFileByDoubleClickReturnAndAction) {
    Desktop desktop;
    ReportPage page(report());
    auto* inventory = page.find<FileInventory>();
    const QStringList file("/home/dev/two\nlines/CLAUDE.md");
    const auto isOpened = [&] {
        const bool once = eventually([&] { return desktop.opened == file; });
        desktop.opened.clear();
        return once;
    };
    QTest::mouseDClick(inventory, Qt::LeftButton, {}, inventory->rowArea(0).center());
    EXPECT_TRUE(isOpened());
    EXPECT_EQ(inventory->selectedText(), QString());
    inventory->setActive(0);
    QTest::keyClick(inventory, Qt::Key_Return);
    EXPECT_TRUE(isOpened());
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(inventory);
    spoken->child(static_cast<int>(*inventory->markOf(0)))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(isOpened());
}

TEST(MarkMenu, OfARepositoryOpensNoFile) {
    const Desktop desktop;
    RowButton row(new TextLabel("app", TextStyle::body), "app, 9,000 tokens");
    row.setSubject({"app", "9,000", "/src/app", true});
    QAccessible::queryAccessibleInterface(&row)->actionInterface()->doAction(
        QAccessibleActionInterface::showMenuAction());
    QString copied;
    EXPECT_EQ(offered(&row, &copied),
              (QStringList{"[Open File]", "Show in File Manager", "Copy Path", "Copy Name and Number"}));
    EXPECT_EQ(copied, "app\t9,000");
}

} // namespace
} // namespace loadscope::testing
