// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ExclusiveMove.h"

#include <cerrno>
#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <fcntl.h>
#endif

namespace loadscope {
namespace {

/// The system's own exclusive rename; its result and errno.
int renameExclusively(const char* from, const char* to) {
#if defined(__linux__)
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
#elif defined(__APPLE__)
    return renamex_np(from, to, RENAME_EXCL);
#else
    static_cast<void>(from), static_cast<void>(to);
    errno = ENOSYS;
    return -1;
#endif
}

/// For file systems without an exclusive rename: a second name, then the first one goes.
MoveOutcome moveByLinking(const char* from, const char* to) {
    if (link(from, to) == 0) {
        if (unlink(from) == 0) return MoveOutcome::moved;
        unlink(to);
        return MoveOutcome::failed;
    }
    if (errno == EEXIST) return MoveOutcome::targetExists;
    // Folders have no second names, and some file systems know none at all.
    struct stat status {};
    if (lstat(to, &status) == 0) return MoveOutcome::targetExists;
    return errno == ENOENT && rename(from, to) == 0 ? MoveOutcome::moved : MoveOutcome::failed;
}

} // namespace

MoveOutcome moveWithoutReplacing(const std::string& from, const std::string& to) {
    if (renameExclusively(from.c_str(), to.c_str()) == 0) return MoveOutcome::moved;
    if (errno == EEXIST) return MoveOutcome::targetExists;
    if (errno != EINVAL && errno != ENOSYS && errno != ENOTSUP) return MoveOutcome::failed;
    return moveByLinking(from.c_str(), to.c_str());
}

} // namespace loadscope
