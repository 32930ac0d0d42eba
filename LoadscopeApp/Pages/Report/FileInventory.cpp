// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/FileInventory.h"

#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeCore/Report/MemberPath.h"

namespace loadscope {
namespace {

std::vector<TableRow> rowsOf(const std::vector<FilesPresentation::File>& files) {
    std::vector<TableRow> rows;
    rows.reserve(files.size());
    for (const FilesPresentation::File& file : files)
        rows.push_back({{},
                        DisplayText::line(file.path),
                        DisplayText::own(file.detail),
                        {DisplayText::own(file.tokens), DisplayText::own(file.share)},
                        0,
                        {file.count.tokens}});
    return rows;
}

} // namespace

FileInventory::FileInventory(const ScanReport& report, const std::vector<FilesPresentation::File>& files,
                             QWidget* parent)
    : ReportTable({QStringLiteral("File"),
                   {DisplayText::own(FilesPresentation::countTitle(report)), QStringLiteral("Share")},
                   {}},
                  rowsOf(files), QStringLiteral("Largest contributors"), parent) {
    setPaths(pathsOf(report, files));
}

MarkedWidget::PathOf FileInventory::pathsOf(const ScanReport& report,
                                            const std::vector<FilesPresentation::File>& files) {
    std::vector<std::string> paths;
    paths.reserve(files.size());
    for (const FilesPresentation::File& file : files)
        paths.push_back(file.isFound ? file.path : MemberPath::ofFile(report, file.path));
    return [paths = std::move(paths)](std::size_t file) { return paths.at(file); };
}

} // namespace loadscope
