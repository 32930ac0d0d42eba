// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexDebugOutput.h"

#include "LoadscopeCore/Platform/Json.h"
#include "LoadscopeCore/Platform/SaturatingSum.h"
#include "LoadscopeCore/Platform/Text.h"

#include <algorithm>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <utility>

namespace loadscope::CodexDebugOutput {
namespace {

constexpr std::size_t longestName = 80;

const std::string* textOf(const Json::Value* value) {
    return value ? value->get_ptr<const std::string*>() : nullptr;
}

const Json::Value* arrayMember(const Json::Value& object, std::string_view key) {
    const Json::Value* const value = Json::member(object, key);
    return value && value->is_array() ? value : nullptr;
}

std::optional<Model> modelOf(const Json::Value& entry) {
    const std::string* const name = textOf(Json::member(entry, "slug"));
    if (!name || name->empty() || loadscope::Text::characterCount(*name) > longestName) return std::nullopt;
    Model model{.name = *name, .contextWindow = Json::integral(Json::member(entry, "context_window"))};
    if (model.contextWindow && *model.contextWindow < 1) model.contextWindow.reset();
    if (const auto* prompt = textOf(Json::member(entry, "base_instructions")))
        model.systemPrompt = TextMark::of(*prompt);
    return model;
}

CodexItemKind kindByBeginning(std::string_view text) {
    static constexpr std::array<std::pair<std::string_view, CodexItemKind>, 4> beginnings{{
        {"<skills_instructions>", CodexItemKind::skills},
        {"<permissions instructions>", CodexItemKind::permissions},
        {"# AGENTS.md instructions", CodexItemKind::instructions},
        {"<environment_context>", CodexItemKind::environment},
    }};
    for (const auto& [beginning, kind] : beginnings)
        if (text.starts_with(beginning)) return kind;
    return CodexItemKind::other;
}

/// What newer versions say themselves of the text at an index of a message.
bool isSaidToBeSystemPrompt(const Json::Value& message, std::size_t index) {
    const Json::Value* const passthrough =
        Json::objectMember(message, "internal_chat_message_metadata_passthrough");
    const Json::Value* const kinds = passthrough ? arrayMember(*passthrough, "content_item_kinds") : nullptr;
    return kinds && index < kinds->size() && (*kinds)[index] == "model.base_instructions";
}

void addTexts(const Json::Value& message, std::string_view prompt, std::vector<Text>& texts) {
    const Json::Value* const content = arrayMember(message, "content");
    for (std::size_t i = 0; content && i < content->size(); ++i) {
        const std::string* const text = textOf(Json::member((*content)[i], "text"));
        if (!text || text->empty()) continue;
        CodexItemKind kind = *text == prompt ? CodexItemKind::prompt : kindByBeginning(*text);
        if (isSaidToBeSystemPrompt(message, i)) kind = CodexItemKind::systemPrompt;
        texts.push_back({kind, TextMark::of(*text)});
    }
}

/// The definitions of tools as one text.
void addTools(const Json::Value& item, std::vector<Text>& texts) {
    const Json::Value* const tools = arrayMember(item, "tools");
    if (!tools || tools->empty()) return;
    const std::string text = tools->dump(-1, ' ', false, Json::Value::error_handler_t::replace);
    texts.push_back({CodexItemKind::tools, TextMark::of(text)});
}

bool hasPrompt(const Model& model, const TextMark& mark) {
    return mark.byteCount > 0 && model.systemPrompt == mark;
}

/// The models whose system prompt is among the texts.
std::vector<const Model*> modelsInInput(const std::vector<Text>& input, const std::vector<Model>& models) {
    std::vector<const Model*> found;
    for (const Model& model : models)
        if (std::ranges::any_of(input, [&](const Text& text) { return hasPrompt(model, text.mark); }))
            found.push_back(&model);
    return found;
}

/// The model of the session: by its name, unless the input holds the system prompt of others.
const Model* modelOfSession(const std::vector<const Model*>& inInput, const std::vector<Model>& models,
                            const std::optional<std::string>& name) {
    const auto isNamed = [&](const Model& model) { return model.name == name; };
    for (const Model* model : inInput)
        if (isNamed(*model)) return model;
    if (!inInput.empty()) return inInput.size() == 1 ? inInput.front() : nullptr;
    const auto found = std::ranges::find_if(models, isNamed);
    return found == models.end() ? nullptr : &*found;
}

/// The window on which all of them agree.
std::optional<std::int64_t> commonWindow(const std::vector<const Model*>& models) {
    const auto isOther = [&](const Model* model) {
        return model->contextWindow != models.front()->contextWindow;
    };
    return models.empty() || std::ranges::any_of(models, isOther) ? std::nullopt
                                                                  : models.front()->contextWindow;
}

} // namespace

TextMark TextMark::of(std::string_view text) {
    return {static_cast<std::int64_t>(text.size()), std::hash<std::string_view>()(text)};
}

std::vector<Model> models(std::string_view json) {
    std::vector<Model> list;
    const auto object = Json::parseObject(json);
    const Json::Value* const entries = object ? arrayMember(*object, "models") : nullptr;
    for (std::size_t i = 0; entries && i < entries->size(); ++i)
        if (auto model = modelOf((*entries)[i])) list.push_back(std::move(*model));
    return list;
}

std::optional<std::vector<Text>> promptInput(std::string_view json, std::string_view prompt) {
    const auto items = Json::parse(loadscope::Text::trimmed(json));
    if (!items || !items->is_array()) return std::nullopt;
    std::vector<Text> texts;
    for (const Json::Value& item : *items) {
        addTexts(item, prompt, texts);
        addTools(item, texts);
    }
    const auto isPrompt = [](const Text& text) { return text.kind == CodexItemKind::prompt; };
    if (std::ranges::all_of(texts, isPrompt)) return std::nullopt;
    return texts;
}

CodexItems items(const std::vector<Text>& input, const std::vector<Model>& models, const Session& session) {
    const auto inInput = modelsInInput(input, models);
    const Model* const model = modelOfSession(inInput, models, session.model);
    std::map<CodexItemKind, SaturatingSum> sizes;
    for (const Text& text : input) {
        const bool isPrompt =
            std::ranges::any_of(inInput, [&](const Model* each) { return hasPrompt(*each, text.mark); });
        sizes[isPrompt ? CodexItemKind::systemPrompt : text.kind].add(text.mark.byteCount);
    }
    if (model && !session.replacesSystemPrompt && !sizes.contains(CodexItemKind::systemPrompt))
        sizes[CodexItemKind::systemPrompt].add(model->systemPrompt.byteCount);

    CodexItems result;
    for (const auto& [kind, size] : sizes)
        if (size.value() > 0) result.items.push_back({kind, size.value()});
    if (model)
        result.model = model->name;
    else if (inInput.empty()) // nothing speaks against it
        result.model = session.model;
    result.contextWindow = model ? model->contextWindow : commonWindow(inInput);
    return result;
}

} // namespace loadscope::CodexDebugOutput
