// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/CodexJson.h"

#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Presentation/CodexItemsPresentation.h"
#include "LoadscopeCore/Presentation/ScanPresentation.h"

#include <nlohmann/json.hpp>

namespace loadscope::CodexJson {
namespace {

using Object = nlohmann::ordered_json;

template <typename T>
Object orNull(const std::optional<T>& value) {
    return value ? Object(*value) : Object(nullptr);
}

Object textOrNull(const std::optional<std::string>& text) {
    return text ? Object(Text::repaired(*text)) : Object(nullptr);
}

Object items(const CodexItems& all) {
    if (!all.areTold()) return nullptr;
    Object array = Object::array();
    for (const CodexItem& item : all.items)
        array.push_back({{"kind", rawValue(item.kind)},
                         {"bytes", item.byteCount},
                         {"estimatedTokens", item.estimatedTokens()}});
    return array;
}

Object file(const CodexInstructions::File& file) {
    return {{"path", Text::repaired(file.path)}, {"bytes", file.byteCount}, {"readBytes", file.readBytes}};
}

Object instructions(const CodexItems& all) {
    const CodexInstructions& chain = all.instructions;
    Object files = Object::array();
    for (const CodexInstructions::File& each : chain.files)
        files.push_back(file(each));
    return {{"totalBytes", chain.totalBytes()},
            {"limitBytes", chain.limitBytes},
            {"readBytes", chain.readBytes()},
            {"files", files},
            {"unreadablePath", textOrNull(chain.unreadablePath)},
            {"personal", all.personalInstructions ? file(*all.personalInstructions) : Object(nullptr)}};
}

Object measured(const CodexScanOutcome& outcome, const CodexProbeResult& result) {
    Object object = {{"status", "measured"},
                     {"id", result.id ? Object(result.id->text()) : Object(nullptr)},
                     {"total", result.total},
                     {"contextWindow", orNull(result.contextWindow)},
                     {"duration", result.duration},
                     {"toolVersion", textOrNull(result.toolVersion)},
                     {"model", textOrNull(result.model)},
                     {"note", orNull(CodexPresentation::note(outcome))}};
    if (!result.items) return object;
    object["items"] = items(*result.items);
    object["itemsReason"] = result.items->areTold() ? Object(nullptr) : Object(result.items->reason);
    object["rest"] = orNull(result.rest());
    object["instructions"] = instructions(*result.items);
    return object;
}

} // namespace

nlohmann::ordered_json outcome(const CodexScanOutcome& outcome) {
    if (const CodexProbeResult* result = outcome.result()) return measured(outcome, *result);
    return {{"status", "unavailable"}, {"reason", Text::repaired(*outcome.reason())}};
}

nlohmann::ordered_json estimate(const CodexItems& all) {
    return {{"status", "estimated"},
            {"estimatedTokens", all.estimatedTokens()},
            {"contextWindow", orNull(all.contextWindow)},
            {"model", textOrNull(all.model)},
            {"note",
             std::string(CodexItemsPresentation::estimateNote) + ' ' + CodexItemsPresentation::serversNote},
            {"items", items(all)},
            {"instructions", instructions(all)}};
}

} // namespace loadscope::CodexJson
