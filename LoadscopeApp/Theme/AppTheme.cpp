// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeApp/Theme/AppTheme.h"

#include "LoadscopeApp/Theme/ThemeMetrics.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace loadscope {
namespace {

AppTheme* currentTheme = nullptr;

#ifdef Q_OS_MACOS
constexpr double usualDotsPerInch = 72;
#else
constexpr double usualDotsPerInch = 96;
#endif
constexpr int middleLightness = 128;
constexpr double textLineFactor = 1.42;
constexpr double titleLineFactor = 1.27;
constexpr double tintBorderOpacity = 0.2;

double pointSize(TextStyle style) {
    switch (style) {
    case TextStyle::caption:
        return 11;
    case TextStyle::subheadline:
    case TextStyle::body:
        return 13;
    case TextStyle::headline:
        return 15;
    case TextStyle::title:
        return 22;
    case TextStyle::largeTitle:
        return 26;
    case TextStyle::heroMetric:
        break;
    }
    return 46;
}

QFont::Weight usualWeight(TextStyle style) {
    switch (style) {
    case TextStyle::caption:
    case TextStyle::subheadline:
    case TextStyle::body:
        return QFont::Normal;
    case TextStyle::largeTitle:
        return QFont::Bold;
    case TextStyle::headline:
    case TextStyle::title:
    case TextStyle::heroMetric:
        break;
    }
    return QFont::DemiBold;
}

Appearance systemAppearance() {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < middleLightness
               ? Appearance::dark
               : Appearance::light;
}

bool systemReducesMotion() {
    return QApplication::style()->styleHint(QStyle::SH_Widget_Animation_Duration) <= 0;
}

/// Tips, menus and dialogs are windows of their own, which take neither colours nor fonts from the widget
/// below them. A text editor, too, loads the application's font before it is given another.
void passOn(const AppTheme& theme) {
    QToolTip::setPalette(theme.palette());
    QToolTip::setFont(theme.font(TextStyle::caption));
    QApplication::setPalette(theme.palette(), "QMenu");
    QApplication::setFont(theme.font(TextStyle::body));
}

} // namespace

AppTheme::AppTheme(QObject* parent) : QObject(parent) {
    currentTheme = this;
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        textScale_ = screen->logicalDotsPerInch() / usualDotsPerInch;
        connect(screen, &QScreen::logicalDotsPerInchChanged, this,
                [this](qreal dotsPerInch) { setTextScale(dotsPerInch / usualDotsPerInch); });
    }
    passOn(*this);
    qApp->installEventFilter(this);
    resolve();
}

AppTheme::~AppTheme() {
    if (currentTheme == this) currentTheme = nullptr;
}

AppTheme& AppTheme::current() {
    Q_ASSERT(currentTheme != nullptr);
    return *currentTheme;
}

QColor AppTheme::color(ThemeColor name, double opacity) const {
    QColor result = color(name);
    result.setAlphaF(static_cast<float>(opacity));
    return result;
}

QColor AppTheme::tint(ThemeColor name) const {
    // Laid on the card's colour rather than on whatever is below, so that texts keep their contrast
    // everywhere.
    return ThemeColors::blended(color(name), Metrics::tintOpacity, color(ThemeColor::card));
}

QColor AppTheme::tintBorder(ThemeColor name) const {
    return ThemeColors::blended(color(name), tintBorderOpacity, tint(name));
}

QFont AppTheme::font(TextStyle style) const { return font(style, usualWeight(style)); }

QFont AppTheme::font(TextStyle style, QFont::Weight weight) const {
    QFont font;
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(scaled(pointSize(style)));
    font.setWeight(weight);
    font.setStyleStrategy(QFont::PreferAntialias);
    if (style == TextStyle::heroMetric || style == TextStyle::largeTitle || style == TextStyle::title)
        font.setLetterSpacing(QFont::PercentageSpacing, 98.5);
    return font;
}

int AppTheme::lineSpacing(TextStyle style, const QFont& font) {
    const bool isTitle = usualWeight(style) > QFont::Normal;
    const double factor = isTitle ? titleLineFactor : textLineFactor;
    return static_cast<int>(std::lround(font.pixelSize() * factor));
}

int AppTheme::scaled(double points) const {
    return std::max(1, static_cast<int>(std::lround(points * textScale_)));
}

QPalette AppTheme::palette() const {
    QPalette palette(color(ThemeColor::control), color(ThemeColor::window));
    const auto set = [this, &palette](QPalette::ColorRole role, ThemeColor name) {
        palette.setColor(QPalette::All, role, color(name));
    };
    set(QPalette::Window, ThemeColor::window);
    set(QPalette::WindowText, ThemeColor::primaryText);
    set(QPalette::Base, ThemeColor::card);
    set(QPalette::AlternateBase, ThemeColor::muted);
    set(QPalette::Text, ThemeColor::primaryText);
    set(QPalette::ButtonText, ThemeColor::primaryText);
    set(QPalette::BrightText, ThemeColor::onAccent);
    set(QPalette::PlaceholderText, ThemeColor::secondaryText);
    set(QPalette::ToolTipBase, ThemeColor::card);
    set(QPalette::ToolTipText, ThemeColor::primaryText);
    set(QPalette::Highlight, ThemeColor::accent);
    set(QPalette::HighlightedText, ThemeColor::onAccent);
    set(QPalette::Link, ThemeColor::accent);
    set(QPalette::LinkVisited, ThemeColor::accent);
    set(QPalette::Mid, ThemeColor::border);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, color(ThemeColor::secondaryText, 0.6));
    return palette;
}

void AppTheme::setDesktopPreferences(std::optional<Appearance> appearance,
                                     std::optional<bool> reducedMotion) {
    desktopAppearance_ = appearance;
    desktopReducedMotion_ = reducedMotion;
    resolve();
}

void AppTheme::force(std::optional<Appearance> appearance, std::optional<bool> reducedMotion) {
    forcedAppearance_ = appearance;
    forcedReducedMotion_ = reducedMotion;
    resolve();
}

void AppTheme::setTextScale(double scale) {
    if (scale <= 0 || scale == textScale_) return;
    textScale_ = scale;
    passOn(*this);
    Q_EMIT changed();
}

void AppTheme::bind(QObject* context, const std::function<void()>& apply) {
    apply();
    connect(&current(), &AppTheme::changed, context, apply);
}

bool AppTheme::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp &&
        (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ThemeChange))
        resolve();
    return QObject::eventFilter(watched, event);
}

void AppTheme::resolve() {
    const Appearance appearance = forcedAppearance_.value_or(desktopAppearance_.value_or(systemAppearance()));
    const bool reducedMotion = forcedReducedMotion_
                                   ? *forcedReducedMotion_
                                   : (desktopReducedMotion_ ? *desktopReducedMotion_ : systemReducesMotion());
    // Also ends the round when the palette that is passed on below comes back as a change of the
    // application's.
    if (appearance == appearance_ && reducedMotion == reducedMotion_) return;
    appearance_ = appearance;
    reducedMotion_ = reducedMotion;
    passOn(*this);
    Q_EMIT changed();
}

} // namespace loadscope
