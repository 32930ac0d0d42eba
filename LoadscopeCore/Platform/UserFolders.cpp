// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Platform/UserFolders.h"

#include "LoadscopeCore/Platform/FilePath.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <string_view>
#include <unistd.h>
#include <vector>

#ifdef __APPLE__
#include <climits>
#include <crt_externs.h>
#endif

namespace loadscope {

namespace {

char** environmentBlock() {
#ifdef __APPLE__
    return *_NSGetEnviron();
#else
    return environ;
#endif
}

std::string withoutTrailingSeparators(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

/// The value of a variable that must hold an absolute path; relative ones are no answer.
std::optional<std::string> folderVariable(const char* name) {
    const char* const value = std::getenv(name);
    if (value == nullptr || *value != '/') return std::nullopt;
    return withoutTrailingSeparators(value);
}

struct Account {
    std::string home;
    std::string shell;
};

/// Calls one of the re-entrant look-ups of the password database with a buffer as large as it asks for.
template <typename Lookup>
std::optional<Account> account(Lookup lookup) {
    constexpr std::size_t largest = std::size_t{1} << 20;
    for (std::size_t size = 4096; size <= largest; size *= 4) {
        std::vector<char> buffer(size);
        passwd entry{};
        passwd* found = nullptr;
        int error = 0;
        do {
            error = lookup(&entry, buffer.data(), buffer.size(), &found);
        } while (error == EINTR);
        if (error == ERANGE) continue;
        if (error != 0 || found == nullptr) return std::nullopt;
        const auto text = [](const char* field) { return std::string(field == nullptr ? "" : field); };
        return Account{text(found->pw_dir), text(found->pw_shell)};
    }
    return std::nullopt;
}

std::optional<Account> ownAccount() {
    return account([](passwd* entry, char* buffer, std::size_t size, passwd** found) {
        return ::getpwuid_r(::getuid(), entry, buffer, size, found);
    });
}

} // namespace

Environment UserFolders::environment() {
    Environment result;
    char** const block = environmentBlock();
    for (char** entry = block; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view text = *entry;
        const std::size_t separator = text.find('=');
        if (separator == std::string_view::npos || separator == 0) continue;
        // Of two entries with one name the first counts, as for getenv.
        result.emplace(text.substr(0, separator), text.substr(separator + 1));
    }
    return result;
}

std::string UserFolders::home() {
    if (std::optional<std::string> folder = folderVariable("HOME")) return *folder;
    const std::optional<Account> user = ownAccount();
    return user && user->home.starts_with('/') ? withoutTrailingSeparators(user->home) : "/";
}

std::optional<std::string> UserFolders::homeOfUser(const std::string& name) {
    if (name.empty() || name.find('\0') != std::string::npos) return std::nullopt;
    const std::optional<Account> user =
        account([&](passwd* entry, char* buffer, std::size_t size, passwd** found) {
            return ::getpwnam_r(name.c_str(), entry, buffer, size, found);
        });
    if (!user || !user->home.starts_with('/')) return std::nullopt;
    return withoutTrailingSeparators(user->home);
}

std::string UserFolders::temporary() {
    if (std::optional<std::string> folder = folderVariable("TMPDIR")) return *folder;
#ifdef __APPLE__
    char folder[PATH_MAX];
    const std::size_t size = ::confstr(_CS_DARWIN_USER_TEMP_DIR, folder, sizeof folder);
    if (size > 0 && size <= sizeof folder) return withoutTrailingSeparators(folder);
#endif
    return "/tmp";
}

std::optional<std::string> UserFolders::applicationSupport() {
#ifdef __APPLE__
    const char* const belowHome = "Library/Application Support";
#else
    const char* const belowHome = ".local/share";
    if (std::optional<std::string> folder = folderVariable("XDG_DATA_HOME")) return folder;
#endif
    const std::string folder = home();
    if (folder == "/") return std::nullopt;
    return FilePath::joined(folder, belowHome);
}

std::string UserFolders::current() {
    constexpr std::size_t largest = std::size_t{1} << 20;
    for (std::size_t size = 4096; size <= largest; size *= 4) {
        std::string buffer(size, '\0');
        if (::getcwd(buffer.data(), buffer.size()) != nullptr) {
            buffer.resize(buffer.find('\0'));
            // A folder outside of the process's root has no absolute path.
            return buffer.starts_with('/') ? buffer : "/";
        }
        if (errno != ERANGE) break;
    }
    return "/";
}

std::optional<std::string> UserFolders::passwordDatabaseShell() {
    std::optional<Account> user = ownAccount();
    if (!user || user->shell.empty()) return std::nullopt;
    return std::move(user->shell);
}

} // namespace loadscope
