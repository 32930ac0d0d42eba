// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/MemberPath.h"

#include "LoadscopeCore/Platform/FilePath.h"

#include <gtest/gtest.h>

namespace loadscope {
namespace {

TEST(MemberPath, IsAbsoluteOrNone) {
    ScanReport report;
    report.repositoryPath = "/src/app";
    const std::string home = FilePath::standardized(FilePath::tildeExpanded("~"));
    const struct {
        std::string written;
        std::string path;
    } cases[] = {
        {"/etc/CLAUDE.md", "/etc/CLAUDE.md"},
        {"CLAUDE.md", "/src/app/CLAUDE.md"},
        {"../CLAUDE.md", "/src/CLAUDE.md"},
        {"~/.claude/CLAUDE.md", home + "/.claude/CLAUDE.md"},
        {"~root/CLAUDE.md", ""},
        {"", ""},
        {std::string("a\0.md", 5), ""},
    };
    for (const auto& entry : cases)
        EXPECT_EQ(MemberPath::ofFile(report, entry.written), entry.path) << entry.written;

    const MemberList files{"Memory files", {}};
    const MemberList tools{"MCP Tools", {}};
    const CategoryMember listed{"CLAUDE.md", 5};
    EXPECT_EQ(MemberPath::ofMember(report, files, listed), "/src/app/CLAUDE.md");
    EXPECT_EQ(MemberPath::ofMember(report, tools, listed), "") << "a tool of that name is no file";
    EXPECT_EQ(MemberPath::ofMember(report, {}, {"/a/b.md", 5, CountPrecision::about, MemberOrigin::found}),
              "/a/b.md");
}

} // namespace
} // namespace loadscope
