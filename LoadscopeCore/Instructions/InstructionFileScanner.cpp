// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Instructions/InstructionFileScanner.h"

#include "LoadscopeCore/Instructions/InstructionFileReader.h"
#include "LoadscopeCore/Instructions/InstructionImports.h"
#include "LoadscopeCore/Instructions/PathLookup.h"
#include "LoadscopeCore/Platform/FilePath.h"

#include <algorithm>
#include <array>
#include <set>
#include <unordered_map>
#include <utility>

namespace loadscope {
namespace {

using Location = PathLookup::Location;

/// The folder of a file, as a view of its path.
std::string_view folderOf(std::string_view path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

/// The state of one scan. Admits files depth first; a file's imports follow it.
class Walk {
public:
    enum class Outside { ignored, collected };

    Walk(std::string repository, std::string home, std::string configFolder, int maxImportDepth,
         Outside outside)
        : repository_(std::move(repository)),
          home_(std::move(home)),
          configFolder_(std::move(configFolder)),
          maxImportDepth_(maxImportDepth),
          collectsOutside_(outside == Outside::collected),
          lookup_(repository_),
          importRoots_{lookup_.find(repository_).path, lookup_.find(configFolder_).path} {}

    [[nodiscard]] InstructionFileScanner::FilesAndOutside run() && {
        using enum InstructionFileTier;
        admitFile(configFolder_, "CLAUDE.md", personal);
        for (const char* name : {"CLAUDE.md", "CLAUDE.local.md", "AGENTS.md"}) {
            admitFile(repository_, name, inherited);
        }
        for (const std::string& folder : ancestorDirectories(repository_, home_)) {
            for (const char* name : {"CLAUDE.md", "CLAUDE.local.md"})
                admitFile(folder, name, inherited);
        }
        files_.unreadablePaths.assign(unreadable_.begin(), unreadable_.end());
        if (collectsOutside_) noteLinksOut();
        return {std::move(files_), {outside_.begin(), outside_.end()}};
    }

private:
    /// A file that was listed: the smallest depth at which it was reached, and its imports that may be
    /// followed, with the links to their folders resolved. They are kept so that a file reached again from a
    /// smaller depth is not read again.
    struct ListedFile {
        int depth = 0;
        std::vector<std::string> imports{};
    };
    using ListedFiles = std::unordered_map<std::string, ListedFile>;

    void admitFile(const std::string& folder, const char* name, InstructionFileTier origin) {
        admit(locate(FilePath::joined(folder, name), 0), 0, origin);
    }

    /// A listed file needs no question to the file system, and none that is too deep is opened.
    Location locate(const std::string& path, int depth) {
        if (listed_.contains(path)) return {path};
        return depth > maxImportDepth_ ? lookup_.find(path) : lookup_.findAndOpen(path);
    }

    void admit(Location location, int depth, InstructionFileTier origin) {
        if (depth > maxImportDepth_) return;
        auto listed = listed_.find(location.path);
        if (listed == listed_.end()) {
            listed = list(std::move(location), origin);
            if (listed == listed_.end()) return;
        } else if (depth >= listed->second.depth) {
            return;
        }
        listed->second.depth = depth;
        for (const std::string& import : listed->second.imports) {
            if (followedImports_ >= InstructionFileScanner::maximumFollowedImports) return;
            Location target = locate(import, depth + 1);
            if (!isFollowable(target.path)) continue;
            ++followedImports_;
            admit(std::move(target), depth + 1, origin);
        }
    }

    ListedFiles::iterator list(Location location, InstructionFileTier origin) {
        using Status = InstructionFileReader::Status;
        std::string path = location.path;
        const InstructionFileReader::Result result =
            reader_.read(lookup_, std::move(location), InstructionFileScanner::maximumParsedBytes);
        if (result.status == Status::unreadable || result.isReadingDenied) unreadable_.insert(path);
        if (result.status != Status::readable) return listed_.end();
        const bool isInside = isUnder(path, importRoots_.front());
        files_.files(isInside ? InstructionFileTier::repository : origin)
            .emplace_back(path, result.byteCount);
        ListedFile file;
        if (result.text) file.imports = importsOf(*result.text, path);
        return listed_.emplace(std::move(path), std::move(file)).first;
    }

    [[nodiscard]] bool isFollowable(std::string_view path) const {
        return isUnder(path, importRoots_.front()) || isUnder(path, importRoots_.back());
    }

    /// The imports that may lie under an import root: whether one is a link that leads out shows when it is
    /// followed. No more are looked for than the scan may still follow.
    std::vector<std::string> importsOf(std::string_view text, const std::string& path) {
        const auto limit =
            static_cast<std::size_t>(InstructionFileScanner::maximumFollowedImports - followedImports_);
        const bool collects = collectsOutside_ && isUnder(path, importRoots_.front());
        std::vector<std::string> imports;
        std::ptrdiff_t settled = 0;
        const auto isFull = [&] {
            if (imports.size() < limit) return false;
            // Links that lead out take no place from the imports behind them.
            const auto leadsOut = [&](const std::string& import) {
                const std::string target = lookup_.find(import).path;
                if (collects) noteIfOutside(target);
                return !isFollowable(target);
            };
            imports.erase(std::remove_if(imports.begin() + settled, imports.end(), leadsOut), imports.end());
            settled = static_cast<std::ptrdiff_t>(imports.size());
            return imports.size() == limit;
        };
        InstructionImports::visitTargets(text, folderOf(path), home_, [&](const std::string& target) {
            if (isFull()) {
                if (collects) noteIfOutside(lookup_.find(target).path);
                return collects && !hasAllOutside();
            }
            std::string import = lookup_.withFolderResolved(target);
            if (!isFollowable(import)) import = lookup_.find(import).path; // a link from outside may lead in
            if (collects && !isUnder(import, importRoots_.front())) noteIfOutside(lookup_.find(import).path);
            if (isFollowable(import)) imports.push_back(std::move(import));
            return true;
        });
        return imports;
    }

    [[nodiscard]] bool hasAllOutside() const {
        return outside_.size() >= InstructionFileScanner::maximumOutsideTargets;
    }

    void noteIfOutside(const std::string& path) {
        if (!hasAllOutside() && !isUnder(path, importRoots_.front())) outside_.insert(path);
    }

    /// Imports that lie in the repository by their names. What was listed under its name is no link.
    void noteLinksOut() {
        for (const auto& [path, file] : listed_) {
            if (!isUnder(path, importRoots_.front())) continue;
            for (const std::string& import : file.imports)
                if (!listed_.contains(import)) noteIfOutside(lookup_.find(import).path);
        }
    }

    const std::string repository_;
    const std::string home_;
    const std::string configFolder_;
    const int maxImportDepth_;
    const bool collectsOutside_;
    PathLookup lookup_;
    const std::array<std::string, 2> importRoots_; ///< the repository and the configuration, resolved
    InstructionFileReader reader_;
    InstructionFileSet files_;
    std::set<std::string> unreadable_;
    std::set<std::string> outside_;
    ListedFiles listed_;
    int followedImports_ = 0;
};

} // namespace

InstructionFileScanner::InstructionFileScanner(std::string home, std::string configFolder, int maxImportDepth)
    : home_(std::move(home)), configFolder_(std::move(configFolder)), maxImportDepth_(maxImportDepth) {}

InstructionFileSet InstructionFileScanner::scan(const std::string& repository) {
    return Walk(FilePath::standardized(repository), FilePath::standardized(home_),
                FilePath::standardized(configFolder_), maxImportDepth_, Walk::Outside::ignored)
        .run()
        .files;
}

InstructionFileScanner::FilesAndOutside
InstructionFileScanner::scanWithOutside(const std::string& repository) const {
    return Walk(FilePath::standardized(repository), FilePath::standardized(home_),
                FilePath::standardized(configFolder_), maxImportDepth_, Walk::Outside::collected)
        .run();
}

std::vector<std::string> ancestorDirectories(const std::string& repository, const std::string& home) {
    constexpr int maximumFolders = 64;
    const std::string top = FilePath::standardized(home);
    std::vector<std::string> folders;
    std::string folder = FilePath::parent(FilePath::standardized(repository));
    for (int count = 0; count < maximumFolders; ++count) {
        // Not `isUnder`: a home folder that is the root of the file system is above nothing but itself.
        if (folder != top && !folder.starts_with(top + "/")) break;
        folders.push_back(folder);
        std::string next = FilePath::parent(folder);
        if (folder == top || next == folder) break;
        folder = std::move(next);
    }
    return folders;
}

bool isUnder(std::string_view path, std::string_view root) {
    if (root.empty() || !path.starts_with(root)) return false;
    return path.size() == root.size() || root.ends_with('/') || path[root.size()] == '/';
}

} // namespace loadscope
