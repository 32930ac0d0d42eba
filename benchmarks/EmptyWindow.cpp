// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
//
// The least that a window of this toolkit costs: as large as ours, with nothing in it.
#include <QApplication>
#include <QWidget>

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Empty"));
    window.resize(1180, 780);
    window.show();
    return QApplication::exec();
}
