// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexConfiguration.h"

#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <exception>

// Only this file sees the library: it is compiled in, reports errors as values, and refuses deep nesting,
// because a value is destroyed by recursion. Some malformed files break what it takes for certain; that must
// neither end the program nor be built upon, in no kind of build.
namespace {
struct BrokenAssumption : std::exception {};
[[noreturn]] void refuse() { throw BrokenAssumption(); }
} // namespace
#undef NDEBUG
#define TOML_ASSERT(condition) ((condition) ? void() : refuse())
#define TOML_HEADER_ONLY 1
#define TOML_EXCEPTIONS 0
#define TOML_ENABLE_FORMATTERS 0
#define TOML_MAX_NESTED_VALUES 16
#include <toml++/toml.h>

namespace loadscope {
namespace {

/// The library sets no limit to "a.a.a.…", where each part is a table within the one before.
bool mayNestDeeply(std::string_view toml) {
    constexpr std::ptrdiff_t mostDotsInALine = 250;
    while (!toml.empty()) {
        const std::string_view line = toml.substr(0, toml.find('\n'));
        if (std::ranges::count(line, '.') > mostDotsInALine) return true;
        toml.remove_prefix(std::min(line.size() + 1, toml.size()));
    }
    return false;
}

constexpr char mark = '~';
constexpr std::string_view hexDigits = "0123456789ABCDEF";

/// The text with every byte beyond ASCII as the mark and two digits, and the mark too. The library behaves in
/// no defined way when such a character stands where none may; in strings and comments the marks do no harm.
std::string asASCII(std::string_view text) {
    std::string encoded;
    encoded.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x80 && character != mark) {
            encoded += character;
        } else {
            encoded += {mark, hexDigits[byte >> 4], hexDigits[byte & 15]};
        }
    }
    return encoded;
}

/// A value of the text that `asASCII` made, as it was before.
std::string asUTF8(std::string_view value) {
    std::string decoded;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const bool isMarked = value[i] == mark && i + 2 < value.size();
        const auto high = isMarked ? hexDigits.find(value[i + 1]) : std::string_view::npos;
        const auto low = isMarked ? hexDigits.find(value[i + 2]) : std::string_view::npos;
        if (high == std::string_view::npos || low == std::string_view::npos) {
            decoded += value[i];
        } else {
            decoded += static_cast<char>(high << 4 | low);
            i += 2;
        }
    }
    return decoded;
}

/// A string of the library, when the node is one that is not empty.
std::optional<std::string> textOf(const toml::node* node) {
    const auto value = node ? node->value_exact<std::string_view>() : std::nullopt;
    if (!value || value->empty()) return std::nullopt;
    std::string text = asUTF8(*value);
    return Text::isValidUTF8(text) ? std::optional(std::move(text)) : std::nullopt;
}

/// Looks a key up in the profile in use, then at the top level.
class Settings {
public:
    explicit Settings(const toml::table& top) : top_(top) {
        const auto name = text("profile");
        const toml::table* const profiles = top["profiles"].as_table();
        const toml::node* const profile = name && profiles ? profiles->get(asASCII(*name)) : nullptr;
        if (profile) profile_ = profile->as_table();
    }

    [[nodiscard]] std::optional<std::string> text(std::string_view key) const { return textOf(find(key)); }

    [[nodiscard]] std::optional<std::int64_t> number(std::string_view key, std::int64_t least) const {
        const toml::node* const node = find(key);
        const auto value = node ? node->value_exact<std::int64_t>() : std::nullopt;
        return value && *value >= least ? value : std::nullopt;
    }

    [[nodiscard]] std::optional<std::vector<std::string>> texts(std::string_view key) const {
        const toml::node* const node = find(key);
        const toml::array* const array = node ? node->as_array() : nullptr;
        if (!array) return std::nullopt;
        std::vector<std::string> values;
        for (std::size_t i = 0; i < array->size(); ++i)
            if (auto value = textOf(array->get(i))) values.push_back(std::move(*value));
        return values;
    }

private:
    [[nodiscard]] const toml::node* find(std::string_view key) const {
        const toml::node* const own = profile_ ? profile_->get(key) : nullptr;
        return own ? own : top_.get(key);
    }

    const toml::table& top_;
    const toml::table* profile_ = nullptr;
};

CodexConfiguration parsed(std::string_view toml) {
    constexpr std::string_view byteOrderMark = "\xef\xbb\xbf";
    if (toml.starts_with(byteOrderMark)) toml.remove_prefix(byteOrderMark.size());
    if (!Text::isValidUTF8(toml) || mayNestDeeply(toml)) return {};
    const toml::parse_result result = toml::parse(asASCII(toml));
    if (!result) return {};
    const Settings settings(result.table());
    const std::vector<std::string> noTexts;
    return {.model = settings.text("model"),
            .modelContextWindow = settings.number("model_context_window", 1),
            .modelProvider = settings.text("model_provider"),
            .projectDocMaxBytes = settings.number("project_doc_max_bytes", 0),
            .projectDocFallbackFilenames = settings.texts("project_doc_fallback_filenames").value_or(noTexts),
            .profile = settings.text("profile"),
            .projectRootMarkers = settings.texts("project_root_markers"),
            .replacesSystemPrompt = settings.text("model_instructions_file") ||
                                    settings.text("experimental_instructions_file") ||
                                    settings.text("instructions")};
}

} // namespace

CodexConfiguration CodexConfiguration::parse(std::string_view toml) {
    try {
        return parsed(toml);
    } catch (const std::exception&) { // a broken assumption, no memory
        return {};
    }
}

CodexConfiguration CodexConfiguration::read(const std::string& path) {
    const auto text = AtomicFile::read(path, maximumBytes);
    return text ? parse(*text) : CodexConfiguration();
}

std::optional<std::string> CodexConfiguration::folder(const Environment& environment,
                                                      const std::string& home) {
    const auto folder = environment.find("CODEX_HOME");
    if (folder == environment.end() || folder->second.empty()) return FilePath::joined(home, ".codex");
    if (!folder->second.starts_with('/')) return std::nullopt;
    return folder->second;
}

std::optional<std::string> CodexConfiguration::folderForUser() {
    return folder(UserFolders::environment(), UserFolders::home());
}

std::optional<std::string> CodexConfiguration::path(const Environment& environment, const std::string& home) {
    const auto in = folder(environment, home);
    return in ? std::optional(FilePath::joined(*in, "config.toml")) : std::nullopt;
}

CodexConfiguration CodexConfiguration::forUser() {
    const auto file = path(UserFolders::environment(), UserFolders::home());
    return file ? read(*file) : CodexConfiguration();
}

} // namespace loadscope
