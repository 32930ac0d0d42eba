// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Pages/CardPieces.h"

#include "LoadscopeApp/AppTheme.h"
#include "LoadscopeApp/Components/AccessibleTraits.h"
#include "LoadscopeApp/Components/SectionHeader.h"
#include "LoadscopeApp/Components/TextLabel.h"
#include "LoadscopeApp/ThemeMetrics.h"

#include <QHBoxLayout>
#include <QPainter>

namespace loadscope {
namespace {

class Divider : public QWidget {
public:
    Divider() {
        setFixedHeight(1);
        AccessibleTraits::setDecoration(this);
        AppTheme::bind(this, [this] { update(); });
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter(this).fillRect(rect(), AppTheme::current().color(ThemeColor::divider));
    }
};

} // namespace

QHBoxLayout* CardPieces::header(const QString& title, const QString& detail, QWidget* control) {
    auto* row = new QHBoxLayout;
    row->setSpacing(Metrics::rowSpacing);
    row->addWidget(new SectionHeader(title, detail), 1);
    if (control != nullptr) row->addWidget(control, 0, Qt::AlignTop);
    return row;
}

QWidget* CardPieces::caption(const QString& text) {
    auto* label = new TextLabel(text, TextStyle::caption, ThemeColor::secondaryText);
    label->setWraps();
    return label;
}

QHBoxLayout* CardPieces::inset(QWidget* content) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(Metrics::cardInset, 0, Metrics::cardInset, 0);
    row->addWidget(content);
    return row;
}

QWidget* CardPieces::divider() { return new Divider; }

} // namespace loadscope
