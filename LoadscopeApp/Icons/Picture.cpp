// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Icons/Picture.h"

#include <QWidget>

namespace loadscope {

QPixmap Picture::of(QWidget& widget) {
    if (widget.size().isEmpty()) return {};
    const double ratio = widget.devicePixelRatioF();
    QPixmap picture(widget.size() * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    widget.render(&picture, {}, {}, QWidget::DrawChildren);
    return picture;
}

} // namespace loadscope
