# SPDX-FileCopyrightText: The Loadscope authors
# SPDX-License-Identifier: MIT
#
# Sourced by `run` and `test`: installs what is missing and builds the release preset.
# shellcheck shell=bash

packages=(
    cmake ninja-build g++ libicu-dev nlohmann-json3-dev libcli11-dev libtomlplusplus-dev libfast-float-dev libgtest-dev
    libgmock-dev qt6-base-dev qt6-svg-dev libfontconfig-dev fonts-inter fonts-noto-core
)

say() { printf '==> %s\n' "$*" >&2; }

install_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "This is not Debian: taking it that CMake 3.25, Ninja, a C++20 compiler and the libraries are there."
        return
    fi
    local package missing=() as_root=()
    for package in "${packages[@]}"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    if ((EUID != 0)); then
        if ! command -v sudo >/dev/null; then
            say "Please install these packages as root, then start again: ${missing[*]}"
            exit 1
        fi
        as_root=(sudo)
    fi
    say "Installing with apt-get: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -q &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qy --no-install-recommends \
            "${missing[@]}"; } >"$log" 2>&1 </dev/null; then
        tail -n 30 "$log" >&2
        say "apt-get could not install them."
        rm -f "$log"
        exit 1
    fi
    rm -f "$log"
}

# build_release: quiet when nothing changed; everything goes to standard error.
build_release() {
    install_packages
    [[ -f build/release/build.ninja ]] || say "Configuring build/release"
    local log
    log=$(cmake --preset release 2>&1) || {
        printf '%s\n' "$log" >&2
        exit 1
    }
    say "Building build/release (the first time takes some minutes)"
    cmake --build --preset release "$@" >&2
}
