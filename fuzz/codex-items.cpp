// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/CodexProbe/CodexDebugOutput.h"
#include "fuzz/FuzzInput.h"

#include <set>

using namespace loadscope;

/// Whatever the two commands print, each item is of a size and stands once, and no window is below 1. The
/// first line is taken for the list of models, the others for the input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text = fuzzInput(bytes, size);
    const std::size_t half = text.find('\n');
    const auto models = CodexDebugOutput::models(text.substr(0, half));
    for (const CodexDebugOutput::Model& model : models)
        require(!model.name.empty() && model.contextWindow.value_or(1) > 0);
    const std::string_view rest = half == std::string_view::npos ? std::string_view() : text.substr(half);
    const auto input = CodexDebugOutput::promptInput(rest, "OK");
    if (!input) return 0;
    for (const std::optional<std::string>& name :
         {std::optional<std::string>(), std::optional<std::string>("a")}) {
        const CodexItems items = CodexDebugOutput::items(*input, models, {name, false});
        std::set<CodexItemKind> kinds;
        for (const CodexItem& item : items.items)
            require(item.byteCount > 0 && kinds.insert(item.kind).second);
        require(items.contextWindow.value_or(1) > 0);
        require(items.areTold());
    }
    return 0;
}
