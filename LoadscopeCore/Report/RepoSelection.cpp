// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Report/RepoSelection.h"

#include "LoadscopeCore/Platform/FilePath.h"

#include <utility>

namespace loadscope {

RepoSelection::RepoSelection(std::string folder)
    : path(std::move(folder)), displayName(FilePath::lastComponent(path)) {}

RepoSelection::RepoSelection(std::string folder, std::string name)
    : path(std::move(folder)), displayName(std::move(name)) {}

} // namespace loadscope
