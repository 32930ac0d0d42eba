// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Trends/TrendsView.h"

#include "LoadscopeApp/Cards/Sheet.h"
#include "LoadscopeApp/Charts/ChartLegend.h"
#include "LoadscopeApp/Charts/TrendChart.h"
#include "LoadscopeApp/Controls/PushButton.h"
#include "LoadscopeApp/Controls/RowButton.h"
#include "LoadscopeApp/Pages/Compare/CompareView.h"
#include "tests/LoadscopeApp/Support/Spoken.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"
#include "tests/Support/HistoryRecords.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace loadscope::testing {
namespace {

using History = std::vector<RecordedScan>;

/// The page in a window, as large as it is tall, so that nothing is scrolled away.
class Page {
public:
    explicit Page(const History& history, const std::optional<std::string>& path = {}) {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(view);
        view->refresh(history, path);
        window.resize(900, 1'600);
        window.show();
        QApplication::processEvents();
    }
    [[nodiscard]] bool says(const QString& text) { return spoken(window).contains(text); }
    [[nodiscard]] TrendChart* chart() { return window.findChild<TrendChart*>(); }
    [[nodiscard]] PushButton* button(const QString& title) {
        for (auto* button : window.findChildren<PushButton*>()) {
            if (button->text() == title) return button;
        }
        return nullptr;
    }
    void choose(const QString& title) {
        for (auto* action : window.findChildren<QAction*>()) {
            if (action->text() == title) action->trigger();
        }
    }

    QWidget window;
    TrendsView* view = new TrendsView;
};

RecordedScan codex(int number, const std::string& name, Timestamp date, std::int64_t total) {
    return record(number, name, date, total, {}, RecordedScan::codexTool);
}

History three() {
    return {record(1, "web-app", day(1), 30'000, {{"System tools", 3'100}}),
            codex(2, "web-app", day(3), 20'000), record(3, "web-app", day(5), 58'000)};
}

void hover(TrendChart& chart, double x) {
    QMouseEvent move(QEvent::MouseMove, QPointF(x, 100), chart.mapToGlobal(QPointF(x, 100)), Qt::NoButton,
                     Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&chart, &move);
}

