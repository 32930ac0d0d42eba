// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Window/AppPage.h"

namespace loadscope::AppPages {

QString title(AppPage page) {
    switch (page) {
    case AppPage::overview:
        return QStringLiteral("Overview");
    case AppPage::trends:
        return QStringLiteral("Trends");
    case AppPage::compare:
        break;
    }
    return QStringLiteral("Compare");
}

QString symbol(AppPage page) {
    switch (page) {
    case AppPage::overview:
        return QStringLiteral("square.grid.2x2");
    case AppPage::trends:
        return QStringLiteral("chart.line.uptrend.xyaxis");
    case AppPage::compare:
        break;
    }
    return QStringLiteral("rectangle.split.2x1");
}

std::optional<AppPage> fromTitle(const QString& title) {
    for (const AppPage page : allAppPages) {
        if (AppPages::title(page) == title) return page;
    }
    return {};
}

} // namespace loadscope::AppPages
