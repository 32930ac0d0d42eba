// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// Drives the real window and the real command through random actions in a temporary home folder, with
// stand-ins that misbehave at random, and ends with 1 as soon as something is wrong:
// LoadscopeSoak [--seconds N] [--actions N] [--seed S]
#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Controls/AppStyle.h"
#include "LoadscopeApp/Controls/DesktopFiles.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "tools/Soak/Journal.h"
#include "tools/Soak/Soak.h"

#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <random>

namespace {

using namespace loadscope;

/// Links that are pressed must not start a browser.
class NoBrowser : public QObject {
    Q_OBJECT

public:
    NoBrowser() {
        for (const QString& scheme : schemes_)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~NoBrowser() override {
        for (const QString& scheme : schemes_)
            QDesktopServices::unsetUrlHandler(scheme);
    }

public Q_SLOTS:
    void open(const QUrl&) {}

private:
    const QStringList schemes_{QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("file")};
};

/// What a window cannot do without a display is said again and again.
void onMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
    if (text.startsWith(QStringLiteral("This plugin does not support"))) return;
    std::fprintf(stderr, "%s\n", qPrintable(text));
    if (type == QtFatalMsg) soak::Journal::current().violated("the toolkit gives up");
}

int soakFor(const soak::Soak::Length& length, std::uint64_t seed, int& argumentCount, char** arguments) {
    soak::Dice dice(seed);
    const soak::SoakHome home(dice);
    soak::Journal::current().start(seed);
    soak::printLastActionsOnCrash();
    QCoreApplication::setOrganizationName(QStringLiteral("Loadscope"));
    QCoreApplication::setApplicationName(QStringLiteral("Loadscope"));
    qInstallMessageHandler(onMessage);
    AccessibleTraits::install();
    QApplication application(argumentCount, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new AppStyle);
    // As with a screen reader at work, so that every event that the widgets send is gone through.
    QAccessible::setActive(true);
    AppTheme theme;
    const KeyboardUse keyboardUse;
    const NoBrowser noBrowser;
    DesktopFiles noDesktop(QDBusConnection(QStringLiteral("none")),
                           [&dice](const QUrl&) { return !dice.oneIn(4); });
    DesktopFiles::setCurrent(&noDesktop);
    soak::Soak run(dice, home);
    run.run(length);
    run.printSummary();
    DesktopFiles::setCurrent(nullptr);
    return 0;
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::int64_t seconds = 0;
    soak::Soak::Length length;
    std::uint64_t seed = std::random_device{}();
    CLI::App options("Random actions on the window and the command, with a look at what they leave behind");
    options.add_option("--seconds", seconds, "End after this time (60, unless --actions is given)");
    options.add_option("--actions", length.actions, "End after this many actions");
    options.add_option("--seed", seed, "Draw as the run with this seed did");
    CLI11_PARSE(options, argumentCount, arguments);
    if (seconds == 0 && options.count("--actions") == 0) seconds = 60;
    if (seconds > 0) length.milliseconds = seconds * 1000;
    std::printf("Seed: %llu\n", static_cast<unsigned long long>(seed));
    std::fflush(stdout);
    const int exitCode = soakFor(length, seed, argumentCount, arguments);
    if (exitCode == 0) std::puts("Nothing found.");
    return exitCode;
}

#include "main.moc"
