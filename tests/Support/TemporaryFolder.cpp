// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/Support/TemporaryFolder.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace loadscope {

namespace {

namespace fs = std::filesystem;

/// Gives back the rights that a test took from folders, so that an ordinary user can remove them.
void unlockFolders(const fs::path& folder) {
    std::error_code error;
    fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add, error);
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
        if (entry.is_directory(error) && !entry.is_symlink(error)) unlockFolders(entry.path());
    }
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::error_code error;
    const fs::path base = fs::canonical(fs::temp_directory_path(error), error);
    path_ = (base / "loadscope-test-XXXXXX").string();
    if (::mkdtemp(path_.data()) == nullptr || ::chmod(path_.c_str(), 0755) != 0) {
        std::perror("temporary folder");
        std::abort();
    }
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code error;
    fs::remove_all(path_, error);
    if (!error) return;
    unlockFolders(path_);
    fs::remove_all(path_, error);
}

std::string TemporaryFolder::path(std::string_view name) const { return (fs::path(path_) / name).string(); }

std::string writeFile(const std::string& path, std::string_view bytes) {
    std::error_code error;
    fs::create_directories(fs::path(path).parent_path(), error);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    EXPECT_TRUE(file.good()) << "cannot write " << path;
    return path;
}

std::string writeExecutable(const std::string& path, std::string_view bytes) {
    writeFile(path, bytes);
    EXPECT_EQ(::chmod(path.c_str(), 0755), 0) << path;
    return path;
}

std::string makeFolder(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    EXPECT_FALSE(error) << "cannot make " << path << ": " << error.message();
    return path;
}

std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << "cannot read " << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

bool holdsForOrdinaryUser(const std::function<bool()>& check) {
    const pid_t child = ::fork();
    if (child < 0) return false;
    if (child == 0) {
        constexpr unsigned nobody = 65534;
        if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) ::_exit(2);
        ::_exit(check() ? 0 : 1);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace loadscope
