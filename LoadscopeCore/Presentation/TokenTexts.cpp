// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"

namespace loadscope::TokenTexts {

std::string count(std::int64_t tokens) { return count(LocaleFormat::grouped(tokens)); }

std::string count(std::string_view tokens) { return std::string(tokens) + ' ' + unit; }

std::string named(std::string_view name, std::string_view tokens) {
    return std::string(name) + ": " + count(tokens);
}

std::string within(std::string_view whole, std::string_view part) {
    return std::string(whole) + " · " + std::string(part);
}

std::string copyable(std::string_view name, std::string_view number) {
    if (number.empty()) return std::string(name);
    return std::string(name) + '\t' + std::string(number);
}

std::string withShare(std::string_view tokens, std::string_view share) {
    return count(tokens) + ", " + std::string(share);
}

std::string percent(double share) { return LocaleFormat::oneDecimal(share * 100) + "%"; }

} // namespace loadscope::TokenTexts
