// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/CheckPresentation.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Markdown.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/BudgetPresentation.h"
#include "LoadscopeCore/Presentation/InstructionFilesJson.h"

#include <nlohmann/json.hpp>

namespace loadscope::CheckPresentation {
namespace {

using Object = nlohmann::ordered_json;

constexpr int schemaVersion = 1;
constexpr int indent = 2;

std::string grouped(std::int64_t number) { return LocaleFormat::grouped(number); }

/// Shorter below the repository.
std::string shown(const std::string& path, const std::string& repository) {
    const bool isInside = path.starts_with(repository + '/');
    return isInside ? path.substr(repository.size() + 1) : path;
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : ", ") + text;
    return all;
}

Object texts(const std::vector<std::string>& list) {
    Object array = Object::array();
    for (const std::string& text : list)
        array.push_back(Text::repaired(text));
    return array;
}

std::string filesTable(const RepositoryCheck& check) {
    std::vector<std::vector<std::string>> rows;
    for (const InstructionFileTier tier : allInstructionFileTiers)
        for (const InstructionFileEstimate& file : check.files.files(tier))
            rows.push_back({Markdown::name(shown(file.path, check.repositoryPath)), rawValue(tier),
                            grouped(file.byteCount), '~' + grouped(file.estimatedTokens)});
    return Markdown::table({{"File"}, {"Tier"}, {"Bytes", true}, {"Tokens", true}}, rows);
}

} // namespace

std::string headline(const RepositoryCheck& check) {
    SaturatingSum tokens;
    const auto files = check.files.allFiles();
    for (const InstructionFileEstimate& file : files)
        tokens.add(file.estimatedTokens);
    if (files.empty()) return "No instruction files";
    return grouped(static_cast<std::int64_t>(files.size())) +
           (files.size() == 1 ? " instruction file" : " instruction files") + ", about " +
           grouped(tokens.value()) + " tokens by size";
}

std::optional<std::string> codexCutNote(const CodexInstructions& instructions,
                                        const std::string& repository) {
    std::vector<std::string> parts;
    for (const CodexInstructions::File& file : instructions.cut())
        parts.push_back((file.readBytes == 0 ? "all " : "the last ") + grouped(file.cutBytes()) + " of " +
                        shown(file.path, repository));
    if (parts.empty() || instructions.unreadablePath) return std::nullopt;
    return "Codex reads " + grouped(instructions.readBytes()) + " of " + grouped(instructions.totalBytes()) +
           " bytes; " + joined(parts) + " never reach it.";
}

std::vector<std::string> notes(const RepositoryCheck& check) {
    std::vector<std::string> all;
    if (!check.importedFromOutside.empty())
        all.push_back("Imports that lead out of the repository: " + joined(check.importedFromOutside) + '.');
    if (!check.files.unreadablePaths.empty())
        all.push_back("Could not be read: " + joined(check.files.unreadablePaths) + '.');
    if (check.codexInstructions.unreadablePath)
        all.push_back("Codex reads none of the project's instruction files, because one cannot be read: " +
                      *check.codexInstructions.unreadablePath + '.');
    if (auto note = codexCutNote(check.codexInstructions, check.repositoryPath)) all.push_back(*note);
    return all;
}

std::string markdown(const RepositoryCheck& check) {
    const LocaleFormat::EnglishScope english;
    std::string text = "### Instruction files of " + Markdown::name(check.repositoryName) + "\n\n**" +
                       headline(check) + "**\n\n";
    if (const std::string budgets = BudgetPresentation::markdown(check.budgets); !budgets.empty())
        text += budgets + '\n';
    for (const BudgetResult& result : check.budgets)
        if (const auto remark = BudgetPresentation::remark(result))
            text += "> " + Markdown::sentence(*remark) + "\n\n";
    for (const std::string& note : notes(check))
        text += "> " + Markdown::sentence(note) + "\n\n";
    if (const std::string files = filesTable(check); !files.empty())
        text += Markdown::folded("Files", files) + '\n';
    return text + estimateNote + '\n';
}

nlohmann::ordered_json codexInstructions(const CodexInstructions& instructions) {
    Object cut = Object::array();
    for (const CodexInstructions::File& file : instructions.cut())
        cut.push_back(
            {{"path", Text::repaired(file.path)}, {"bytes", file.byteCount}, {"cutBytes", file.cutBytes()}});
    return {{"totalBytes", instructions.totalBytes()},
            {"limitBytes", instructions.limitBytes},
            {"readBytes", instructions.readBytes()},
            {"cut", std::move(cut)},
            {"unreadablePath", instructions.unreadablePath
                                   ? Object(Text::repaired(*instructions.unreadablePath))
                                   : Object(nullptr)}};
}

std::string json(const RepositoryCheck& check) {
    const Object object = {{"schemaVersion", schemaVersion},
                           {"repositoryName", Text::repaired(check.repositoryName)},
                           {"repositoryPath", Text::repaired(check.repositoryPath)},
                           {"files", InstructionFilesJson::byTier(check.files)},
                           {"unreadablePaths", texts(check.files.unreadablePaths)},
                           {"importedFromOutside", texts(check.importedFromOutside)},
                           {"codexInstructions", codexInstructions(check.codexInstructions)},
                           {"budgets", BudgetPresentation::json(check.budgets)}};
    return object.dump(indent);
}

} // namespace loadscope::CheckPresentation
