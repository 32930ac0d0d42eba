// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/ExportButton.h"

#include "LoadscopeApp/AppTheme.h"
#include "LoadscopeCore/Platform/AtomicFile.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>

#include <utility>

namespace loadscope {
namespace {

using Format = ReportExport::Format;
using Subject = ReportExport::Subject;

void askForFile(QWidget* parent, const QString& suggestedName, std::function<void(QString)> done) {
    const QString suffix = QFileInfo(suggestedName).suffix();
    const QString kind = suffix == QStringLiteral("json") ? QStringLiteral("JSON file")
                                                          : suffix.toUpper() + QStringLiteral(" image");
    auto* dialog = new QFileDialog(parent->window(), QStringLiteral("Export"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setSupportedSchemes({QStringLiteral("file")});
    dialog->setNameFilter(QStringLiteral("%1 (*.%2)").arg(kind, suffix));
    dialog->setDefaultSuffix(suffix);
    dialog->setPalette(AppTheme::current().palette());
    dialog->selectFile(suggestedName);
    QObject::connect(dialog, &QFileDialog::fileSelected, parent, std::move(done));
    dialog->open();
}

} // namespace

ExportButton::ExportButton(std::shared_ptr<const ScanReport> report, QWidget* parent)
    : PushButton(Kind::secondary, QStringLiteral("Export…"), parent),
      report_(std::move(report)),
      chooser_(askForFile),
      menu_(new QMenu(this)) {
    const std::pair<QString, Subject> pictures[] = {{QStringLiteral("Breakdown"), Subject::breakdown},
                                                    {QStringLiteral("Instruction Files"), Subject::files},
                                                    {QStringLiteral("Whole Report"), Subject::report}};
    for (const auto& [name, subject] : pictures) {
        add(name + QStringLiteral(" as PNG…"), subject, Format::png);
        add(name + QStringLiteral(" as SVG…"), subject, Format::svg);
        menu_->addSeparator();
    }
    add(QStringLiteral("Report as JSON…"), Subject::report, Format::json);
    connect(this, &QAbstractButton::clicked, menu_,
            [this] { menu_->popup(mapToGlobal(QPoint(0, height() + 4))); });
}

void ExportButton::add(const QString& title, Subject subject, Format format) {
    QAction* action = menu_->addAction(title, this, [this, subject, format] { save(subject, format); });
    action->setEnabled(ReportExport::isOffered(*report_, subject));
}

void ExportButton::save(Subject subject, Format format) {
    chooser_(this, ReportExport::fileName(*report_, subject, format),
             [this, subject, format](const QString& path) {
                 const QByteArray bytes = ReportExport::bytes(report_, subject, format);
                 const QString name = QFileInfo(path).fileName();
                 const bool saved =
                     !bytes.isEmpty() &&
                     AtomicFile::write(QFile::encodeName(path).toStdString(),
                                       {bytes.constData(), static_cast<std::size_t>(bytes.size())});
                 Q_EMIT finished(saved ? QStringLiteral("Saved “%1”.").arg(name)
                                       : QStringLiteral("“%1” could not be saved. Check that the folder can "
                                                        "be written to and that there is space left.")
                                             .arg(name));
             });
}

} // namespace loadscope