TEST(TrendsView, SaysWhatThereIsToShow) {
    History many;
    for (int number = 1; number <= 31; ++number)
        many.push_back(record(number, "web-app", day(number), 40'000));
    const QString hostile = QStringLiteral("<b>x</b>: startup context over time, against the Lean, Heavy and "
                                           "Excessive bands.");
    struct Case {
        const char* name;
        History history;
        std::optional<std::string> path;
        QStringList said;
        bool hasChart;
        int rows;
    };
    const std::vector<Case> cases{
        {"nothing",
         {},
         {},
         {"Trends", "Startup context over time, against the Lean, Heavy and Excessive bands.",
          "No recorded scans yet",
          "Scans are recorded locally as you run them. Run one scan, then another, and the trend appears "
          "here.",
          "How to read this", "!Previous runs", "!Recorded data"},
         false,
         0},
        {"another repository",
         three(),
         "/src/other",
         {"Nothing recorded for this repository yet. Scan it twice and its trend appears here.",
          "Recorded data"},
         false,
         3},
        {"one",
         {three()[0]},
         {},
         {"One scan recorded", "!No recorded scans yet",
          "A trend needs at least two scans of web-app by the same tool. The latest Claude Code scan "
          "measured "
          "30,000 tokens on Jan 1, 2026. Scan again to plot a line.",
          "1 record — one per tool per scan — across 1 repository, stored on this computer. Totals only — no "
          "instruction-file contents are ever written. The newest 200 are kept."},
         false,
         1},
        {"one of each tool", {three()[0], three()[1]}, {}, {"One scan recorded"}, false, 2},
        {"two and one",
         three(),
         {},
         {"web-app: startup context over time, against the Lean, Heavy and Excessive bands.",
          "Startup tokens per scan",
          "Each point is one recorded scan; every total was reported by the tool that measured it.",
          "Hover the chart to read a single scan. Dashed lines mark the band thresholds, which are absolute "
          "anchors.",
          "Claude Code, Codex",
          "Claude Code · Jan 5, 2026: 58,000 tokens, Heavy",
          "Where this repository landed",
          "Read from the Claude Code scans above. Two tools measure two different sessions, so their totals "
          "are "
          "never combined.",
          "Latest scan",
          "58,000",
          "Jan 5, 2026",
          "Band",
          "Heavy",
          "30,000–60,000",
          "Drift across recorded scans",
          "+28,000",
          "2 recorded Claude Code scans",
          "Previous runs",
          "Every recorded scan, newest first, across every repository.",
          "No categories — Codex does not report a breakdown.",
          "System tools 3.1K",
          "Each session total was reported by the tool that measured it; category totals come from Claude "
          "Code's `/context`.",
          "Recorded data"},
         true,
         3},
        {"more than are listed",
         many,
         {},
         {"+0", "The newest 30 of 31 recorded scans, across every repository."},
         true,
         30},
        {"a name that looks like markup", {record(1, "<b>x</b>", day(1), 1)}, {}, {hostile}, false, 1},
        {"one moment, far totals",
         {record(1, "a", day(1), 0), record(2, "a", day(1), 1'000'000'000'000'000)},
         {},
         {"+1,000,000,000,000,000"},
         true,
         2},
    };
    for (const Case& testCase : cases) {
        Page page(testCase.history, testCase.path);
        EXPECT_EQ(page.chart() != nullptr, testCase.hasChart) << testCase.name;
        EXPECT_EQ(page.window.findChildren<RowButton*>().size(), testCase.rows) << testCase.name;
        const QStringList said = spoken(page.window);
        for (const QString& text : testCase.said) {
            const bool isWanted = !text.startsWith('!');
            const QString wanted = isWanted ? text : text.mid(1);
            // Rows tell their date in the local time zone before the categories, and all else after them.
            const bool isSaid = std::any_of(said.begin(), said.end(), [&](const QString& one) {
                return one == wanted || one.contains(" · " + wanted + ", ");
            });
            EXPECT_EQ(isSaid, isWanted) << testCase.name << ": " << text.toStdString();
        }
    }
}

TEST(TrendChart, FollowsThePointerAndForgetsItWhenItLeaves) {
    Page page(three());
    TrendChart& chart = *page.chart();
    const RectF plot = chart.shapes().plot();
    struct Case {
        double x;
        std::size_t scan;
    };
    for (const Case& testCase : std::vector<Case>{{0, 0},
                                                  {plot.x + plot.width * 0.30, 1},
                                                  {plot.x + plot.width * 0.70, 1},
                                                  {plot.x + plot.width * 0.80, 2},
                                                  {plot.right() + 50, 2}}) {
        hover(chart, testCase.x);
        EXPECT_EQ(chart.active(), testCase.scan) << testCase.x;
    }
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&chart, &leave);
    EXPECT_EQ(chart.active(), std::nullopt);
}

/// How much of the chart is painted anew.
class PaintedArea : public QObject {
public:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            width = std::max(width, static_cast<QPaintEvent*>(event)->region().boundingRect().width());
        return QObject::eventFilter(object, event);
    }
    int width = 0;
};

TEST(TrendChart, PaintsOnlyTheRuleAndTheTooltipWhenThePointerMoves) {
    History history;
    for (int number = 1; number <= 200; ++number)
        history.push_back(record(number, "web-app", day(number), 30'000 + number));
    Page page(history);
    TrendChart& chart = *page.chart();
    hover(chart, 400);
    QApplication::processEvents();
    PaintedArea painted;
    chart.installEventFilter(&painted);
    hover(chart, 405);
    QApplication::processEvents();
    EXPECT_GT(painted.width, 0);
    EXPECT_LT(painted.width, 300);
}

TEST(TrendChart, WalksItsScansWithTheKeyboard) {
    const History sameMoment{record(1, "a", day(1), 1), record(2, "a", day(1), 2), record(3, "a", day(1), 3)};
    for (const History& history : {three(), sameMoment}) {
        Page page(history);
        TrendChart& chart = *page.chart();
        chart.setFocus();
        struct Case {
            Qt::Key key;
            std::optional<std::size_t> scan;
        };
        const std::vector<Case> cases{{Qt::Key_Left, 2},  {Qt::Key_Left, 1},   {Qt::Key_Home, 0},
                                      {Qt::Key_Left, 0},  {Qt::Key_Right, 1},  {Qt::Key_End, 2},
                                      {Qt::Key_Right, 2}, {Qt::Key_Escape, {}}};
        for (const Case& testCase : cases) {
            QTest::keyClick(&chart, testCase.key);
            EXPECT_EQ(chart.active(), testCase.scan);
        }
    }
}

TEST(ChartLegend, NeverCutsAShortNameHoweverNarrowItIs) {
    ChartLegend legend;
    legend.setEntries({{"Claude Code", 0}, {"Codex", 1}});
    const std::vector<QRectF> wide = legend.entryAreas(1'000);
    const std::vector<QRectF> narrow = legend.entryAreas(wide[0].width() + 1);
    EXPECT_EQ(wide[1].top(), wide[0].top());
    EXPECT_GT(narrow[1].top(), narrow[0].top());
    EXPECT_EQ(narrow[1].width(), wide[1].width());
}

TEST(TrendsView, AsksBeforeItDeletesAndStartsOnCancel) {
    Page page(three());
    const QSignalSpy cleared(page.view, &TrendsView::clearRequested);
    const auto ask = [&page] {
        page.button(QStringLiteral("Clear Recorded Data…"))->click();
        return eventually([&page] {
            auto* cancel = page.button(QStringLiteral("Cancel"));
            return cancel != nullptr && cancel->hasFocus();
        });
    };
    const auto isClosed = [&page] { return page.window.findChild<Sheet*>() == nullptr; };
    ASSERT_TRUE(ask());
    EXPECT_TRUE(page.says(QStringLiteral("Delete every recorded scan?")));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(eventually(isClosed));
    EXPECT_EQ(cleared.count(), 0);

    ASSERT_TRUE(ask());
    History more = three();
    more.push_back(record(4, "web-app", day(9), 1));
    EXPECT_NE(page.button(QStringLiteral("Delete 3 Recorded Scans")), nullptr);
    page.view->refresh(more, {});
    ASSERT_NE(page.button(QStringLiteral("Delete 4 Recorded Scans")), nullptr);
    page.button(QStringLiteral("Delete 4 Recorded Scans"))->click();
    EXPECT_EQ(cleared.count(), 1);
    EXPECT_TRUE(eventually(isClosed));
    page.view->refresh({}, {});
    EXPECT_TRUE(page.says(QStringLiteral("No recorded scans yet")));
    EXPECT_EQ(page.button(QStringLiteral("Clear Recorded Data…")), nullptr);
}

TEST(Window, DeletesTheRecordedHistoryAndKeepsTheScanOnScreen) {
    struct Case {
        const char* name;
        bool byKey;
        bool scanning;
        QString overview;
    };
    const std::vector<Case> cases{{"by key", true, false, "Scan complete"},
                                  {"by click", false, false, "Scan complete"},
                                  {"during a scan", true, true, "Scan in progress"}};
    for (const Case& testCase : cases) {
        SCOPED_TRACE(testCase.name);
        Window window({.history = three()});
        const QDir data(window.data.path());
        for (const char* backup :
             {"scan-history.unreadable-corrupt.json", "scan-history.unreadable-version.json"})
            QFile(data.filePath(backup)).open(QIODevice::WriteOnly);
        window.show();
        window.view.activateWindow();
        window.choose();
        if (!testCase.scanning) window.tools.probe->answer(sampleResult());
        window.view.startScan();
        ASSERT_TRUE(eventually([&] { return testCase.scanning || window.model.history().size() == 4; }));
        window.view.setPage(AppPage::trends);
        const auto ask = [&window] {
            window.button("Clear Recorded Data…")->click();
            return eventually([&] { return window.button("Cancel") && window.button("Cancel")->hasFocus(); });
        };
        const auto press = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
        ASSERT_TRUE(ask());
        press(Qt::Key_Return);
        ASSERT_TRUE(eventually([&] { return window.view.findChild<Sheet*>() == nullptr; }));
        EXPECT_TRUE(data.exists("scan-history.json"));

        ASSERT_TRUE(ask());
        const int count = testCase.scanning ? 3 : 4;
        auto* destroy = window.button(QStringLiteral("Delete %1 Recorded Scans").arg(count));
        ASSERT_NE(destroy, nullptr);
        if (testCase.byKey) {
            press(Qt::Key_Tab);
            ASSERT_TRUE(destroy->hasFocus());
            press(Qt::Key_Space);
        } else {
            QTest::mouseClick(destroy, Qt::LeftButton);
        }
        EXPECT_TRUE(eventually([&] {
            return window.says(
                "Scans are recorded locally as you run them. Run one scan, then another, and the "
                "trend appears here.");
        }));
        EXPECT_FALSE(window.says("Recorded data"));
        EXPECT_TRUE(data.isEmpty()) << data.entryList().join(' ').toStdString();
        window.view.setPage(AppPage::overview);
        EXPECT_TRUE(window.says(testCase.overview));
        window.model.cancel();
        EXPECT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));
    }
}

TEST(Window, SaysThatTheHistoryCouldNotBeDeletedAndKeepsTheKeyboardThere) {
    Window window({.history = three()});
    window.show();
    window.view.activateWindow();
    window.view.setPage(AppPage::trends);
    const QDir data(window.data.path());
    ASSERT_TRUE(QFile::remove(data.filePath("scan-history.json")) &&
                data.mkpath("scan-history.json/in the way"));
    auto* clear = window.button("Clear Recorded Data…");
    clear->setFocus();
    clear->click();
    QTest::mouseClick(window.button("Delete 3 Recorded Scans"), Qt::LeftButton);
    ASSERT_TRUE(eventually([&] { return window.says("The recorded scans could not be deleted"); }));
    const auto sheets = [&window] { return window.view.findChildren<Sheet*>().size(); };
    ASSERT_TRUE(eventually([&] { return sheets() == 1 && window.button("OK") != nullptr; }));
    EXPECT_TRUE(window.button("OK")->hasFocus());
    EXPECT_FALSE(clear->isEnabled());
    window.button("OK")->click();
    ASSERT_TRUE(eventually([&] { return sheets() == 0; }));
    EXPECT_TRUE(clear->hasFocus());
}

TEST(TrendsView, SavesItsChartAndItsData) {
    Page page(three());
    const QTemporaryDir folder;
    struct Case {
        const char* choice;
        const char* file;
        QByteArray start;
    };
    const std::vector<Case> cases{{"PNG Image…", "chart.png", "\x89PNG"},
                                  {"SVG Drawing…", "chart.svg", "<?xml"},
                                  {"CSV Table…", "history.csv", "date,repositoryName"},
                                  {"JSON Document…", "history.json", "{"},
                                  {"CSV Table…", "no-such-folder/history.csv", {}},
                                  {"CSV Table…", "protected.csv", {}},
                                  {"CSV Table…", "/dev/full", {}}};
    QFile guarded(folder.filePath("protected.csv"));
    ASSERT_TRUE(guarded.open(QIODevice::WriteOnly) && guarded.setPermissions(QFile::ReadOwner));
    guarded.close();
    for (const Case& testCase : cases) {
        page.choose(QString::fromUtf8(testCase.choice));
        auto* dialog = page.window.findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr) << testCase.choice;
        const QString path = QDir(folder.path()).absoluteFilePath(QString::fromUtf8(testCase.file));
        Q_EMIT dialog->fileSelected(path);
        delete dialog;
        const bool isSaved = !testCase.start.isNull();
        QFile file(path);
        EXPECT_TRUE(!isSaved || file.open(QIODevice::ReadOnly)) << testCase.file;
        EXPECT_TRUE(!isSaved || file.readAll().startsWith(testCase.start)) << testCase.file;
        EXPECT_EQ(eventually([&] { return isSaved || page.says("The file could not be saved"); }), true);
        for (auto* sheet : page.window.findChildren<Sheet*>())
            sheet->dismiss();
        EXPECT_TRUE(eventually([&] { return page.window.findChild<Sheet*>() == nullptr; })) << testCase.file;
    }
    EXPECT_EQ(guarded.size(), 0);
}

TEST(Window, OpensTheTrendsOfARecordedFolderOrSaysWhyNot) {
    for (const bool isScanning : {false, true}) {
        Window window;
        window.show();
        if (isScanning) {
            window.choose();
            window.view.startScan();
        }
        window.view.setPage(AppPage::compare);
        const QTemporaryDir other;
        Q_EMIT window.view.findChild<CompareView*>()->repositoryRequested(other.path().toStdString());
        EXPECT_EQ(window.says("A scan is running"), isScanning);
        EXPECT_EQ(window.view.page(), isScanning ? AppPage::compare : AppPage::trends);
        EXPECT_EQ(window.model.selection() && window.model.selection()->path == other.path().toStdString(),
                  !isScanning);
        window.model.cancel();
        EXPECT_TRUE(eventually([&] { return !window.model.isScanTaskRunning(); }));
    }
}

} // namespace
} // namespace loadscope::testing
