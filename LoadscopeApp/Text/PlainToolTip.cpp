// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Text/PlainToolTip.h"

#include <QToolTip>
#include <QWidget>

namespace loadscope::PlainToolTip {

QString escaped(const QString& text) {
    // As rich text the tip also wraps; a word that is too long for a line may break anywhere.
    QString result = text.toHtmlEscaped();
    result.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
    result.replace(QLatin1Char('/'), QStringLiteral("/<wbr>"));
    return QStringLiteral("<div>%1</div>").arg(result);
}

void set(QWidget& widget, const QString& text) {
    widget.setToolTip(escaped(text));
    // Else the toolkit would hand the markup to assistive technologies.
    widget.setAccessibleDescription(text);
}

void show(const QPoint& globalPosition, const QString& text, QWidget* widget) {
    if (text.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(globalPosition, escaped(text), widget);
}

} // namespace loadscope::PlainToolTip
