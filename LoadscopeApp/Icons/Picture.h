// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPixmap>

class QWidget;

namespace loadscope::Picture {

/// How the widget and all in it look now, transparent where they paint nothing. It need not be on screen.
[[nodiscard]] QPixmap of(QWidget& widget);

} // namespace loadscope::Picture
