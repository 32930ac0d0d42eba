// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Instructions/InstructionFileSet.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace loadscope {

/// Finds the instruction files on the real file system: the personal file in the folder of the tool's
/// configuration, the repository's own files and those of the folders above it, with their `@` imports. A
/// file is opened once, only to find its imports, and its contents are never kept. Bounded by the depth of
/// imports, 256 followed imports and 64 folders. Plain value; any number of scans may run at once.
class InstructionFileScanner : public InstructionFileScanning {
public:
    static constexpr int defaultMaxImportDepth = 5;
    static constexpr int maximumFollowedImports = 256;
    static constexpr std::size_t maximumParsedBytes = 4'000'000;
    static constexpr std::size_t maximumOutsideTargets = 256;

    /// The files, and where the imports of the repository's own files lead that do not lead into it, whether
    /// something is there or not: ascending, at most `maximumOutsideTargets`.
    struct FilesAndOutside {
        InstructionFileSet files;
        std::vector<std::string> outside;
    };

    InstructionFileScanner(std::string home, std::string configFolder,
                           int maxImportDepth = defaultMaxImportDepth);

    InstructionFileSet scan(const std::string& repository) override;

    /// `scan` in the same reading of the files, but every import of theirs is looked at, also where a scan
    /// has its fill.
    [[nodiscard]] FilesAndOutside scanWithOutside(const std::string& repository) const;

private:
    std::string home_;
    std::string configFolder_;
    int maxImportDepth_;
};

/// Folders above `repository` up to and including `home`, nearest first; none when it does not lie below it.
[[nodiscard]] std::vector<std::string> ancestorDirectories(const std::string& repository,
                                                           const std::string& home);

/// True when `path` is `root` or lies below it; both are standardized.
[[nodiscard]] bool isUnder(std::string_view path, std::string_view root);

} // namespace loadscope
