// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexInstructions.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace loadscope {
namespace {

constexpr const char* overrideName = "AGENTS.override.md";
constexpr const char* usualName = "AGENTS.md";
constexpr std::int64_t mostBytesLookedAt = std::int64_t{1} << 20;

/// What a name in a folder leads to, links followed.
struct Found {
    enum class Kind { nothing, regularFile, failure } kind = Kind::nothing;
    std::int64_t byteCount = 0;
    FileDescriptor descriptor{};
};
using enum Found::Kind;

Found judged(int failed, const struct stat& attributes) {
    if (failed != 0) return {errno == ENOENT ? nothing : failure};
    if (!S_ISREG(attributes.st_mode)) return {nothing};
    return {regularFile, attributes.st_size};
}

Found look(const std::string& path) {
    struct stat attributes {};
    return judged(::stat(path.c_str(), &attributes), attributes);
}

/// Opens a regular file, and waits for none that has taken its place since it was looked at.
Found open(const std::string& path) {
    FileDescriptor descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    if (!descriptor.isOpen()) return {errno == ENOENT ? nothing : failure};
    struct stat attributes {};
    Found found = judged(::fstat(descriptor.get(), &attributes), attributes);
    found.descriptor = std::move(descriptor);
    return found;
}

/// The beginning of an open file; nothing when reading it fails.
std::optional<std::string> beginning(const Found& file, std::int64_t byteCount) {
    std::string bytes(static_cast<std::size_t>(std::clamp<std::int64_t>(byteCount, 0, mostBytesLookedAt)), 0);
    std::size_t size = 0;
    while (size < bytes.size()) {
        const ssize_t count = ::read(file.descriptor.get(), bytes.data() + size, bytes.size() - size);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        size += static_cast<std::size_t>(count);
    }
    bytes.resize(size);
    return bytes;
}

bool isBlank(std::string_view text) { return Text::trimmed(text).empty(); }

bool exists(const std::string& path) {
    struct stat attributes {};
    return ::stat(path.c_str(), &attributes) == 0;
}

/// The folders from the one with a root's mark down to `folder`, which is the only one when none has.
std::vector<std::string> foldersFromRoot(const std::string& folder, const std::vector<std::string>& marks) {
    std::vector<std::string> folders;
    for (std::string current = folder;; current = FilePath::parent(current)) {
        folders.push_back(current);
        const auto isMarked = [&](const auto& mark) { return exists(FilePath::joined(current, mark)); };
        if (std::ranges::any_of(marks, isMarked)) break;
        if (current == FilePath::parent(current)) return {folder};
    }
    std::ranges::reverse(folders);
    return folders;
}

/// In the order in which Codex looks for them. Newer versions take no name that leads elsewhere.
std::vector<std::string> fileNames(const CodexConfiguration& configuration) {
    std::vector<std::string> names{overrideName, usualName};
    for (const std::string& configured : configuration.projectDocFallbackFilenames) {
        const std::string name(Text::trimmed(configured));
        const bool isOneName = name.find('/') == std::string::npos && name.find('\0') == std::string::npos;
        if (!name.empty() && isOneName) names.push_back(name);
    }
    return names;
}

/// Goes down the folders with what is left of the limit.
class Chain {
public:
    explicit Chain(CodexInstructions& result) : result_(result), left_(result.limitBytes) {}

    /// Takes the first file of these names, if any. Returns whether the chain goes on.
    bool take(const std::string& folder, const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            const std::string path = FilePath::joined(folder, name);
            const Found found = look(path);
            if (found.kind == failure) return fail(path);
            if (found.kind == regularFile) return take(path, found.byteCount);
        }
        return true;
    }

private:
    bool take(const std::string& path, std::int64_t byteCount) {
        const Found file = open(path);
        const auto text = file.kind == regularFile
                              ? beginning(file, left_ > 0 ? std::min(file.byteCount, left_) : file.byteCount)
                              : std::nullopt;
        if (text) {
            add({path, file.byteCount, 0}, *text);
        } else if (left_ == 0) { // Codex opens none behind the limit, so it does not mind
            result_.files.push_back({path, byteCount, 0});
        } else if (file.kind != nothing) {
            return fail(path);
        }
        return true;
    }

    /// Codex drops what it has read when that is blank, and counts it for nothing.
    void add(CodexInstructions::File file, const std::string& text) {
        const std::int64_t read = std::min(file.byteCount, left_);
        const auto looked = static_cast<std::int64_t>(text.size());
        const bool isBlankAsFarAsRead = looked >= read && isBlank(text);
        if (isBlankAsFarAsRead && looked >= file.byteCount) return;
        if (!isBlankAsFarAsRead) {
            file.readBytes = read;
            left_ -= read;
        }
        result_.files.push_back(std::move(file));
    }

    bool fail(const std::string& path) {
        result_.unreadablePath = path;
        for (CodexInstructions::File& file : result_.files)
            file.readBytes = 0;
        return false;
    }

    CodexInstructions& result_;
    std::int64_t left_;
};

} // namespace

std::int64_t CodexInstructions::totalBytes() const {
    SaturatingSum sum;
    for (const File& file : files)
        sum.add(file.byteCount);
    return sum.value();
}

std::int64_t CodexInstructions::readBytes() const {
    SaturatingSum sum;
    for (const File& file : files)
        sum.add(file.readBytes);
    return sum.value();
}

std::vector<CodexInstructions::File> CodexInstructions::cut() const {
    std::vector<File> list;
    std::ranges::copy_if(files, std::back_inserter(list),
                         [](const File& file) { return file.cutBytes() > 0; });
    return list;
}

CodexInstructions CodexInstructions::find(const std::string& folder,
                                          const CodexConfiguration& configuration) {
    CodexInstructions result;
    result.limitBytes = configuration.projectDocMaxBytes.value_or(defaultLimitBytes);
    const auto marks = configuration.projectRootMarkers.value_or(std::vector<std::string>{".git"});
    const auto names = fileNames(configuration);
    Chain chain(result);
    for (const std::string& each : foldersFromRoot(FilePath::resolved(folder), marks))
        if (!chain.take(each, names)) break;
    return result;
}

std::optional<CodexInstructions::File> CodexInstructions::personal(const std::string& configurationFolder) {
    for (const char* const name : {overrideName, usualName}) {
        const std::string path = FilePath::joined(configurationFolder, name);
        if (look(path).kind != regularFile) continue;
        const Found file = open(path);
        if (file.kind != regularFile) continue;
        const auto text = beginning(file, file.byteCount);
        if (text && !isBlank(*text)) return File{path, file.byteCount, file.byteCount};
    }
    return std::nullopt;
}

} // namespace loadscope
