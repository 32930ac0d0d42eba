// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/LineBreaker.h"

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace loadscope::testing {
namespace {

TEST(LineBreaker, BreaksAtWordsAndAnywhereWhereAWordIsTooLong) {
    const LineBreaker breaker(AppTheme::current().font(TextStyle::body));
    struct Case {
        QString widest; ///< what just fits on a line
        QStringList lines;
    };
    const Case cases[] = {
        {"System tools", {"System tools"}},
        {"Memory files (beyond local", {"Memory files (beyond local ", "estimate)"}},
        {"/home/dev/src/", {"/home/dev/src/", "web-app/docs/"}},
        {"nnnnn", {"nnnnn", "nnnnn", "nn"}},
        {"nnnnn", {"a ", "nnnnn", "nnn"}},
        {"", {"a", "b", "c"}},
        {"記憶檔", {"記憶檔", "案目錄"}},
    };
    for (const auto& [widest, lines] : cases) {
        SCOPED_TRACE(qPrintable(lines.join(QLatin1Char('|'))));
        const QString text = lines.join(QString());
        const double room = breaker.width(widest) + 1;
        const BrokenText broken = breaker.broken(text, room);
        QStringList shown;
        for (const BrokenText::Line& line : broken.lines)
            shown.append(broken.shown.mid(line.start, line.length));
        EXPECT_EQ(shown.join(QLatin1Char('|')).toStdString(), lines.join(QLatin1Char('|')).toStdString());
        EXPECT_EQ(breaker.lineCount(text, breaker.width(text), room), lines.size());
        EXPECT_EQ(broken.hidden, 0);
    }
}

TEST(LineBreaker, LeavesOutTheMiddleOfWhatWouldTakeTooManyLines) {
    const LineBreaker breaker(AppTheme::current().font(TextStyle::body));
    for (const QString& middle : {QString(4'000, QLatin1Char('n')), QString("go on ").repeated(500),
                                  QString(QChar(0x65e5)).repeated(400)}) {
        const QString text = "/first/" + middle + "/last.md";
        const BrokenText broken = breaker.broken(text, 180);
        EXPECT_EQ(broken.lines.size(), 4U);
        EXPECT_EQ(breaker.lineCount(text, breaker.width(text), 180), 4);
        EXPECT_TRUE(broken.shown.startsWith("/first/") && broken.shown.endsWith("/last.md"));
        const BrokenText::Line& last = broken.lines.back();
        EXPECT_EQ(last.start + last.length, broken.shown.size());
        EXPECT_EQ(broken.original(2), 2);
        EXPECT_EQ(broken.original(static_cast<int>(broken.shown.size())), text.size());
    }
}

} // namespace
} // namespace loadscope::testing
