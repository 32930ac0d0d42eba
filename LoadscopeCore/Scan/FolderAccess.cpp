// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Scan/FolderAccess.h"

#include <filesystem>
#include <system_error>

namespace loadscope::FolderAccess {

std::optional<ProbeError> check(const std::string& repository) {
    std::error_code error;
    std::filesystem::directory_iterator entry(repository, error);
    // Reading to the end finds what opening alone does not: a failing disk or a share that has gone away.
    while (!error && entry != std::filesystem::directory_iterator())
        entry.increment(error);
    if (!error) return {};
    return ProbeError(ProbeError::RepositoryUnreadable{repository});
}

} // namespace loadscope::FolderAccess
