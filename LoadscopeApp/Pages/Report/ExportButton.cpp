// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ExportButton.h"

#include "LoadscopeApp/Cards/SaveFilePanel.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Presentation/Notices.h"

#include <QFileInfo>
#include <QMenu>

namespace loadscope {
namespace {

using Format = ReportExport::Format;
using Subject = ReportExport::Subject;

void askForFile(QWidget* parent, const QString& suggestedName, std::function<void(QString)> done) {
    const QFileInfo name(suggestedName);
    const QString suffix = name.suffix();
    const QString kind = suffix == QStringLiteral("json")  ? QStringLiteral("JSON file")
                         : suffix == QStringLiteral("png") ? QStringLiteral("PNG image")
                                                           : QStringLiteral("SVG image");
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
    add(QStringLiteral("Report as JSON…"), Subject::report, Format::json);
}

void ExportButton::add(const QString& title, Subject subject, Format format) {
    QAction* choice = menu()->addAction(title, this, [this, subject, format] { save(subject, format); });
    choice->setEnabled(ReportExport::isOffered(*report_, subject));
}

void ExportButton::save(Subject subject, Format format) {
    chooser_(this, ReportExport::fileName(*report_, subject, format),
             [this, subject, format](const QString& path) {
                 const QByteArray bytes = ReportExport::bytes(report_, subject, format);
                 const std::string name = QFileInfo(path).fileName().toStdString();
                 const bool saved = SaveFilePanel::write(path, bytes);
                 Q_EMIT finished(
                     DisplayText::line(saved ? Notice::exported(name) : Notice::notExported(name)));
             });
}

} // namespace loadscope
