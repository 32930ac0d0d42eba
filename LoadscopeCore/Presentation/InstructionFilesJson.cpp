// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/InstructionFilesJson.h"

#include "LoadscopeCore/Platform/Text.h"

#include <nlohmann/json.hpp>

namespace loadscope::InstructionFilesJson {

nlohmann::ordered_json byTier(const InstructionFileSet& files, const Reported& reported) {
    using Object = nlohmann::ordered_json;
    Object tiers = Object::object();
    for (const InstructionFileTier tier : allInstructionFileTiers) {
        Object& array = tiers[rawValue(tier)] = Object::array();
        for (const InstructionFileEstimate& file : files.files(tier)) {
            const auto count = reported ? reported(file) : std::nullopt;
            array.push_back({{"path", Text::repaired(file.path)},
                             {"byteCount", file.byteCount},
                             {"estimatedTokens", file.estimatedTokens},
                             {"reportedTokens", count ? Object(*count) : Object(nullptr)}});
        }
    }
    return tiers;
}

} // namespace loadscope::InstructionFilesJson
