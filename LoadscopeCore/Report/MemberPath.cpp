// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/MemberPath.h"

#include "LoadscopeCore/Platform/FilePath.h"

namespace loadscope::MemberPath {

std::string ofFile(const ScanReport& report, std::string_view written) {
    if (written.empty() || written.find('\0') != std::string_view::npos) return {};
    // Another person's home is not looked up: the system may have to ask a server for it.
    if (written.starts_with('~') && written != "~" && !written.starts_with("~/")) return {};
    const std::string path =
        FilePath::standardized(FilePath::joined(report.repositoryPath, FilePath::tildeExpanded(written)));
    return path.starts_with('/') ? path : std::string();
}

std::string ofMember(const ScanReport& report, const MemberList& list, const CategoryMember& member) {
    const bool isFound =
        member.origin == MemberOrigin::found || member.origin == MemberOrigin::foundNotListed;
    const bool isOfFiles = SlabAttributor::normalize(list.table) ==
                           SlabAttributor::normalize(ContextDetailsParser::memoryFilesTable);
    return isFound || isOfFiles ? ofFile(report, member.name) : std::string();
}

} // namespace loadscope::MemberPath
