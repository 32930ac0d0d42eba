// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <optional>

namespace loadscope {

enum class AppPage { overview, trends, compare };

inline constexpr std::array allAppPages{AppPage::overview, AppPage::trends, AppPage::compare};

namespace AppPages {

[[nodiscard]] QString title(AppPage page);
/// Key of the page's icon.
[[nodiscard]] QString symbol(AppPage page);
[[nodiscard]] std::optional<AppPage> fromTitle(const QString& title);

} // namespace AppPages
} // namespace loadscope
