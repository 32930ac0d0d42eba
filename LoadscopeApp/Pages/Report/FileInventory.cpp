// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/Report/FileInventory.h"

#include "LoadscopeApp/Text/DisplayText.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeCore/Instructions/InstructionFileShare.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>

#include <unordered_map>

namespace loadscope {
namespace {

/// The files of a set by path, for looking up their tiers.
class TierNames {
public:
    explicit TierNames(const InstructionFileSet& set) {
        for (const InstructionFileTier tier : allInstructionFileTiers) {
            for (const InstructionFileEstimate& file : set.files(tier))
                known_[file.path].push_back({&file, tier});
        }
    }

    [[nodiscard]] std::string of(const InstructionFileEstimate& file) const {
        const auto same = known_.find(file.path);
        if (same != known_.end()) {
            for (const Entry& entry : same->second) {
                if (*entry.file == file) return InstructionFileSet::categoryName(entry.tier);
            }
        }
        return "Instruction file";
    }

private:
    struct Entry {
        const InstructionFileEstimate* file;
        InstructionFileTier tier;
    };
    std::unordered_map<std::string, std::vector<Entry>> known_;
};

std::vector<TableRow> rowsOf(const ScanReport& report, const std::vector<InstructionFileEstimate>& files) {
    const TierNames tiers(report.fileSet);
    std::vector<TableRow> rows;
    rows.reserve(files.size());
    for (const InstructionFileEstimate& file : files) {
        rows.push_back({{},
                        DisplayText::line(file.path),
                        DisplayText::own(tiers.of(file) + " · " + LocaleFormat::grouped(file.byteCount) +
                                         " bytes on disk"),
                        {DisplayText::own(LocaleFormat::grouped(file.estimatedTokens)),
                         DisplayText::own(InstructionFileShare::text(file.estimatedTokens, report.total))}});
    }
    return rows;
}

} // namespace

FileInventory::FileInventory(const ScanReport& report, const std::vector<InstructionFileEstimate>& files,
                             QWidget* parent)
    : ReportTable({QStringLiteral("File"), {QStringLiteral("Estimated tokens"), QStringLiteral("Share")}, {}},
                  rowsOf(report, files), QStringLiteral("Largest contributors"), parent),
      opener_(QDesktopServices::openUrl) {
    for (const InstructionFileEstimate& file : files)
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
