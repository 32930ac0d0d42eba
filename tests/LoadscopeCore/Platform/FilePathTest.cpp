// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/FilePath.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "LoadscopeCore/Platform/UserFolders.h"
#include "tests/Support/Testing.h"

#include <fcntl.h>
#include <pwd.h>

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(FilePath, CalculatesWithoutTouchingFiles) {
    EXPECT_EQ(each(FilePath::standardized, "/", "//a//b/./c/", "/a/../../b/..", "a/../..", "../../a", "./",
                   "/a/...", "/a/", "/a/./b", "/a//b", "a", "a/.."),
              "/ /a/b/c / .. ../../a . /a/... /a /a/b /a/b a .");
    EXPECT_EQ(each(FilePath::lastComponent, "/src/app/", "app", "//", "/"), "app app / /");
    EXPECT_EQ(each(FilePath::parent, "/src/app//", "/src", "/", "//src//app", "a/b"), "/src / / //src a");
    EXPECT_EQ(FilePath::standardized("") + FilePath::lastComponent("") + FilePath::parent("app"), "");
    const auto joined = [](const char* base) { return FilePath::joined(base, "b/c"); };
    EXPECT_EQ(each(joined, "/a", "/a//", "/", ""), "/a/b/c /a/b/c /b/c b/c");
    EXPECT_EQ(FilePath::joined("/a", "/b") + " " + FilePath::joined("/a/", ""), "/b /a/");
}

TEST(FilePath, ExpandsOnlyALeadingTilde) {
    const ScopedEnvironment home("HOME", "/home/me/");
    const std::string root = UserFolders::homeOfUser("root").value_or("~root");
    EXPECT_EQ(
        each(FilePath::tildeExpanded, "~", "~/", "~//x/", "/~", "a~", "~root/x", "~no-such-user/x", "~root"),
        "/home/me /home/me /home/me/x/ /~ a~ " + root + "/x ~no-such-user/x " + root);
    EXPECT_EQ(FilePath::tildeExpanded(""), "");
    EXPECT_EQ(taken(UserFolders::homeOfUser, "", "root\0", "no-such-user"), "");
}

TEST(FilePath, ReplacesLinksByTheirTargets) {
    const TemporaryFolder folder;
    const std::string& root = folder.path();
    makeFolder(root + "/real/inner");
    makeFolder(root + "/links");
    const std::string longName(250, 'l');
    Pairs links = {{"../real", "links/relative"},
                   {root + "/real", "links/absolute"},
                   {"relative/inner/..", "links/up"},
                   {"missing/x", "links/dangling"},
                   {"loop-b", "links/loop-a"},
                   {"loop-a", "links/loop-b"},
                   {"grow/x/y", "links/grow"},
                   {longName + "/" + longName, "links/long"},
                   {"real", "40"}};
    for (int count = 39; count >= 0; --count)
        links.emplace_back(std::to_string(count + 1), std::to_string(count));
    for (const auto& [target, link] : links)
        ASSERT_EQ(::symlink(target.c_str(), (root + "/" + link).c_str()), 0);
    const Pairs cases = {{"/links/relative/inner", "/real/inner"},
                         {"/links/absolute/", "/real"},
                         {"/links/up/inner", "/real/inner"},
                         {"/links/relative/missing/./x", "/real/missing/x"},
                         {"/links/dangling/z", "/links/missing/x/z"},
                         {"/links/loop-a/z", "/links/loop-a/z"},
                         {"/links/grow/z", "/links/grow/z"},
                         {"/links/relative/../up", "/real"},
                         {"/links/long", "/links/" + longName + "/" + longName},
                         {"/1/x", "/real/x"},
                         {"/0/x", "/0/x"}};
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(FilePath::resolved(root + path), root + expected) << path;
    EXPECT_EQ(FilePath::resolved("") + FilePath::resolved("/../"), "/");
    EXPECT_EQ(FilePath::resolved("x"), UserFolders::current() + "/x");
    EXPECT_EQ(FilePath::linkTarget(root + "/40" + textOf("\0")), std::nullopt);
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

TEST(FilePath, MakesPiecesOfNamesThatEverySystemTakes) {
    const auto days = [](int count) {
        std::string text = "a";
        for (int day = 0; day < count; ++day)
            text += "日";
        return text;
    };
    const std::pair<std::string, std::string> cases[] = {
        {"web-app", "web-app"},
        {"..", ".."},
        {"a/b\\c:d*e?f\"g<h>i|j", "a-b-c-d-e-f-g-h-i-j"},
        {"two\nlines\x1b", "two-nlines-x1b"},
        {"\xff", "-xff"},
        {std::string(300, 'a'), std::string(120, 'a')},
        {days(100), days(39)},
    };
    for (const auto& [text, piece] : cases)
        EXPECT_EQ(FilePath::namePiece(text), piece);
}

TEST(UserFolders, TakesOnlyAbsoluteFoldersFromTheEnvironment) {
    const ScopedEnvironment home("HOME", "/home/me//"), temporary("TMPDIR", "relative");
    EXPECT_EQ(UserFolders::home(), "/home/me");
    const passwd* const account = ::getpwuid(::getuid());
    EXPECT_EQ(UserFolders::passwordDatabaseShell(),
              account == nullptr ? std::nullopt : std::optional(account->pw_shell));
    const std::string ownHome = account == nullptr ? "/" : account->pw_dir;
    for (const std::optional<std::string>& value : {std::optional<std::string>(""), {"there"}, {}}) {
        const ScopedEnvironment unusable("HOME", value);
        EXPECT_EQ(UserFolders::home(), ownHome);
    }
#ifndef __APPLE__
    EXPECT_EQ(UserFolders::temporary(), "/tmp");
    for (const std::string value : {"/data/", "data", ""}) {
        const ScopedEnvironment data("XDG_DATA_HOME", value);
        EXPECT_EQ(UserFolders::applicationSupport(), value == "/data/" ? "/data" : "/home/me/.local/share");
    }
    const ScopedEnvironment data("XDG_DATA_HOME", std::nullopt), homeless("HOME", "/");
    EXPECT_EQ(UserFolders::applicationSupport(), std::nullopt);
#endif
    const ScopedEnvironment variable("LOADSCOPE_TEST", "a=b\n\xFF");
    EXPECT_EQ(UserFolders::environment().at("LOADSCOPE_TEST"), "a=b\n\xFF");
}

} // namespace
