// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Platform/StopToken.h"
#include "LoadscopeCore/Scan/FolderAccess.h"

#include <QDBusConnection>
#include <QObject>
#include <QUrl>

#include <functional>
#include <string>

namespace loadscope {

/// Has the desktop open files and show them where they lie; no shell is started for it. Paths come from
/// reports and may name anything: only texts are opened, and whether something is there is asked on a thread
/// of its own, since a share that has gone away may never answer. Confined to the UI thread.
class DesktopFiles : public QObject {
public:
    /// Hands a file or folder to the program that is set for it; false when there is none.
    using Opener = std::function<bool(const QUrl& url)>;
    /// What went wrong, in a sentence; empty when nothing did. Called later, on the UI thread, unless the
    /// object is gone by then.
    using Answer = std::function<void(const QString& failure)>;

    /// `bus` is where a file manager is asked for.
    explicit DesktopFiles(QDBusConnection bus = QDBusConnection::sessionBus());
    DesktopFiles(QDBusConnection bus, Opener opener,
                 FolderAccess::Check isThere = FolderAccess::checkPresence);

    /// The one that menus use.
    [[nodiscard]] static DesktopFiles& current();
    /// Makes menus use another one, which must live until this is called again; null for the desktop's own.
    static void setCurrent(DesktopFiles* files);

    /// Whether a file of that name is a text: what else a report may name could be run by its opening.
    [[nodiscard]] static bool isText(const std::string& path);

    /// Opens a text; of another file it shows the folder.
    void open(const std::string& path, Answer answer);
    /// Shows the folder in the file manager with the file selected, or only the folder where the file manager
    /// cannot select.
    void show(const std::string& path, Answer answer);

private:
    /// Calls `then` when something is there.
    void whenThere(const std::string& path, Answer answer, std::function<void()> then);
    void askFileManager(const std::string& path, const Answer& answer);
    void openUrl(const std::string& path, const char* failure, const Answer& answer);

    QDBusConnection bus_;
    Opener opener_;
    FolderAccess::Check isThere_;
    JoiningThread question_; ///< the last one; another takes its place
};

} // namespace loadscope
