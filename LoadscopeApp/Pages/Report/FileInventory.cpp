// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/FileInventory.h"

#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeCore/Platform/FilePath.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>

namespace loadscope {
namespace {

std::vector<TableRow> rowsOf(const std::vector<FilesPresentation::File>& files) {
    std::vector<TableRow> rows;
    rows.reserve(files.size());
    for (const FilesPresentation::File& file : files)
        rows.push_back({{},
                        DisplayText::line(file.path),
                        DisplayText::own(file.detail),
                        {DisplayText::own(file.tokens), DisplayText::own(file.share)}});
    return rows;
}

} // namespace

FileInventory::FileInventory(const ScanReport& report, const std::vector<FilesPresentation::File>& files,
                             QWidget* parent)
    : ReportTable({QStringLiteral("File"),
                   {DisplayText::own(FilesPresentation::countTitle(report)), QStringLiteral("Share")},
                   {}},
                  rowsOf(files), QStringLiteral("Largest contributors"), parent),
      opener_(QDesktopServices::openUrl) {
    for (const FilesPresentation::File& file : files)
        paths_.push_back(file.path);
    connect(this, &ReportTable::menuRequested, this, &FileInventory::showMenu);
}

void FileInventory::showMenu(std::size_t row, const QPoint& globalPosition) {
    const std::string& path = paths_.at(row);
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Copy Path"), this, [path] {
        QGuiApplication::clipboard()->setText(QFile::decodeName(QByteArray::fromStdString(path)));
    });
    menu->addAction(QStringLiteral("Open Folder"), this, [this, path, globalPosition] {
        const QByteArray folder = QByteArray::fromStdString(FilePath::parent(path));
        if (!opener_(QUrl::fromLocalFile(QFile::decodeName(folder))))
            PlainToolTip::show(globalPosition, QStringLiteral("The folder could not be opened."), this);
    });
    menu->popup(globalPosition);
}

} // namespace loadscope
