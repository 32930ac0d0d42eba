// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Controls/DesktopFiles.h"

#include "LoadscopeCore/Platform/FilePath.h"
#include "LoadscopeCore/Platform/Text.h"
#include "LoadscopeCore/Process/CancellationError.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFile>
#include <QPointer>

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>
#include <utility>

namespace loadscope {
namespace {

DesktopFiles* replacement = nullptr;

QUrl urlOf(const std::string& path) {
    return QUrl::fromLocalFile(QFile::decodeName(QByteArray::fromStdString(path)));
}

} // namespace

DesktopFiles::DesktopFiles(QDBusConnection bus)
    : DesktopFiles(std::move(bus), [](const QUrl& url) { return QDesktopServices::openUrl(url); }) {}

DesktopFiles::DesktopFiles(QDBusConnection bus, Opener opener, FolderAccess::Check isThere)
    : bus_(std::move(bus)), opener_(std::move(opener)), isThere_(std::move(isThere)) {}

DesktopFiles& DesktopFiles::current() {
    static QPointer<DesktopFiles> desktop;
    if (replacement != nullptr) return *replacement;
    if (!desktop) {
        desktop = new DesktopFiles;
        desktop->setParent(QCoreApplication::instance()); // before which its threads have to end
    }
    return *desktop;
}

void DesktopFiles::setCurrent(DesktopFiles* files) { replacement = files; }

bool DesktopFiles::isText(const std::string& path) {
    constexpr std::array<std::string_view, 12> texts{"md",   "markdown", "mdx", "mdc",  "txt", "text",
                                                     "json", "toml",     "rst", "adoc", "yml", "yaml"};
    const std::string name = Text::lowercased(FilePath::lastComponent(path));
    const std::size_t dot = name.rfind('.');
    if (dot == std::string::npos) return false;
    return std::ranges::find(texts, std::string_view(name).substr(dot + 1)) != texts.end();
}

void DesktopFiles::whenThere(const std::string& path, Answer answer, std::function<void()> then) {
    const auto ask = [this, path, answer, then = std::move(then), check = isThere_](const StopToken& stop) {
        bool isThere = false;
        try {
            isThere = !FolderAccess::checkDetached(path, stop, check);
        } catch (const CancellationError&) { // another one is wanted instead
            return;
        }
        QMetaObject::invokeMethod(
            this,
            [isThere, answer, then] {
                if (isThere)
                    then();
                else
                    answer(QStringLiteral("The file is no longer there."));
            },
            Qt::QueuedConnection);
    };
    try {
        question_ = JoiningThread(ask);
    } catch (const std::system_error&) {
        answer(QStringLiteral("The system has no room for this just now."));
    }
}

void DesktopFiles::open(const std::string& path, Answer answer) {
    if (!isText(path)) {
        show(path, std::move(answer));
        return;
    }
    whenThere(path, answer,
              [this, path, answer] { openUrl(path, "No program is set to open this file.", answer); });
}

void DesktopFiles::show(const std::string& path, Answer answer) {
    whenThere(path, answer, [this, path, answer] { askFileManager(path, answer); });
}

void DesktopFiles::askFileManager(const std::string& path, const Answer& answer) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    message.setArguments(
        {QStringList{QString::fromLatin1(urlOf(path).toEncoded())}, QString()}); // no start-up notification
    auto* call = new QDBusPendingCallWatcher(bus_.asyncCall(message), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, path, answer, call] {
        call->deleteLater();
        if (call->isError())
            openUrl(FilePath::parent(path), "The folder could not be opened.", answer);
        else
            answer({});
    });
}

void DesktopFiles::openUrl(const std::string& path, const char* failure, const Answer& answer) {
    answer(opener_(urlOf(path)) ? QString() : QString::fromLatin1(failure));
}

} // namespace loadscope
