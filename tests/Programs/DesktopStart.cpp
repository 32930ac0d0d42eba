// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// The whole application, with a hand that presses its button: scans the folder of the command line as soon as
// that may be done, and closes the window once the report has been recorded, or after a while.

#include "LoadscopeApp/App/LoadscopeApp.h"
#include "LoadscopeApp/App/WindowArguments.h"

#include "LoadscopeCore/History/ScanHistoryStore.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTimer>

namespace {

QAbstractButton* scanButton() {
    for (QWidget* const window : QApplication::topLevelWidgets())
        for (auto* const button : window->findChildren<QAbstractButton*>())
            if (button->isVisible() && button->isEnabled() &&
                button->text().startsWith(QStringLiteral("Scan")))
                return button;
    return nullptr;
}

} // namespace

int main(int argumentCount, char** arguments) {
    using namespace loadscope;
    LoadscopeApp application(argumentCount, arguments);
    ScanHistoryStore history(ScanHistoryStore::defaultDirectory());
    QTimer hand;
    bool pressed = false;
    QObject::connect(&hand, &QTimer::timeout, [&] {
        if (pressed && !history.load().empty()) QApplication::quit();
        if (QAbstractButton* const button = pressed ? nullptr : scanButton()) {
            pressed = true;
            button->click();
        }
    });
    hand.start(20);
    QTimer::singleShot(30'000, qApp, &QApplication::quit);
    return application.run(WindowArguments::parse(argumentCount, arguments).folder);
}
