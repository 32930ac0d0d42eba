// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ExportButton.h"

#include "LoadscopeApp/Cards/SaveFilePanel.h"
#include "LoadscopeApp/Pages/Report/ReportPages.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Presentation/Notices.h"

#include <QApplication>
#include <QFileInfo>
#include <QHash>
#include <QMenu>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QThreadPool>

namespace loadscope {
namespace {

using Format = ReportExport::Format;
using Subject = ReportExport::Subject;

void askForFile(QWidget* parent, const QString& suggestedName, std::function<void(QString)> done) {
    const QFileInfo name(suggestedName);
    const QString suffix = name.suffix();
    const QHash<QString, QString> kinds{{QStringLiteral("png"), QStringLiteral("PNG image")},
                                        {QStringLiteral("svg"), QStringLiteral("SVG image")},
                                        {QStringLiteral("pdf"), QStringLiteral("PDF document")},
                                        {QStringLiteral("html"), QStringLiteral("HTML page")},
                                        {QStringLiteral("md"), QStringLiteral("Markdown text")},
                                        {QStringLiteral("csv"), QStringLiteral("CSV table")}};
    const QString kind = kinds.value(suffix, QStringLiteral("JSON file"));
    SaveFilePanel::choose(parent, {QStringLiteral("Export"), name.completeBaseName(), suffix, kind},
                          std::move(done));
}

} // namespace

ExportButton::ExportButton(std::shared_ptr<const ScanReport> report, QWidget* parent)
    : PushButton(Kind::secondary, QStringLiteral("Export…"), parent),
      report_(std::move(report)),
      chooser_(askForFile) {
    setMenu(new QMenu(this));
    add(QStringLiteral("Breakdown as PNG…"), Subject::breakdown, Format::png);
    add(QStringLiteral("Breakdown as SVG…"), Subject::breakdown, Format::svg);
    menu()->addSeparator();
    add(QStringLiteral("Instruction Files as PNG…"), Subject::files, Format::png);
    add(QStringLiteral("Instruction Files as SVG…"), Subject::files, Format::svg);
    menu()->addSeparator();
    add(QStringLiteral("Whole Report as PNG…"), Subject::report, Format::png);
    add(QStringLiteral("Whole Report as SVG…"), Subject::report, Format::svg);
    menu()->addSeparator();
    add(QStringLiteral("Report as PDF…"), Subject::report, Format::pdf);
    add(QStringLiteral("Report as HTML…"), Subject::report, Format::html);
    add(QStringLiteral("Report as Markdown…"), Subject::report, Format::markdown);
    add(QStringLiteral("Report as CSV…"), Subject::report, Format::csv);
    add(QStringLiteral("Report as JSON…"), Subject::report, Format::json);
    menu()->addSeparator();
    menu()->addAction(QStringLiteral("Print…"), this, &ExportButton::print);
}

void ExportButton::add(const QString& title, Subject subject, Format format) {
    QAction* choice = menu()->addAction(title, this, [this, subject, format] { save(subject, format); });
    choice->setEnabled(ReportExport::isOffered(*report_, subject));
}

void ExportButton::save(Subject subject, Format format) {
    chooser_(this, ReportExport::fileName(*report_, subject, format),
             [this, subject, format](const QString& path) {
                 const auto write = [report = report_, subject, format, path] {
                     return SaveFilePanel::write(path, ReportExport::bytes(report, subject, format));
                 };
                 const auto tell = [name = QFileInfo(path).fileName().toStdString()](ExportButton& button,
                                                                                     bool saved) {
                     Q_EMIT button.finished(
                         DisplayText::line(saved ? Notice::exported(name) : Notice::notExported(name)));
                 };
                 if (ReportExport::isPaged(format))
                     later(write, tell);
                 else
                     tell(*this, write());
             });
}

void ExportButton::later(const std::function<bool()>& work,
                         const std::function<void(ExportButton&, bool)>& done) {
    QThreadPool::globalInstance()->start([work, done, button = QPointer<ExportButton>(this)] {
        const bool succeeded = work();
        QMetaObject::invokeMethod(qApp, [button, done, succeeded] {
            if (button != nullptr) done(*button, succeeded);
        });
    });
}

void ExportButton::print() {
    const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    auto* dialog = new QPrintDialog(printer.get(), window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setPalette(AppTheme::current().palette());
    connect(dialog, &QDialog::accepted, this, [this, printer] {
        later([printer, report = report_] { return ReportPages::print(*report, *printer), true; },
              [](ExportButton& button, bool) { Q_EMIT button.finished(DisplayText::own(Notice::printed)); });
    });
    dialog->open();
}

} // namespace loadscope
