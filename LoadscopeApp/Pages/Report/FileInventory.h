// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeCore/Presentation/FilesPresentation.h"

#include <QUrl>

#include <functional>

namespace loadscope {

/// Every instruction file, largest first. A menu on a row copies its path or opens its folder.
class FileInventory : public ReportTable {
    Q_OBJECT

public:
    /// `files` in the order in which they are shown.
    FileInventory(const ScanReport& report, const std::vector<FilesPresentation::File>& files,
                  QWidget* parent = nullptr);

    /// Shows a folder; false when it could not. The desktop does it unless told otherwise.
    using FolderOpener = std::function<bool(const QUrl& folder)>;
    void setFolderOpener(FolderOpener opener) { opener_ = std::move(opener); }

private:
    void showMenu(std::size_t row, const QPoint& globalPosition);

    std::vector<std::string> paths_; ///< as they are, not as they are shown
    FolderOpener opener_;
};

} // namespace loadscope
