// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Accessibility/FocusRing.h"
#include "LoadscopeApp/Controls/AppStyle.h"
#include "LoadscopeApp/Theme/AppTheme.h"
#include "LoadscopeCore/Platform/LocaleFormat.h"
#include "tools/Screenshots/Stage.h"

#include <QApplication>
#include <QDir>
#include <QPainter>

#include <array>
#include <cstdio>

namespace {

using namespace loadscope;

struct Size {
    const char* name;
    QSize size;
};

const std::array sizes{Size{"1180", QSize(1180, 780)}, Size{"960", QSize(960, 640)},
                       Size{"tall", QSize(1180, 2400)}, Size{"narrow", QSize(960, 2700)}};

QString nameOf(Appearance appearance) {
    return appearance == Appearance::dark ? QStringLiteral("dark") : QStringLiteral("light");
}

bool isWanted(const QString& only, const QString& name) { return only.isEmpty() || only == name; }

void save(QWidget& window, const QString& file, double ratio) {
    QPixmap picture(window.size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    window.render(&picture);
    if (!picture.save(file)) std::fprintf(stderr, "Cannot write %s.\n", qPrintable(file));
}

void picture(const screenshots::Scene& scene, Appearance appearance, const Size& size, const QDir& output) {
    AppTheme::current().force(appearance, true);
    screenshots::Stage stage(scene.history);
    stage.view.resize(size.size);
    stage.view.show();
    stage.settle([&stage] { return !stage.readiness.isChecking(); });
    scene.prepare(stage);
    stage.settle();
    for (const int ratio : {1, 2}) {
        const QString name = QStringLiteral("%1-%2-%3@%4x.png")
                                 .arg(scene.name, nameOf(appearance), QLatin1String(size.name))
                                 .arg(ratio);
        save(stage.view, output.filePath(name), ratio);
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argumentCount, arguments);
    QStringList words = QApplication::arguments().mid(1);
    const auto option = [&words](const QString& name) {
        const qsizetype at = words.indexOf(name);
        if (at < 0 || at + 1 >= words.size()) return QString();
        const QString value = words.at(at + 1);
        words.remove(at, 2);
        return value;
    };
    const QString only = option(QStringLiteral("--only"));
    const QString onlySize = option(QStringLiteral("--size"));
    const QString onlyAppearance = option(QStringLiteral("--appearance"));
    const double textScale = option(QStringLiteral("--text-scale")).toDouble();
    if (words.size() != 1 || words.constFirst().startsWith(QLatin1Char('-'))) {
        std::fputs("Usage: screenshots OUTPUT_DIR [--only STATE] [--size 1180|960|tall|narrow]\n"
                   "                   [--appearance light|dark] [--text-scale FACTOR]\n",
                   stderr);
        return 2;
    }
    const QDir output(words.constFirst());
    if (!output.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "Cannot create %s.\n", qPrintable(output.path()));
        return 1;
    }
    if (LocaleFormat::isRightToLeft()) QApplication::setLayoutDirection(Qt::RightToLeft);
    QApplication::setStyle(new AppStyle);
    AppTheme theme;
    const KeyboardUse keyboardUse;
    if (textScale > 0) theme.setTextScale(textScale);
    std::vector<screenshots::Scene> scenes = screenshots::scenes();
    for (screenshots::Scene& scene : screenshots::reportScenes())
        scenes.push_back(std::move(scene));
    bool isEmpty = true;
    for (const screenshots::Scene& scene : scenes) {
        if (!only.isEmpty() && !scene.name.contains(only)) continue;
        for (const Appearance appearance : {Appearance::light, Appearance::dark}) {
            if (!isWanted(onlyAppearance, nameOf(appearance))) continue;
            for (const Size& size : sizes) {
                if (!isWanted(onlySize, QLatin1String(size.name))) continue;
                const bool isTall = size.size.height() > 1'000;
                if (isTall && !scene.name.contains(QStringLiteral("result")) &&
                    !scene.name.startsWith(QStringLiteral("trends")) &&
                    !scene.name.startsWith(QStringLiteral("compare")))
                    continue;
                picture(scene, appearance, size, output);
                isEmpty = false;
            }
        }
    }
    if (!isEmpty) return 0;
    std::fputs("No picture is of that kind. The states are:\n", stderr);
    for (const screenshots::Scene& scene : scenes)
        std::fprintf(stderr, "  %s\n", qPrintable(scene.name));
    return 2;
}
