// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/InstructionFilesSection.h"

#include "LoadscopeApp/Charts/TreemapView.h"
#include "LoadscopeApp/Pages/Report/FileInventory.h"
#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/TextLabel.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <QVBoxLayout>

namespace loadscope {
namespace {

constexpr int groupSpacing = 16;
constexpr int itemSpacing = 8;

QVBoxLayout* addGroup(QVBoxLayout* column, const QString& title) {
    auto* group = new QVBoxLayout;
    group->setSpacing(itemSpacing);
    group->addWidget(TextLabel::heading(title));
    column->addLayout(group);
    return group;
}

/// The file's name and the folder that it is in: enough to tell files of equal names apart.
std::string lastTwoComponents(const std::string& path) {
    const std::string folder = FilePath::lastComponent(FilePath::parent(path));
    const std::string file = FilePath::lastComponent(path);
    return folder.empty() || folder == "/" ? file : folder + "/" + file;
}

QWidget* unreadableList(const std::vector<std::string>& paths) {
    std::vector<TableRow> rows;
    rows.reserve(paths.size());
    for (const std::string& path : paths)
        rows.push_back({{}, DisplayText::line(path), {}, {}});
    auto* table = new ReportTable({}, std::move(rows), QStringLiteral("Could not be read"));
    table->setPaths([paths](std::size_t row) { return paths.at(row); });
    return table;
}

/// Lets the tiles and the rows of the same files highlight each other.
QWidget* linked(TreemapView* treemap, FileInventory* inventory) {
    QObject::connect(treemap, &TreemapView::activeChanged, inventory, &FileInventory::setActive);
    QObject::connect(inventory, &FileInventory::activeChanged, treemap, [treemap](MarkedWidget::Item file) {
        if (treemap->active() != file) treemap->follow(file);
    });
    return inventory;
}

void fill(QWidget* body, const ScanReport& report) {
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(groupSpacing);
    const std::vector<FilesPresentation::File> files = FilesPresentation::files(report);
    if (const auto note = ScanPresentation::unreportedCategoryFilesNote(report))
        column->addWidget(TextLabel::note(DisplayText::own(*note), TextStyle::body));
    if (!report.unreadablePaths().empty())
        addGroup(column, QStringLiteral("Could not be read"))
            ->addWidget(unreadableList(report.unreadablePaths()));
    TreemapView* treemap = nullptr;
    if (!files.empty()) {
        QVBoxLayout* group = addGroup(column, QStringLiteral("Relative size"));
        treemap = InstructionFilesSection::treemap(files);
        treemap->setPaths(FileInventory::pathsOf(report, files));
        group->addWidget(treemap);
        group->addWidget(TextLabel::note(DisplayText::own(FilesPresentation::treemapCaption(report))));
    }
    QVBoxLayout* inventory = addGroup(column, QStringLiteral("Largest contributors"));
    if (files.empty())
        inventory->addWidget(TextLabel::note(QStringLiteral("No instruction files were found for this scan."),
                                             TextStyle::body));
    else
        inventory->addWidget(linked(treemap, new FileInventory(report, files)));
    if (const auto note = FilesPresentation::twoNumbersNote(report))
        column->addWidget(TextLabel::note(DisplayText::own(*note)));
    column->addWidget(TextLabel::note(DisplayText::own(FilesPresentation::shareNote(report))));
}

} // namespace

InstructionFilesSection::InstructionFilesSection(const ScanReport& report, QWidget* parent)
    : InstructionFilesSection(report, new QWidget, parent) {}

InstructionFilesSection::InstructionFilesSection(const ScanReport& report, QWidget* body, QWidget* parent)
    : CollapsibleSection(
          QStringLiteral("Instruction file estimates"),
          QStringLiteral(
              "Local estimates based on file size. Expand to see every file, largest first; contents "
              "are never displayed or persisted."),
          body, parent) {
    fillWhenExpanded([report, body] { fill(body, report); });
}

TreemapView* InstructionFilesSection::treemap(const std::vector<FilesPresentation::File>& files) {
    std::vector<TreemapView::Tile> tiles;
    tiles.reserve(files.size());
    for (const FilesPresentation::File& file : files)
        tiles.push_back({DisplayText::line(file.path), DisplayText::line(lastTwoComponents(file.path)),
                         DisplayText::own(file.tip), DisplayText::own(file.tokens),
                         static_cast<double>(file.count.tokens)});
    return new TreemapView(std::move(tiles));
}

} // namespace loadscope
