// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/UserFolders.h"

#include "LoadscopeCore/Platform/FileDescriptor.h"
#include "tests/Support/Testing.h"

#include <fcntl.h>
#include <pwd.h>

namespace {

TEST(UserFolders, TakesOnlyAbsoluteFoldersFromTheEnvironment) {
    const ScopedEnvironment home("HOME", "/home/me//");
    const ScopedEnvironment temporary("TMPDIR", "relative");
    EXPECT_EQ(UserFolders::home(), "/home/me");
    const passwd* const account = ::getpwuid(::getuid());
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
    const ScopedEnvironment data("XDG_DATA_HOME", std::nullopt);
    const ScopedEnvironment homeless("HOME", "/");
    EXPECT_EQ(UserFolders::applicationSupport(), std::nullopt);
#endif
}

TEST(UserFolders, CopiesTheEnvironmentByteForByte) {
    const ScopedEnvironment variable("LOADSCOPE_TEST", "a=b\n\xFF");
    EXPECT_EQ(UserFolders::environment().at("LOADSCOPE_TEST"), "a=b\n\xFF");
}

TEST(FileDescriptor, ClosesWhatItOwnsOnce) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    FileDescriptor second = writing.duplicate();
    EXPECT_NE(::fcntl(second.get(), F_GETFD) & FD_CLOEXEC, 0);
    char byte = 0;
    writing = std::move(second);
    EXPECT_EQ(::write(writing.get(), "x", 1), 1);
    EXPECT_EQ(::fcntl(ends[1], F_GETFD), -1);
    writing.close();
    EXPECT_EQ(::read(reading.get(), &byte, 1), 1);
    EXPECT_EQ(::read(reading.get(), &byte, 1), 0) << "a writing end is still open";
    EXPECT_FALSE(writing.duplicate().isOpen());
}

} // namespace
