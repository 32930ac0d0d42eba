// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
//
// The C library had no functions for the state of a file before glibc 2.33: each program got its own, and those that the
// cross compiler brings set another `errno` than the program sees. A file that is missing then looks like an error that
// cannot happen. These ask the kernel, whose structure is the library's on 64-bit machines.
#define _GNU_SOURCE
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

int fstatat(int folder, const char* restrict path, struct stat* restrict status, int flags) {
    return (int)syscall(SYS_newfstatat, folder, path, status, flags);
}

int stat(const char* restrict path, struct stat* restrict status) { return fstatat(AT_FDCWD, path, status, 0); }

int lstat(const char* restrict path, struct stat* restrict status) {
    return fstatat(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}

int fstat(int descriptor, struct stat* status) { return (int)syscall(SYS_fstat, descriptor, status); }
