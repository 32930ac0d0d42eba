// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Budget/BudgetCheck.h"

#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <string>
#include <vector>

/// How budgets are told. Names come from outside and stay as they are, except in Markdown and XML.
namespace loadscope::BudgetPresentation {

/// The key of the budget file: "maxTokens", "categories.MCP tools", "files.docs/**".
[[nodiscard]] std::string key(const BudgetResult& result);

/// "The total", "Category MCP tools", "Files docs/**" and so on.
[[nodiscard]] std::string subject(const BudgetResult& result);

/// "8,500 tokens", "34,886 bytes", "~1,003 tokens"; a dash where there is no value.
[[nodiscard]] std::string value(const BudgetResult& result);
[[nodiscard]] std::string limit(const BudgetResult& result);

/// "exceeded", "kept", "within rounding" or "nothing to measure".
[[nodiscard]] std::string state(const BudgetResult& result);

/// For an exceeded limit: what, how much, the limit and the largest reasons, in one line.
[[nodiscard]] std::optional<std::string> exceededLine(const BudgetResult& result);

/// Why a limit has no value, or not the whole of it.
[[nodiscard]] std::optional<std::string> remark(const BudgetResult& result);

/// A table; empty without results.
[[nodiscard]] std::string markdown(const std::vector<BudgetResult>& results);

/// An array of {name, limit, value, exceeded, unit, estimated, withinRounding, reasons}.
[[nodiscard]] nlohmann::ordered_json json(const std::vector<BudgetResult>& results);

/// A document of JUnit's form: a test case for each limit; one that has nothing to measure is skipped.
[[nodiscard]] std::string junit(const std::string& repositoryName, const std::vector<BudgetResult>& results);

} // namespace loadscope::BudgetPresentation
