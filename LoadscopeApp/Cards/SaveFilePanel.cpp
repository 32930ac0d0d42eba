// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Cards/SaveFilePanel.h"

#include "LoadscopeApp/Cards/AlertPanel.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Presentation/Notices.h"

#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QWidget>

namespace loadscope {

void SaveFilePanel::choose(QWidget* anchor, const Request& request,
                           std::function<void(const QString& path)> chosen) {
    auto* panel = new QFileDialog(anchor->window(), request.title);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setAcceptMode(QFileDialog::AcceptSave);
    panel->setFileMode(QFileDialog::AnyFile);
    panel->setSupportedSchemes({QStringLiteral("file")});
    const QStringList filter{request.kind, QStringLiteral("(*.%1)").arg(request.suffix)};
    panel->setNameFilter(filter.join(QLatin1Char(' ')));
    panel->setDefaultSuffix(request.suffix);
    panel->selectFile(request.suggestedName + QLatin1Char('.') + request.suffix);
    panel->setPalette(AppTheme::current().palette());
    QObject::connect(panel, &QFileDialog::fileSelected, anchor, std::move(chosen));
    panel->open();
}

bool SaveFilePanel::write(const QString& path, const QByteArray& contents) {
    const QFileInfo there(path);
    // Its folder would allow it to be replaced.
    const bool isProtected = there.exists() && !there.permission(QFile::WriteOwner);
    // Without memory for a picture there are no contents.
    return !isProtected && !contents.isEmpty() &&
           AtomicFile::write(QFile::encodeName(path).toStdString(),
                             {contents.constData(), static_cast<std::size_t>(contents.size())});
}

void SaveFilePanel::open(QWidget* anchor, const Request& request, const QByteArray& contents) {
    QWidget* base = AlertPanel::backdropOf(anchor);
    choose(base != nullptr ? base : anchor, request, [base, contents](const QString& path) {
        if (write(path, contents) || base == nullptr) return;
        AlertPanel::tell(base, Notice::fileNotSaved(QFile::encodeName(path).toStdString()));
    });
}

} // namespace loadscope
