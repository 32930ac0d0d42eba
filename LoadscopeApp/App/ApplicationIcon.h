// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

/// The picture of the application in title bars and task lists, for desktops that do not take it from the
/// desktop file.
namespace loadscope::ApplicationIcon {

[[nodiscard]] QIcon load();

} // namespace loadscope::ApplicationIcon
