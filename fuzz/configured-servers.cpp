// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/ClaudeProbe/ConfiguredServers.h"
#include "LoadscopeCore/Platform/Json.h"
#include "fuzz/FuzzInput.h"

#include <nlohmann/json.hpp>

using namespace loadscope;

/// The names are those that a whole reading of the document finds, and no other text of it comes out.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text = fuzzInput(bytes, size);
    const auto document = Json::parse(text);
    for (const std::string_view project : {"", "/r"}) {
        const std::vector<std::string> names = ConfiguredServers::names(text, project);
        require(names.size() <= ConfiguredServers::mostServers);
        if (!document) continue;
        const Json::Value* object = &*document;
        if (!project.empty()) {
            const Json::Value* const projects = Json::objectMember(*object, "projects");
            object = projects == nullptr ? nullptr : Json::objectMember(*projects, project);
        }
        const Json::Value* const servers =
            object == nullptr ? nullptr : Json::objectMember(*object, "mcpServers");
        // A key that stands twice is read twice; of equal ones the whole reading keeps the last.
        if (servers == nullptr) continue;
        for (const auto& [name, value] : servers->items()) {
            const bool isRead = !name.empty() && name.size() <= ConfiguredServers::longestName;
            require(!isRead || names.empty() || names.size() == ConfiguredServers::mostServers ||
                    std::find(names.begin(), names.end(), name) != names.end());
        }
    }
    return 0;
}
