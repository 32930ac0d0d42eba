// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/Prompts.h"

#include "tools/Soak/Journal.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QMessageBox>

#include <algorithm>

namespace loadscope::soak {
namespace {

constexpr int lookMilliseconds = 15;

void answer(QMenu& menu, Dice& dice) {
    if (dice.oneIn(5)) return; // it may stay up for a while
    QList<QAction*> actions = menu.actions();
    actions.removeIf([](const QAction* action) { return !action->isEnabled() || action->isSeparator(); });
    if (actions.isEmpty() || dice.oneIn(3)) {
        menu.close();
        return;
    }
    QAction* action = dice.pick(actions);
    Journal::current().tell("menu: " + action->text().toStdString());
    menu.close();
    action->trigger();
}

} // namespace

Prompts::Prompts(const SoakHome& home, Dice& dice) : home_(home), dice_(dice) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(lookMilliseconds);
}

void Prompts::look() {
    if (QWidget* popup = QApplication::activePopupWidget()) {
        if (auto* menu = qobject_cast<QMenu*>(popup)) {
            answer(*menu, dice_);
        } else {
            popup->close();
        }
    } else if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        QList<QAbstractButton*> buttons = box->buttons();
        QAbstractButton* button = dice_.pick(buttons);
        Journal::current().tell("box: " + button->text().toStdString());
        button->click();
    }
}

QFileDialog* Prompts::fileDialog() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* dialog = qobject_cast<QFileDialog*>(widget); dialog != nullptr && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

bool Prompts::areUp() {
    return QApplication::activePopupWidget() != nullptr || QApplication::activeModalWidget() != nullptr ||
           fileDialog() != nullptr;
}

std::string Prompts::answerFileDialog() {
    QFileDialog* dialog = fileDialog();
    if (dialog == nullptr) return "no file dialog is up";
    if (dice_.oneIn(4)) {
        dialog->reject();
        return "closed";
    }
    const std::string places[] = {home_.exports() + "/saved-" + std::to_string(dice_.below(8)),
                                  home_.exports() + "/no-folder/file", home_.path() + "/no/such/folder/file",
                                  home_.exports() + "/name with <b>\n"};
    const bool isForFolder = dialog->fileMode() == QFileDialog::Directory;
    const std::string path =
        isForFolder ? home_.anyFolder(dice_) : places[dice_.oneIn(3) ? dice_.below(4) : 0];
    dialog->selectFile(QFile::decodeName(path.c_str()));
    static_cast<QDialog*>(dialog)->accept();
    return path;
}

void Prompts::closeAll() {
    if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) box->reject();
    if (QFileDialog* dialog = fileDialog()) dialog->reject();
}

} // namespace loadscope::soak
