// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace loadscope {

/// The folder chosen for a scan. Its path is its identity.
struct RepoSelection {
    explicit RepoSelection(const std::string& path);
    RepoSelection(const std::string& path, std::string displayName);

    std::string path;        ///< absolute, without a separator at its end
    std::string displayName; ///< the folder's own name unless given

    [[nodiscard]] const std::string& id() const { return path; }
    bool operator==(const RepoSelection&) const = default;
};

} // namespace loadscope
