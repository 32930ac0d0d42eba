// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/MarkMenu.h"

#include "LoadscopeApp/Controls/DesktopFiles.h"
#include "LoadscopeApp/Text/PlainToolTip.h"
#include "LoadscopeCore/Presentation/TokenTexts.h"

#include <QAccessible>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QGuiApplication>
#include <QMenu>
#include <QPointer>

namespace loadscope::MarkMenu {
namespace {

/// Tells a failure where the person looked.
DesktopFiles::Answer toldAt(QWidget* owner, QPoint position) {
    return [owner = QPointer<QWidget>(owner), position](const QString& failure) {
        if (!owner || failure.isEmpty()) return;
        PlainToolTip::show(position, failure, owner);
        QAccessibleEvent event(owner, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    };
}

void copy(const QString& text) { QGuiApplication::clipboard()->setText(text); }

} // namespace

QPoint place(const QWidget& owner, const QContextMenuEvent& event, const QRect& area) {
    const bool byPointer = event.reason() == QContextMenuEvent::Mouse;
    return byPointer ? event.globalPos() : owner.mapToGlobal(area.center());
}

void open(QWidget* owner, const MarkSubject& subject, QPoint globalPosition) {
    DesktopFiles::current().open(subject.path, toldAt(owner, globalPosition));
}

QMenu* popup(QWidget* owner, const MarkSubject& subject, QPoint globalPosition) {
    auto* menu = new QMenu(owner);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [menu](const QString& text, bool applies, const auto& action) {
        menu->addAction(text, menu, action)->setEnabled(applies);
    };
    const bool hasPath = !subject.path.empty();
    add(QStringLiteral("Open File"), hasPath && !subject.isFolder && DesktopFiles::isText(subject.path),
        [owner, subject, globalPosition] { open(owner, subject, globalPosition); });
    add(QStringLiteral("Show in File Manager"), hasPath, [owner, subject, globalPosition] {
        DesktopFiles::current().show(subject.path, toldAt(owner, globalPosition));
    });
    menu->addSeparator();
    add(QStringLiteral("Copy Path"), hasPath,
        [subject] { copy(QFile::decodeName(QByteArray::fromStdString(subject.path))); });
    add(QStringLiteral("Copy Name and Number"), true, [subject] {
        copy(QString::fromStdString(
            TokenTexts::copyable(subject.name.toStdString(), subject.number.toStdString())));
    });
    menu->popup(globalPosition);
    return menu;
}

} // namespace loadscope::MarkMenu
