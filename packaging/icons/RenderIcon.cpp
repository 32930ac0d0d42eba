// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
//
// render-icon SVG PIXELS PNG [SVG PIXELS PNG]...: draws the application's icon in the sizes that are
// installed.
#include <QImage>
#include <QPainter>
#include <QString>
#include <QSvgRenderer>

#include <cstdio>

namespace {

bool render(const char* source, const char* side, const char* target) {
    QSvgRenderer renderer(QString::fromLocal8Bit(source));
    const int pixels = QString::fromLatin1(side).toInt();
    if (!renderer.isValid() || pixels <= 0) return false;
    QImage image(pixels, pixels, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    return image.save(QString::fromLocal8Bit(target), "PNG");
}

} // namespace

int main(int argumentCount, char** arguments) {
    constexpr int step = 3;
    for (int index = 1; index + 2 < argumentCount; index += step) {
        if (!render(arguments[index], arguments[index + 1], arguments[index + 2])) {
            std::fprintf(stderr, "render-icon: cannot draw %s as %s\n", arguments[index],
                         arguments[index + 2]);
            return 1;
        }
    }
    return 0;
}
