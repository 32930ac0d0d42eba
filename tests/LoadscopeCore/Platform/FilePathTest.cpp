// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/FilePath.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "tests/Support/Testing.h"

#include <fcntl.h>

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

void expectEach(std::string (*function)(std::string_view), const Pairs& cases) {
    for (const auto& [input, expected] : cases)
        EXPECT_EQ(function(input), expected) << input;
}

TEST(FilePath, CalculatesWithoutTouchingFiles) {
    expectEach(FilePath::standardized, {{"", ""},
                                        {"/", "/"},
                                        {"//a//b/./c/", "/a/b/c"},
                                        {"/a/../../b/..", "/"},
                                        {"a/../..", ".."},
                                        {"../../a", "../../a"},
                                        {"./", "."},
                                        {"/a/...", "/a/..."}});
    expectEach(FilePath::lastComponent, {{"/src/app/", "app"}, {"app", "app"}, {"//", "/"}, {"", ""}});
    expectEach(FilePath::parent,
               {{"/src/app//", "/src"}, {"/src", "/"}, {"/", "/"}, {"//src//app", "//src"}, {"app", ""}});
    const std::vector<std::tuple<const char*, const char*, const char*>> joins = {
        {"/a", "b/c", "/a/b/c"}, {"/a//", "b", "/a/b"}, {"/", "b", "/b"},
        {"/a", "/b", "/b"},      {"", "b", "b"},        {"/a", "", "/a"}};
    for (const auto& [base, name, expected] : joins)
        EXPECT_EQ(FilePath::joined(base, name), expected);
}

TEST(FilePath, ExpandsOnlyALeadingTilde) {
    const ScopedEnvironment home("HOME", "/home/me/");
    const std::string root = UserFolders::homeOfUser("root").value_or("~root");
    expectEach(FilePath::tildeExpanded, {{"~", "/home/me"},
                                         {"~/", "/home/me"},
                                         {"~//x/", "/home/me/x/"},
                                         {"/~", "/~"},
                                         {"a~", "a~"},
                                         {"~root/x", root + "/x"},
                                         {"~no-such-user/x", "~no-such-user/x"},
                                         {"", ""}});
}

TEST(FilePath, ReplacesLinksByTheirTargets) {
    const TemporaryFolder folder;
    const std::string& root = folder.path();
    makeFolder(root + "/real/inner");
    makeFolder(root + "/links");
    const Pairs links = {{"../real", "links/relative"},     {root + "/real", "links/absolute"},
                         {"relative/inner/..", "links/up"}, {"missing/x", "links/dangling"},
                         {"loop-b", "links/loop-a"},        {"loop-a", "links/loop-b"},
                         {"grow/x/y", "links/grow"}};
    for (const auto& [target, link] : links)
        ASSERT_EQ(::symlink(target.c_str(), (root + "/" + link).c_str()), 0);
    const Pairs cases = {
        {"/links/relative/inner", "/real/inner"},    {"/links/absolute/", "/real"},
        {"/links/up/inner", "/real/inner"},          {"/links/relative/missing/./x", "/real/missing/x"},
        {"/links/dangling/z", "/links/missing/x/z"}, {"/links/loop-a/z", "/links/loop-a/z"},
        {"/links/grow/z", "/links/grow/z"},          {"/links/relative/../up", "/real"}};
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(FilePath::resolved(root + path), root + expected) << path;
    EXPECT_EQ(FilePath::resolved(""), "");
    EXPECT_EQ(FilePath::resolved("/../"), "/");
}

TEST(FilePath, ResolvesPathsLongerThanTheSystemTakes) {
    const TemporaryFolder folder;
    const std::string name(200, 'n');
    std::string deep = folder.path();
    FileDescriptor inner(::open(deep.c_str(), O_RDONLY | O_DIRECTORY));
    for (int depth = 0; depth < 30; ++depth) {
        deep += "/" + name;
        ASSERT_EQ(::mkdirat(inner.get(), name.c_str(), 0700), 0);
        inner = FileDescriptor(::openat(inner.get(), name.c_str(), O_RDONLY | O_DIRECTORY));
    }
    ASSERT_EQ(::symlinkat("real", inner.get(), "link"), 0);
    EXPECT_EQ(FilePath::resolved(deep + "/link/x"), deep + "/real/x");
}

TEST(FilePath, CallsOnlyRegularFilesExecutable) {
    const TemporaryFolder folder;
    const std::string tool = writeExecutable(folder.path("tool"), "#!/bin/sh\n");
    const std::string plain = writeFile(folder.path("plain"), "");
    ASSERT_EQ(::symlink("tool", folder.path("link").c_str()), 0);
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0777), 0);
    EXPECT_TRUE(FilePath::isExecutableFile(tool));
    EXPECT_TRUE(FilePath::isExecutableFile(folder.path("link")));
    EXPECT_FALSE(FilePath::isExecutableFile(tool + std::string("\0x", 2)));
    for (const std::string& path : {plain, folder.path(), folder.path("fifo"), folder.path("none")})
        EXPECT_FALSE(FilePath::isExecutableFile(path)) << path;
    if (::geteuid() != 0) return;
    ASSERT_EQ(::chmod(tool.c_str(), 0700), 0);
    EXPECT_FALSE(holdsForOrdinaryUser([&] { return FilePath::isExecutableFile(tool); }));
}

} // namespace
