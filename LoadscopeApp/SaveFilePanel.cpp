// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/SaveFilePanel.h"

#include "LoadscopeApp/AppTheme.h"
#include "LoadscopeApp/Components/AlertPanel.h"
#include "LoadscopeApp/DisplayText.h"
#include "LoadscopeCore/Platform/AtomicFile.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QWidget>

namespace loadscope {
namespace {

constexpr int longestName = 60;

void save(QWidget* base, const QString& path, const QByteArray& bytes) {
    const std::string name = QFile::encodeName(path).toStdString();
    const QFileInfo there(path);
    // A file that its owner has protected is not replaced, though its folder would allow it.
    const bool isProtected = there.exists() && !there.permission(QFile::WriteOwner);
    if (!isProtected && AtomicFile::write(name, {bytes.constData(), static_cast<std::size_t>(bytes.size())}))
        return;
    if (base == nullptr) return;
    AlertPanel::tell(base, QStringLiteral("The file could not be saved"),
                     QStringLiteral("Nothing was written to %1. Check that the file and its folder can be "
                                    "written to and that there is space left, then try again.")
                         .arg(DisplayText::line(name)));
}

} // namespace

void SaveFilePanel::open(QWidget* anchor, const Request& request, const QByteArray& contents) {
    auto* panel = new QFileDialog(anchor->window(), request.title);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setAcceptMode(QFileDialog::AcceptSave);
    panel->setFileMode(QFileDialog::AnyFile);
    panel->setSupportedSchemes({QStringLiteral("file")});
    panel->setNameFilter(QStringLiteral("%1 (*.%2)").arg(request.kind, request.suffix));
    panel->setDefaultSuffix(request.suffix);
    panel->selectFile(request.suggestedName + QLatin1Char('.') + request.suffix);
    panel->setPalette(AppTheme::current().palette());
    QWidget* base = AlertPanel::backdropOf(anchor);
    QObject::connect(panel, &QFileDialog::fileSelected, base != nullptr ? base : anchor,
                     [base, contents](const QString& path) { save(base, path, contents); });
    panel->open();
}

QString SaveFilePanel::fileNamePart(std::string_view name) {
    QString part = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())).left(longestName);
    for (QChar& character : part) {
        if (!character.isLetterOrNumber() && character != QLatin1Char('.') && character != QLatin1Char('_'))
            character = QLatin1Char('-');
    }
    return part;
}

} // namespace loadscope
