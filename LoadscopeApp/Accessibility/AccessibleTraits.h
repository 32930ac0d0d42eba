// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>
#include <QString>

class QWidget;

/// What assistive technologies are told about widgets that the toolkit knows only as boxes.
namespace loadscope::AccessibleTraits {

/// Makes the accessibility of widgets that were given traits known to the toolkit. Harmless when repeated.
void install();

/// Gives `widget` a role and a name. Call it before the widget is first shown.
void setRole(QWidget* widget, QAccessible::Role role, const QString& name = {});

/// Presents the widget as one element: its children are not offered one by one.
void setLeaf(QWidget* widget);

/// The spoken value of a widget with a role, for example "Collapsed".
void setValue(QWidget* widget, const QString& value);

/// The widget shows or hides something; tells listeners when it changes.
void setExpanded(QWidget* widget, bool expanded);

/// The widget has a context menu, which assistive technologies can ask for.
void setHasMenu(QWidget* widget);

/// The widget shows nothing that a reader needs.
void setDecoration(QWidget* widget);

} // namespace loadscope::AccessibleTraits
