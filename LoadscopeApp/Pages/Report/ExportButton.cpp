// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ExportButton.h"

#include "LoadscopeApp/Cards/SaveFilePanel.h"

#include <QFileInfo>
#include <QMenu>

#include <utility>

namespace loadscope {
namespace {

using Format = ReportExport::Format;
using Subject = ReportExport::Subject;

void askForFile(QWidget* parent, const QString& suggestedName, std::function<void(QString)> done) {
    const QFileInfo name(suggestedName);
    const QString suffix = name.suffix();
    const QString kind = suffix == QStringLiteral("json") ? QStringLiteral("JSON file")
                                                          : suffix.toUpper() + QStringLiteral(" image");
    SaveFilePanel::choose(parent, {QStringLiteral("Export"), name.completeBaseName(), suffix, kind},
                          std::move(done));
}

} // namespace

ExportButton::ExportButton(std::shared_ptr<const ScanReport> report, QWidget* parent)
    : PushButton(Kind::secondary, QStringLiteral("Export…"), parent),
      report_(std::move(report)),
      chooser_(askForFile) {
    setMenu(new QMenu(this));
    const std::pair<QString, Subject> pictures[] = {{QStringLiteral("Breakdown"), Subject::breakdown},
                                                    {QStringLiteral("Instruction Files"), Subject::files},
                                                    {QStringLiteral("Whole Report"), Subject::report}};
    for (const auto& [name, subject] : pictures) {
        add(name + QStringLiteral(" as PNG…"), subject, Format::png);
        add(name + QStringLiteral(" as SVG…"), subject, Format::svg);
        menu()->addSeparator();
    }
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
                 const QString name = QFileInfo(path).fileName();
                 const bool saved = SaveFilePanel::write(path, bytes);
                 Q_EMIT finished(saved ? QStringLiteral("Saved “%1”.").arg(name)
                                       : QStringLiteral("“%1” could not be saved. Check that the folder can "
                                                        "be written to and that there is space left.")
                                             .arg(name));
             });
}

} // namespace loadscope
