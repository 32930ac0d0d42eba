// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

/// Whole-file reading and writing that survives crashes, full disks and files that are not files. Nothing
/// here throws.
namespace loadscope::AtomicFile {

/// Contents of a regular file of at most `limit` bytes; nothing when it is missing, not a regular file,
/// larger or unreadable. Never blocks on a FIFO or a device.
[[nodiscard]] std::optional<std::string> read(const std::string& path, std::size_t limit);

/// Replaces the file by `bytes`: a temporary file in the same folder, readable by its owner only, flushed to
/// disk and moved into place, then the folder flushed. On failure the old file is untouched and no temporary
/// file is left. A symbolic link at `path` stays a link and its target is replaced. Returns whether the file
/// was replaced.
[[nodiscard]] bool write(const std::string& path, std::string_view bytes);

/// `write`, but asks `isWanted` just before the new file is moved into place; its no leaves the old file.
[[nodiscard]] bool write(const std::string& path, std::string_view bytes,
                         const std::function<bool()>& isWanted);

/// Removes the temporary files of writers that died in `folder`, as far as they are at least this old.
void removeAbandoned(const std::string& folder, std::chrono::seconds age);

} // namespace loadscope::AtomicFile
