// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class QWidget;

/// The dialog in which the user chooses where something is saved.
namespace loadscope::SaveFilePanel {

struct Request {
    QString title;
    QString suggestedName; ///< without the suffix
    QString suffix;        ///< for example png
    QString kind;          ///< for example PNG image
};

/// Asks over the window of `anchor`; `chosen` gets the path, unless the user gives up or `anchor` goes.
void choose(QWidget* anchor, const Request& request, std::function<void(const QString& path)> chosen);

/// Writes a file, whole or not at all; one that its owner has protected is left alone. Whether it was
/// written.
[[nodiscard]] bool write(const QString& path, const QByteArray& contents);

/// Asks over the window of `anchor` and writes `contents`. Says so when they could not be written. `anchor`
/// may go in the meantime.
void open(QWidget* anchor, const Request& request, const QByteArray& contents);

} // namespace loadscope::SaveFilePanel
