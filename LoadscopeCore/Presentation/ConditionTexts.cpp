// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/Presentation/ConditionTexts.h"

#include "LoadscopeCore/Platform/Text.h"

#include <optional>

namespace loadscope::ConditionTexts {
namespace {

using Kind = ScanChange::Kind;

std::string word(Kind kind) { return kind == Kind::version ? "version" : "model"; }

std::string changed(const ScanChange& change) {
    return word(change.kind) + " changed: " + Text::visible(change.before) + " → " +
           Text::visible(change.after);
}

} // namespace

std::string label(const ScanChange& change) {
    return change.kind == Kind::version ? Text::visible(change.after) : changed(change);
}

std::string shortLabel(const ScanChange& change) {
    return change.kind == Kind::version ? Text::visible(change.after) : "model changed";
}

std::vector<std::string> lines(const RecordedScan& scan, std::span<const ScanChange> changes) {
    std::vector<std::string> parts;
    const auto add = [&](Kind kind, const std::optional<std::string>& told) {
        if (!told) return;
        parts.push_back(word(kind) + ' ' + Text::visible(*told));
        for (const ScanChange& change : changes)
            if (change.kind == kind) parts.back() = changed(change);
    };
    add(Kind::version, scan.toolVersion);
    add(Kind::model, scan.model);
    if (changes.empty() && parts.size() == 2) return {parts[0] + " · " + parts[1]};
    return parts;
}

} // namespace loadscope::ConditionTexts
