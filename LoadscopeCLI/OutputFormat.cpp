// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCLI/OutputFormat.h"

#include <CLI/CLI.hpp>
#include <array>
#include <map>

namespace loadscope {
namespace {

std::string nameOf(OutputFormat format) {
    constexpr std::array names{"text", "markdown", "json", "junit"};
    return names.at(static_cast<std::size_t>(format));
}

} // namespace

void addFormatOption(CLI::App& command, OutputFormat& format, const std::vector<OutputFormat>& formats,
                     bool withFlag) {
    std::map<std::string, OutputFormat> known;
    std::string list;
    for (const OutputFormat one : formats) {
        known[nameOf(one)] = one;
        if (one != formats.front()) list += one == formats.back() ? " or " : ", ";
        list += nameOf(one) + (one == formats.front() ? " (the default)" : "");
    }
    CLI::Option* option = command.add_option("--format", format, list)
                              ->option_text("FORMAT")
                              ->transform(CLI::CheckedTransformer(known).description(""));
    if (!withFlag) return;
    command
        .add_flag_callback(
            "--json", [&format] { format = OutputFormat::json; }, "Print one JSON object")
        ->excludes(option);
}

} // namespace loadscope
