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

/// The state of one scan. Admits files depth first; a file's imports follow it.
class Walk {
public:
    Walk(std::string repository, std::string home, int maxImportDepth)
        : repository_(std::move(repository)),
          home_(std::move(home)),
          maxImportDepth_(maxImportDepth),
          importRoots_{lookup_.find(repository_).path,
                       lookup_.find(FilePath::joined(home_, ".claude")).path} {}

    [[nodiscard]] InstructionFileSet run() && {
        using enum InstructionFileTier;
        admitFile(home_, ".claude/CLAUDE.md", personal);
        for (const char* name : {"CLAUDE.md", "CLAUDE.local.md", "AGENTS.md"}) {
            admitFile(repository_, name, inherited);
        }
        for (const std::string& folder : ancestorDirectories(repository_, home_)) {
            for (const char* name : {"CLAUDE.md", "CLAUDE.local.md"})
                admitFile(folder, name, inherited);
        }
        files_.unreadablePaths.assign(unreadable_.begin(), unreadable_.end());
        return std::move(files_);
    }

private:
    /// A file that was listed: the smallest depth at which it was reached, and its imports that may be
    /// followed. They are kept so that a file reached again from a smaller depth is not read again.
    struct ListedFile {
        int depth = 0;
        std::vector<Location> imports;
    };

    void admitFile(const std::string& folder, const char* name, InstructionFileTier origin) {
        admit(lookup_.find(FilePath::joined(folder, name)), 0, origin);
    }

    void admit(const Location& location, int depth, InstructionFileTier origin) {
        if (depth > maxImportDepth_) return;
        auto listed = listed_.find(location.path);
        if (listed == listed_.end()) {
            listed = list(location, origin);
            if (listed == listed_.end()) return;
        } else if (depth >= listed->second.depth) {
            return;
        }
        listed->second.depth = depth;
        for (const Location& import : listed->second.imports) {
            if (followedImports_ >= InstructionFileScanner::maximumFollowedImports) return;
            ++followedImports_;
            admit(import, depth + 1, origin);
        }
    }

    std::unordered_map<std::string, ListedFile>::iterator list(const Location& location,
                                                               InstructionFileTier origin) {
        using Status = InstructionFileReader::Status;
        const InstructionFileReader::Result result =
            reader_.read(location, InstructionFileScanner::maximumParsedBytes);
        if (result.status == Status::unreadable || result.isReadingDenied) unreadable_.insert(location.path);
        if (result.status != Status::readable) return listed_.end();
        const bool isInside = isUnder(location.path, importRoots_.front());
        files_.files(isInside ? InstructionFileTier::repository : origin)
            .emplace_back(location.path, result.byteCount);
        ListedFile file;
        if (result.text) file.imports = importsOf(*result.text, FilePath::parent(location.path));
        return listed_.emplace(location.path, std::move(file)).first;
    }

    /// The imports that lie under an import root. No more are looked for than the scan may still follow.
    std::vector<Location> importsOf(std::string_view text, const std::string& folder) {
        const auto limit =
            static_cast<std::size_t>(InstructionFileScanner::maximumFollowedImports - followedImports_);
        std::vector<Location> imports;
        InstructionImports::visitTargets(text, folder, home_, [&](const std::string& target) {
            if (imports.size() == limit) return false;
            Location location = lookup_.find(target);
            if (std::any_of(importRoots_.begin(), importRoots_.end(),
                            [&](const std::string& root) { return isUnder(location.path, root); })) {
                imports.push_back(std::move(location));
            }
            return true;
        });
        return imports;
    }

    const std::string repository_;
    const std::string home_;
    const int maxImportDepth_;
    PathLookup lookup_;
    const std::array<std::string, 2> importRoots_; ///< the repository and the user's own folder, resolved
    InstructionFileReader reader_;
    InstructionFileSet files_;
    std::set<std::string> unreadable_;
    std::unordered_map<std::string, ListedFile> listed_;
    int followedImports_ = 0;
};

} // namespace

InstructionFileScanner::InstructionFileScanner(std::string home, int maxImportDepth)
    : home_(std::move(home)), maxImportDepth_(maxImportDepth) {}

InstructionFileSet InstructionFileScanner::scan(const std::string& repository) {
    return Walk(FilePath::standardized(repository), FilePath::standardized(home_), maxImportDepth_).run();
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
