// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ConfiguredServers.h"

#include "LoadscopeCore/Platform/AtomicFile.h"
#include "LoadscopeCore/Platform/FilePath.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

namespace loadscope::ConfiguredServers {
namespace {

/// Listens to a JSON document as it is read and keeps the keys of one object in it; values go by unseen.
class KeysOf : public nlohmann::json_sax<nlohmann::json> {
public:
    /// `path` are the keys that lead to the object.
    explicit KeysOf(std::vector<std::string> path) : path_(std::move(path)) {}

    [[nodiscard]] std::vector<std::string> keys() && { return std::move(keys_); }

    bool start_object(std::size_t /*elements*/) override {
        // Entered where each key up to here was the one that leads on.
        if (depth_ == followed_ && depth_ <= path_.size() && (depth_ == 0 || isNext_)) ++followed_;
        isNext_ = false;
        ++depth_;
        return true;
    }

    bool key(string_t& name) override {
        isNext_ = depth_ == followed_ && depth_ <= path_.size() && name == path_[depth_ - 1];
        const bool isInside = depth_ == followed_ && depth_ == path_.size() + 1;
        if (isInside && keys_.size() < mostServers && !name.empty() && name.size() <= longestName)
            keys_.push_back(name);
        return true;
    }

    bool end_object() override { return leave(); }

    bool start_array(std::size_t /*elements*/) override {
        isNext_ = false;
        ++depth_;
        return true;
    }

    bool end_array() override { return leave(); }

    bool null() override { return passed(); }
    bool boolean(bool /*value*/) override { return passed(); }
    bool number_integer(number_integer_t /*value*/) override { return passed(); }
    bool number_unsigned(number_unsigned_t /*value*/) override { return passed(); }
    bool number_float(number_float_t /*value*/, const string_t& /*text*/) override { return passed(); }
    bool string(string_t& /*value*/) override { return passed(); }
    bool binary(binary_t& /*value*/) override { return passed(); }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const nlohmann::detail::exception& /*error*/) override {
        keys_.clear();
        return false;
    }

private:
    bool passed() {
        isNext_ = false;
        return true;
    }

    bool leave() {
        isNext_ = false;
        --depth_;
        followed_ = std::min(followed_, depth_);
        return true;
    }

    std::vector<std::string> path_;
    std::size_t depth_ = 0;    ///< of objects and arrays around the place
    std::size_t followed_ = 0; ///< how many of them, from the outermost, lie on the way to the object
    bool isNext_ = false;      ///< the key just read leads on
    std::vector<std::string> keys_;
};

/// Adds the servers of a settings file.
class Reader {
public:
    void add(const std::string& scope, const std::string& file) { add(scope, file, {}); }

    void add(const std::string& scope, const std::string& file, std::string_view project) {
        const auto text = AtomicFile::read(file, largestFile);
        if (!text) return;
        for (std::string& name : names(*text, project))
            servers_.push_back({scope, std::move(name), file});
    }

    [[nodiscard]] std::vector<ConfiguredServer> servers() && {
        std::vector<ConfiguredServer> once;
        for (ConfiguredServer& server : servers_)
            if (std::ranges::find(once, server) == once.end()) once.push_back(std::move(server));
        return once;
    }

private:
    std::vector<ConfiguredServer> servers_;
};

} // namespace

std::vector<std::string> names(std::string_view text, std::string_view project) {
    std::vector<std::string> path;
    if (!project.empty()) path = {"projects", std::string(project)};
    path.emplace_back("mcpServers");
    KeysOf keys(std::move(path));
    try {
        if (!nlohmann::json::sax_parse(text.begin(), text.end(), &keys)) return {};
    } catch (const std::exception&) { // no memory for a text of it
        return {};
    }
    return std::move(keys).keys();
}

std::vector<ConfiguredServer> read(const std::string& repository, const std::string& home,
                                   const std::string& configFolder) {
    const bool isUsual = configFolder == FilePath::joined(home, ".claude");
    const std::string user = FilePath::joined(isUsual ? home : configFolder, ".claude.json");
    Reader reader;
    reader.add("local", user, repository);
    const std::string resolved = FilePath::resolved(repository);
    if (resolved != repository) reader.add("local", user, resolved);
    reader.add("project", FilePath::joined(repository, ".mcp.json"));
    reader.add("user", user);
    reader.add({}, FilePath::joined(configFolder, "settings.json"));
    reader.add({}, FilePath::joined(repository, ".claude/settings.json"));
    reader.add({}, FilePath::joined(repository, ".claude/settings.local.json"));
    return std::move(reader).servers();
}

std::string normalized(std::string_view name) {
    std::string text(name);
    for (char& character : text) {
        const bool isKept = (character >= 'a' && character <= 'z') ||
                            (character >= 'A' && character <= 'Z') ||
                            (character >= '0' && character <= '9') || character == '_' || character == '-';
        if (!isKept) character = '_';
    }
    return text;
}

} // namespace loadscope::ConfiguredServers
