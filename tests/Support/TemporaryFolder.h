// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace loadscope {

/// A new, empty folder that everyone may enter. It and all that was put into it are gone when the object is.
/// Its path is absolute and holds no symbolic link. A folder that cannot be made ends the test program.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

    /// The path of `name` in the folder.
    [[nodiscard]] std::string path(std::string_view name) const;

private:
    std::string path_;
};

/// Writes a file with these bytes and its missing folders; returns the path. Fails the test when it cannot.
std::string writeFile(const std::string& path, std::string_view bytes);

/// `writeFile`, then lets everyone execute the file.
std::string writeExecutable(const std::string& path, std::string_view bytes);

/// Makes the folder and its missing parents; returns the path.
std::string makeFolder(const std::string& path);

/// The bytes of a file; a missing file fails the test and gives an empty text.
[[nodiscard]] std::string readFile(const std::string& path);

/// Runs `check` in a child process that has no more rights than an ordinary user, since the superuser passes
/// every permission test. Returns what it returned; false, too, when it crashed or the child failed to start.
[[nodiscard]] bool holdsForOrdinaryUser(const std::function<bool()>& check);

} // namespace loadscope
