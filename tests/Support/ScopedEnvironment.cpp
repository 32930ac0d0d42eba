// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tests/Support/ScopedEnvironment.h"

#include <cstdlib>
#include <utility>

namespace loadscope {

namespace {

void set(const std::string& name, const std::optional<std::string>& value) {
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
}

} // namespace

ScopedEnvironment::ScopedEnvironment(std::string name, const std::optional<std::string>& value)
    : name_(std::move(name)) {
    if (const char* const before = std::getenv(name_.c_str())) before_ = before;
    set(name_, value);
}

ScopedEnvironment::~ScopedEnvironment() { set(name_, before_); }

} // namespace loadscope
