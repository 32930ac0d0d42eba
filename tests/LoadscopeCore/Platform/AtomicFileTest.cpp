// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/AtomicFile.h"

#include "tests/Support/Testing.h"

namespace {

std::size_t entries(const std::string& folder) {
    const std::filesystem::directory_iterator begin(folder);
    return static_cast<std::size_t>(std::distance(begin, std::filesystem::directory_iterator()));
}

TEST(AtomicFile, ReadsOnlyRegularFilesWithinTheLimit) {
    const TemporaryFolder folder;
    const std::string bytes("a\0b\xFF", 4);
    const std::string file = writeFile(folder.path("file"), bytes);
    ASSERT_EQ(::symlink("file", folder.path("link").c_str()), 0);
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
    EXPECT_EQ(AtomicFile::read(file, 4), bytes);
    EXPECT_EQ(AtomicFile::read(folder.path("link"), SIZE_MAX), bytes);
    EXPECT_EQ(AtomicFile::read(writeFile(folder.path("empty"), ""), 0), "");
    EXPECT_EQ(AtomicFile::read(file, 3), std::nullopt);
    EXPECT_EQ(AtomicFile::read(file + std::string("\0", 1), 9), std::nullopt);
    for (const std::string& path : {folder.path("fifo"), folder.path(), folder.path("none"), file + "/x"})
        EXPECT_EQ(AtomicFile::read(path, 100), std::nullopt) << path;
#ifdef __linux__
    // A file that grows while it is read, as far as its size tells.
    EXPECT_GT(AtomicFile::read("/proc/self/maps", 1 << 20).value_or("").size(), 4096U);
    EXPECT_EQ(AtomicFile::read("/proc/self/maps", 10), std::nullopt);
#endif
    ASSERT_EQ(::truncate(file.c_str(), off_t{1} << 36), 0);
    EXPECT_EQ(AtomicFile::read(file, 1 << 20), std::nullopt);
}

TEST(AtomicFile, ReplacesAFileAndLeavesNothingElse) {
    const TemporaryFolder folder;
    const std::string path = folder.path("file");
    const std::string large(5'000'000, 'x');
    for (const std::string& bytes : {std::string("first"), large, std::string()}) {
        EXPECT_TRUE(AtomicFile::write(path, bytes));
        EXPECT_EQ(readFile(path), bytes);
    }
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    EXPECT_EQ(entries(folder.path()), 1U);
}

TEST(AtomicFile, KeepsSymbolicLinks) {
    const TemporaryFolder folder;
    writeFile(folder.path("data/real"), "old");
    ASSERT_EQ(::symlink("data/second", folder.path("link").c_str()), 0);
    ASSERT_EQ(::symlink("real", folder.path("data/second").c_str()), 0);
    ASSERT_EQ(::symlink("data/new", folder.path("dangling").c_str()), 0);
    ASSERT_EQ(::symlink("loop", folder.path("loop").c_str()), 0);
    EXPECT_TRUE(AtomicFile::write(folder.path("link"), "new"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link")));
    EXPECT_EQ(readFile(folder.path("data/real")), "new");
    EXPECT_TRUE(AtomicFile::write(folder.path("dangling"), "made"));
    EXPECT_EQ(readFile(folder.path("data/new")), "made");
    EXPECT_FALSE(AtomicFile::write(folder.path("loop"), "x"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("loop")));
}

TEST(AtomicFile, FailsWithoutATrace) {
    const TemporaryFolder folder;
    const std::string path = writeFile(folder.path("file"), "old");
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
    makeFolder(folder.path("inner"));
    EXPECT_FALSE(AtomicFile::write(folder.path("none/file"), "x"));
    EXPECT_FALSE(AtomicFile::write(folder.path("inner"), "x"));
    EXPECT_FALSE(AtomicFile::write(folder.path("fifo"), "x"));
    EXPECT_FALSE(AtomicFile::write(path + "/x", "x"));
    // The superuser's folder; for others the child is the same user as this process.
    EXPECT_NE(holdsForOrdinaryUser([&] { return AtomicFile::write(path, "old"); }), ::geteuid() == 0);
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(entries(folder.path()), 3U);
}

TEST(AtomicFile, KeepsTheOldFileWhenTheNewOneDoesNotFit) {
    const TemporaryFolder folder;
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    const std::string path = folder.path("file");
    EXPECT_TRUE(holdsForOrdinaryUser([&] {
        if (!AtomicFile::write(path, "old")) return false;
        const rlimit limit{100'000, 100'000};
        std::signal(SIGXFSZ, SIG_IGN);
        return ::setrlimit(RLIMIT_FSIZE, &limit) == 0 &&
               !AtomicFile::write(path, std::string(200'000, 'x')) &&
               AtomicFile::write(folder.path("small"), "fits");
    }));
    EXPECT_EQ(readFile(path), "old");
    EXPECT_EQ(entries(folder.path()), 2U);
}

} // namespace
