// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
//
// The least that a window of this toolkit costs: as large as ours, with nothing in it, or with the one line
// of text that it is given. Only the latter makes the toolkit look for fonts.
#include <QApplication>
#include <QLabel>
#include <QWidget>

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Empty"));
    window.resize(1180, 780);
    QLabel line(&window);
    if (argumentCount > 1) line.setText(QString::fromLocal8Bit(arguments[1]));
    line.setVisible(argumentCount > 1);
    window.show();
    return QApplication::exec();
}
