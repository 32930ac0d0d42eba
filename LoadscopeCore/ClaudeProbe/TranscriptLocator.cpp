// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/Transcript.h"
#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/FilePath.h"

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace loadscope::TranscriptLocator {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// Opens a folder below `root` (the empty path is the root itself, which alone may be a link).
Folder openFolder(int root, const std::string& relativePath) {
    const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK;
    const int descriptor = relativePath.empty() ? ::openat(root, ".", flags)
                                                : ::openat(root, relativePath.c_str(), flags | O_NOFOLLOW);
    if (descriptor < 0) return nullptr;
    DIR* folder = ::fdopendir(descriptor);
    if (!folder) ::close(descriptor);
    return Folder(folder);
}

bool isFolder(DIR* parent, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
    struct stat status {};
    return ::fstatat(::dirfd(parent), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

} // namespace

std::string configFolder(const std::string& home, const Environment& environment) {
    return ClaudeConfigFolder::path(home, environment);
}

std::string defaultProjectsRoot(const std::string& home, const Environment& environment) {
    return FilePath::joined(configFolder(home, environment), "projects");
}

std::optional<std::string> normalizedConfigDir(std::string_view value, const std::string& workingDirectory) {
    return ClaudeConfigFolder::normalized(value, workingDirectory);
}

std::optional<std::string> find(const std::string& sessionID, const std::string& root) {
    const std::string target = sessionID + ".jsonl";
    const FileDescriptor rootFolder(::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!rootFolder.isOpen()) return std::nullopt;

    std::vector<std::string> pending{""};
    while (!pending.empty()) {
        const std::string relativePath = std::move(pending.back());
        pending.pop_back();
        const Folder folder = openFolder(rootFolder.get(), relativePath);
        if (!folder) continue;
        const std::string prefix = relativePath.empty() ? "" : relativePath + "/";
        while (const dirent* entry = ::readdir(folder.get())) {
            if (entry->d_name[0] == '.') continue;
            if (target == entry->d_name) return FilePath::joined(root, prefix + target);
            if (isFolder(folder.get(), *entry)) pending.push_back(prefix + entry->d_name);
        }
    }
    return std::nullopt;
}

} // namespace loadscope::TranscriptLocator
