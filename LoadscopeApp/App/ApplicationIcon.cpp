// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/App/ApplicationIcon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

// Must stand outside any namespace: it refers to a global function of the compiled resources.
static void registerPictures() { Q_INIT_RESOURCE(LoadscopeIcons); }

namespace loadscope {
namespace {

/// Up to this size the drawing with fewer and thicker parts is the clearer one.
constexpr int largestSmall = 32;

void add(QIcon& icon, QSvgRenderer& drawing, int side) {
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    icon.addPixmap(picture);
}

} // namespace

QIcon ApplicationIcon::load() {
    registerPictures();
    QSvgRenderer small(QStringLiteral(":/loadscope/application/small.svg"));
    QSvgRenderer large(QStringLiteral(":/loadscope/application/large.svg"));
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 128})
        add(icon, side <= largestSmall ? small : large, side);
    return icon;
}

} // namespace loadscope
