// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Budget/PathPattern.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

namespace loadscope {
namespace {

constexpr std::string_view anyFolders = "**";

std::vector<std::string_view> namesOf(std::string_view path) {
    std::vector<std::string_view> names;
    while (!path.empty()) {
        const std::size_t slash = std::min(path.find('/'), path.size());
        if (slash > 0 && path.substr(0, slash) != ".") names.push_back(path.substr(0, slash));
        path.remove_prefix(std::min(slash + 1, path.size()));
    }
    return names;
}

/// One name against one segment; never takes longer than their lengths' product.
bool matchesName(std::string_view pattern, std::string_view name) {
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = std::string_view::npos;
    std::size_t retry = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            retry = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++retry;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};

} // namespace

bool PathPattern::isAllowed(std::string_view pattern) {
    const auto names = namesOf(pattern);
    return !names.empty() && !pattern.starts_with('/') &&
           std::none_of(names.begin(), names.end(), [](std::string_view name) { return name == ".."; });
}

PathPattern::PathPattern(std::string_view pattern) {
    for (const std::string_view name : namesOf(pattern)) {
        // Several in a row mean what one does, and would only take longer.
        if (name != anyFolders || segments_.empty() || segments_.back() != anyFolders)
            segments_.emplace_back(name);
    }
}

bool PathPattern::matchFrom(std::size_t segment, const std::vector<std::string_view>& names,
                            std::size_t name) const {
    // Which segments can stand at each name, from the last on: no pattern makes this take long.
    std::vector<bool> next(names.size() + 1, false);
    next[names.size()] = true;
    for (std::size_t s = segments_.size(); s-- > segment;) {
        std::vector<bool> here(names.size() + 1, false);
        for (std::size_t n = names.size() + 1; n-- > name;) {
            if (segments_[s] == anyFolders)
                here[n] = next[n] || (n < names.size() && here[n + 1]);
            else
                here[n] = n < names.size() && next[n + 1] && matchesName(segments_[s], names[n]);
        }
        next = std::move(here);
    }
    return next[name];
}

bool PathPattern::matches(std::string_view relativePath) const {
    return matchFrom(0, namesOf(relativePath), 0);
}

bool PathPattern::couldHold(const std::vector<std::string_view>& names) const {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i >= segments_.size()) return false;
        if (segments_[i] == anyFolders) return true;
        if (!matchesName(segments_[i], names[i])) return false;
    }
    return names.size() < segments_.size();
}

PathPattern::Found PathPattern::find(const std::string& folder) const {
    Found found;
    std::size_t entries = 0;
    std::vector<std::string> pending{""};
    const FileDescriptor root(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const bool namesGit = std::find(segments_.begin(), segments_.end(), ".git") != segments_.end();
    while (root.isOpen() && !pending.empty()) {
        const std::string below = std::move(pending.back());
        pending.pop_back();
        const int descriptor = ::openat(root.get(), below.empty() ? "." : below.c_str(),
                                        O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
        const std::unique_ptr<DIR, CloseFolder> opened(descriptor < 0 ? nullptr : ::fdopendir(descriptor));
        if (!opened) continue;
        while (const dirent* entry = ::readdir(opened.get())) {
            const std::string_view name = entry->d_name;
            if (name == "." || name == ".." || (name == ".git" && !namesGit)) continue;
            if (++entries > mostEntries) return {std::move(found.files), false};
            const std::string path = below.empty() ? std::string(name) : below + '/' + std::string(name);
            struct stat status {};
            const bool isMatch = matches(path);
            const bool mayHold = couldHold(namesOf(path));
            if ((!isMatch && !mayHold) ||
                ::fstatat(::dirfd(opened.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
                continue;
            if (S_ISREG(status.st_mode) && isMatch) found.files.push_back({path, status.st_size});
            if (S_ISDIR(status.st_mode) && mayHold) pending.push_back(path);
        }
    }
    std::sort(found.files.begin(), found.files.end(),
              [](const File& left, const File& right) { return left.path < right.path; });
    return found;
}

} // namespace loadscope
