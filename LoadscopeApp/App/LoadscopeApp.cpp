// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/LoadscopeApp.h"

#include "LoadscopeApp/Accessibility/AccessibleTraits.h"
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/App/ApplicationIcon.h"
#include "LoadscopeApp/App/ClosingLimit.h"
#include "LoadscopeApp/App/FontPreparation.h"
#include "LoadscopeApp/App/QtUIThread.h"
#include "LoadscopeApp/App/SettingsStore.h"
#include "LoadscopeApp/App/TerminationSignals.h"
#include "LoadscopeApp/App/WindowArguments.h"
#include "LoadscopeApp/Controls/AppStyle.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeApp/Theme/DesktopAppearance.h"
#include "LoadscopeApp/Window/ContentView.h"
#include "LoadscopeApp/Window/FolderPanel.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "LoadscopeCore/Platform/Version.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "LoadscopeCore/Scan/CodexEstimateModel.h"
#include "LoadscopeCore/Scan/ScanModel.h"

#include <QApplication>
#include <QFile>
#include <QFileOpenEvent>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace loadscope {
namespace {

[[noreturn]] void endWithoutDisplay() {
    std::fputs("Loadscope cannot open its window: there is no display to show it on.\n"
               "Run it in a desktop session, or use \"loadscope scan\" in a terminal.\n",
               stderr);
    std::_Exit(WindowArguments::noDisplay);
}

/// While the application connects to the display: the toolkit says in many lines what we say in two.
void onStartUpMessage(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type == QtFatalMsg) endWithoutDisplay();
}

std::unique_ptr<QApplication> makeApplication(int& argumentCount, char** arguments) {
    QCoreApplication::setOrganizationName(QStringLiteral("Loadscope"));
    QCoreApplication::setApplicationName(QStringLiteral("Loadscope"));
    QCoreApplication::setApplicationVersion(QString::fromLatin1(Version::number()));
    QGuiApplication::setDesktopFileName(QStringLiteral(LOADSCOPE_APP_ID));
    const FontPreparation fonts;
    const QtMessageHandler usual = qInstallMessageHandler(onStartUpMessage);
    auto application = std::make_unique<QApplication>(argumentCount, arguments);
    qInstallMessageHandler(usual);
    // Only now: the toolkit puts in its own roles with the application, and the latest to come is asked
    // first.
    AccessibleTraits::install();
    return application;
}

std::optional<Appearance> appearanceFromEnvironment() {
    const QByteArray wish = qgetenv("LOADSCOPE_APPEARANCE");
    if (wish == QByteArrayLiteral("dark")) return Appearance::dark;
    if (wish == QByteArrayLiteral("light")) return Appearance::light;
    return {};
}

std::optional<bool> reducedMotionFromEnvironment() {
    if (!qEnvironmentVariableIsSet("LOADSCOPE_REDUCED_MOTION")) return {};
    return qgetenv("LOADSCOPE_REDUCED_MOTION") != QByteArrayLiteral("0");
}

/// Takes the folders that the desktop hands to a running application.
class OpenEvents : public QObject {
public:
    explicit OpenEvents(ContentView& window) : window_(window) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::FileOpen) {
            const QString file = static_cast<QFileOpenEvent*>(event)->file();
            if (!file.isEmpty()) window_.selectFolder(QFile::encodeName(file).toStdString());
        }
        return QObject::eventFilter(watched, event);
    }

private:
    ContentView& window_;
};

} // namespace

/// In the order of their making; destroyed in reverse, so that the window goes before its models and they
/// before the thread to which they post.
struct LoadscopeApp::Parts {
    Parts(int& argumentCount, char** arguments) : application(makeApplication(argumentCount, arguments)) {
        QApplication::setWindowIcon(ApplicationIcon::load());
        if (LocaleFormat::isRightToLeft()) QApplication::setLayoutDirection(Qt::RightToLeft);
        QApplication::setStyle(new AppStyle); // the application owns it
        theme.force(appearanceFromEnvironment(), reducedMotionFromEnvironment());
        window.setCodexEstimates(codexEstimates);
        window.setRecentFolders(recentFolders);
        window.setBatch(batch);
        desktop.start();
    }

    std::unique_ptr<QApplication> application;
    AppTheme theme;
    KeyboardUse keyboardUse;
    DesktopAppearance desktop;
    TerminationSignals signals_;
    QtUIThread uiThread;
    SettingsStore settings;
    ScanModel::Collaborators collaborators = ScanModel::Collaborators::forUser();
    ScanModel model{uiThread, collaborators};
    CodexEstimateModel codexEstimates{uiThread, collaborators.codexRunner};
    ReadinessModel readiness{uiThread, ReadinessChecker::checkForWindow};
    RecentFolders recentFolders{uiThread};
    ScanBatch batch{uiThread, ScanModel::Collaborators::forUser};
    ContentView window{model, readiness, settings, FolderPanel::open};
    OpenEvents openEvents{window};
};

LoadscopeApp::LoadscopeApp(int& argumentCount, char** arguments) {
    parts_ = std::make_unique<Parts>(argumentCount, arguments);
}

LoadscopeApp::~LoadscopeApp() = default;

int LoadscopeApp::run(const std::optional<std::string>& folder) {
    Parts& parts = *parts_;
    parts.settings.restoreWindow(parts.window, *parts.window.splitter());
    if (folder) parts.window.selectFolder(*folder);
    parts.window.show();
    const int exitCode = QApplication::exec();
    ClosingLimit::begin(exitCode);
    parts.settings.saveWindow(parts.window, *parts.window.splitter());
    // Gone from the screen at once, while the child of a scan may take a moment to end.
    parts.window.hide();
    QCoreApplication::processEvents();
    return exitCode;
}

} // namespace loadscope
