// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Pages/Report/ReportTable.h"
#include "LoadscopeCore/Presentation/FilesPresentation.h"

namespace loadscope {

/// Every instruction file, largest first.
class FileInventory : public ReportTable {
    Q_OBJECT

public:
    /// `files` in the order in which they are shown.
    FileInventory(const ScanReport& report, const std::vector<FilesPresentation::File>& files,
                  QWidget* parent = nullptr);

    /// The file of each of them, on the disk.
    [[nodiscard]] static PathOf pathsOf(const ScanReport& report,
                                        const std::vector<FilesPresentation::File>& files);
};

} // namespace loadscope
