// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/Text.h"
#include "tests/Support/ScopedEnvironment.h"
#include "tests/Support/TemporaryFolder.h"
#include "tests/Support/WaitFor.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <future>
#include <gmock/gmock.h>
#include <limits>
#include <memory>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

/// What nearly every test begins with: the framework and its matchers, the standard library, the folders and
/// the environment of a test, and tables on one line.
using namespace loadscope;
using testing::AllOf, testing::Contains, testing::Each, testing::ElementsAre, testing::EndsWith,
    testing::HasSubstr, testing::IsEmpty, testing::Not, testing::StartsWith, testing::UnorderedElementsAre;

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

/// A literal with every byte that it has, zeros too.
template <std::size_t size>
std::string textOf(const char (&literal)[size]) {
    return {literal, size - 1};
}
inline const std::string& textOf(const std::string& text) { return text; }

/// How a table writes an answer: a text as it is, "yes" or "no", a number with two decimals at most, "none"
/// for nothing, several with a blank between.
inline std::string shown(const std::string& text) { return text; }
inline std::string shown(const char* text) { return text; }
inline std::string shown(std::string_view text) { return std::string(text); }
template <class Number>
requires std::is_arithmetic_v<Number> std::string shown(Number number) {
    if constexpr (std::is_same_v<Number, bool>) return number ? "yes" : "no";
    if constexpr (std::is_integral_v<Number>) return std::to_string(number);
    std::string text = std::to_string(std::round(number * 100) / 100);
    text.erase(std::min(text.find_last_not_of('0') + 1, text.size()));
    return text.ends_with('.') ? text.erase(text.size() - 1) : text;
}
template <class Value>
std::string shown(const std::optional<Value>& value) {
    return value ? shown(*value) : "none";
}
template <class First, class Second, class... More>
std::string shown(const First& first, const Second& second, const More&... more) {
    return shown(first) + " " + shown(second, more...);
}

/// What a function says of each of some items, "; " after each.
template <class Items, class Function>
std::string listed(const Items& items, const Function& function) {
    std::string all;
    for (const auto& item : items)
        all += shown(function(item)) + "; ";
    return all;
}

/// The answers to all of these, one after the other with a blank between.
template <class Function, class... Input>
std::string each(const Function& function, const Input&... inputs) {
    std::string all;
    ((all += (all.empty() ? "" : " ") + shown(function(inputs))), ...);
    return all;
}

/// Of these texts those that the function makes something of; for tables of what is refused.
template <class Function, class... Input>
std::string taken(const Function& function, const Input&... texts) {
    std::string all;
    ((all += function(textOf(texts)) ? "[" + Text::visible(textOf(texts)).substr(0, 80) + "]" : ""), ...);
    return all;
}
