// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/ThemeColor.h"

#include <QWidget>

#include <cstdint>
#include <optional>

namespace loadscope {

/// One row of a list of scans: a rank, a title over a detail, an accessory and a number over its caption.
class HistoryRow : public QWidget {
    Q_OBJECT

public:
    struct Content {
        std::optional<int> rank;
        QString title;
        QString detail;
        std::int64_t value = 0;
        std::optional<ThemeColor> valueTint;
        QString valueCaption;
    };

    /// Takes over `accessory`, which may be null.
    HistoryRow(const Content& content, QWidget* accessory, QWidget* parent = nullptr);
};

} // namespace loadscope
