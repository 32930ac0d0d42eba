// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Report/CategoryMembers.h"

#include <string>
#include <string_view>

/// Where the files are that a report names. Pure, but for the home folder that a "~" stands for.
namespace loadscope::MemberPath {

/// The absolute path of an instruction file as the tool or the scan wrote it: it may begin with "~" or be
/// relative to the repository. Empty when nothing on a disk can be called so.
[[nodiscard]] std::string ofFile(const ScanReport& report, std::string_view written);

/// The file that a member is; empty for tools, skills, agents and whatever else has no file of its own.
[[nodiscard]] std::string ofMember(const ScanReport& report, const MemberList& list,
                                   const CategoryMember& member);

} // namespace loadscope::MemberPath
