// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/FolderPanel.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QFile>
#include <QFileDialog>

namespace loadscope {

void FolderPanel::open(QWidget* window, const std::string& start,
                       std::function<void(std::string path)> done) {
    auto* panel = new QFileDialog(window, QStringLiteral("Choose a local repository to scan."));
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setFileMode(QFileDialog::Directory);
    panel->setOption(QFileDialog::ShowDirsOnly);
    panel->setSupportedSchemes({QStringLiteral("file")});
    panel->setLabelText(QFileDialog::Accept, QStringLiteral("Choose"));
    if (!start.empty()) panel->setDirectory(QFile::decodeName(QByteArray::fromStdString(start)));
    panel->setPalette(AppTheme::current().palette());
    QObject::connect(
        panel, &QFileDialog::fileSelected, window,
        [done = std::move(done)](const QString& path) { done(QFile::encodeName(path).toStdString()); });
    panel->open();
}

} // namespace loadscope
