// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ExportButton.h"
#include "LoadscopeApp/Pages/Report/ReportPages.h"
#include "LoadscopeCore/Presentation/ScanReportJson.h"
#include "tests/LoadscopeApp/Support/ReportFixture.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QFile>
#include <QImage>
#include <QMenu>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

QAction* action(const QWidget* owner, const QString& text) {
    for (auto* menu : owner->findChildren<QMenu*>()) {
        for (QAction* entry : menu->actions()) {
            if (entry->text() == text) return entry;
        }
    }
    return nullptr;
}

TEST(ReportExport, WritesPicturesAndTheDataOfScripts) {
    const QTemporaryDir folder;
    ReportPage page(reportOf(sampleResult(), sampleFiles()));
    auto* button = page.find<ExportButton>();
    QString target;
    QString suggested;
    QString message;
    button->setFileChooser([&](QWidget*, const QString& name, const std::function<void(QString)>& done) {
        suggested = name;
        done(target.isEmpty() ? folder.filePath(name) : target);
    });
    QObject::connect(button, &ExportButton::finished, button,
                     [&message](const QString& text) { message = text; });
    const auto bytesAfter = [&](const char* entry) {
        action(button, QString::fromUtf8(entry))->trigger();
        QFile file(folder.filePath(suggested));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    EXPECT_EQ(bytesAfter("Report as JSON…").toStdString(), ScanReportJson::report(*page.report) + "\n");
    EXPECT_EQ(suggested, QStringLiteral("web-app-context-report.json"));
    for (const char* entry : {"Breakdown as PNG…", "Instruction Files as PNG…", "Whole Report as PNG…"})
        EXPECT_EQ(QImage::fromData(bytesAfter(entry)).width(), 1'920) << entry;
    for (const char* entry : {"Breakdown as SVG…", "Instruction Files as SVG…", "Whole Report as SVG…"})
        EXPECT_TRUE(bytesAfter(entry).contains("</svg>")) << entry;
    EXPECT_EQ(message, QStringLiteral("Saved “web-app-context-report.svg”."));
    const QString html = QString::fromUtf8(bytesAfter("Report as HTML…"));
    EXPECT_TRUE(html.startsWith("<!DOCTYPE html>") && html.contains("45,000 tokens"));
    EXPECT_TRUE(bytesAfter("Report as Markdown…").startsWith("### Startup context of <code>web-app</code>"));
    EXPECT_TRUE(bytesAfter("Report as CSV…").contains("\ntotal,,,web-app,45000,contextCommand,yes\r\n"));
    message.clear();
    bytesAfter("Report as PDF…"); // made beside the window
    EXPECT_TRUE(eventually([&] { return message == QStringLiteral("Saved “web-app-context-report.pdf”."); }));
    QFile pdf(folder.filePath(QStringLiteral("web-app-context-report.pdf")));
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.readAll().startsWith("%PDF-"));
    QFile protectedFile(folder.filePath(QStringLiteral("report.json")));
    ASSERT_TRUE(protectedFile.open(QIODevice::WriteOnly) && protectedFile.setPermissions(QFile::ReadOwner));
    for (const char* refused : {"missing/report.json", "report.json"}) {
        target = folder.filePath(QString::fromUtf8(refused));
        action(button, QStringLiteral("Report as JSON…"))->trigger();
        EXPECT_EQ(message,
                  QStringLiteral("“report.json” could not be saved. Check that the folder can be written to "
                                 "and that there is space left."));
        message.clear();
    }
}

TEST(ReportExport, OffersNoPictureOfWhatIsNotThere) {
    ReportPage page(reportOf(sampleResult()));
    EXPECT_FALSE(action(page.find<ExportButton>(), QStringLiteral("Instruction Files as PNG…"))->isEnabled());
    EXPECT_TRUE(action(page.find<ExportButton>(), QStringLiteral("Whole Report as PNG…"))->isEnabled());
}

TEST(ReportExport, TakesPagesInsteadOfShrinking) {
    const auto pages = [](const ScanReport& report) {
        const QByteArray pdf = ReportPages::pdf(report);
        return pdf.count("/Type /Page\n") + pdf.count("/Type /Page ");
    };
    EXPECT_EQ(pages(reportOf(sampleResult())), 1);
    EXPECT_GT(pages(reportOf(detailedResult(1'000), manyFiles(500))), 20);
}

TEST(ReportExport, PicturesAReportHoweverLongItIs) {
    ProbeResult probe = sampleResult();
    probe.selfReportedSlabs = manySlabs(500);
    const auto report = std::make_shared<const ScanReport>(reportOf(probe, manyFiles(2'000)));
    const QByteArray png =
        ReportExport::bytes(report, ReportExport::Subject::report, ReportExport::Format::png);
    EXPECT_GT(QImage::fromData(png).height(), 30'000);
}

} // namespace
} // namespace loadscope::testing
