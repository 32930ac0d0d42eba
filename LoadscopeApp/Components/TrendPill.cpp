// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Components/TrendPill.h"

#include "LoadscopeCore/Platform/LocaleFormat.h"

namespace loadscope {

TrendPill::TrendPill(std::optional<TrendDirection> trend, std::optional<std::int64_t> delta, QWidget* parent)
    : Pill(lookFor(trend, delta), parent) {}

Pill::Look TrendPill::lookFor(std::optional<TrendDirection> trend, std::optional<std::int64_t> delta) {
    if (!trend || !delta) return {QStringLiteral("First scan"), {}, ThemeColor::secondaryText};
    const QString number = QString::fromStdString(LocaleFormat::grouped(*delta));
    switch (*trend) {
    case TrendDirection::flat:
        return {QStringLiteral("±0"), QStringLiteral("equal"), ThemeColor::secondaryText};
    case TrendDirection::up:
        return {QLatin1Char('+') + number, QStringLiteral("arrow.up.right"), ThemeColor::bandHeavy};
    case TrendDirection::down:
        break;
    }
    return {number, QStringLiteral("arrow.down.right"), ThemeColor::bandLean};
}

} // namespace loadscope
