// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/ThemeColor.h"

#include <QFont>
#include <QObject>
#include <QPalette>

#include <functional>
#include <optional>

namespace loadscope {

enum class TextStyle { caption, subheadline, body, headline, title, largeTitle, heroMetric };

/// The one source of colours, fonts and motion. One theme exists for as long as the application's widgets
/// do; `changed` tells them to ask again. The appearance is the forced one, else what the desktop says, else
/// what the system's palette looks like. UI thread only.
class AppTheme : public QObject {
    Q_OBJECT

public:
    explicit AppTheme(QObject* parent = nullptr);
    ~AppTheme() override;
    AppTheme(const AppTheme&) = delete;
    AppTheme& operator=(const AppTheme&) = delete;

    /// The theme of the application. There must be one.
    [[nodiscard]] static AppTheme& current();

    [[nodiscard]] Appearance appearance() const { return appearance_; }
    [[nodiscard]] bool isDark() const { return appearance_ == Appearance::dark; }
    [[nodiscard]] bool reducedMotion() const { return reducedMotion_; }
    /// How much larger than usual the desktop wants its texts.
    [[nodiscard]] double textScale() const { return textScale_; }

    [[nodiscard]] QColor color(ThemeColor name) const { return ThemeColors::color(name, appearance_); }
    [[nodiscard]] QColor color(ThemeColor name, double opacity) const;
    [[nodiscard]] QColor chartColor(std::size_t index) const {
        return ThemeColors::chart(index, appearance_);
    }
    /// The pale background of pills, chips and icons in the colour `name`.
    [[nodiscard]] QColor tint(ThemeColor name) const;
    /// The line around such a background, which keeps it visible where the ground is as pale.
    [[nodiscard]] QColor tintBorder(ThemeColor name) const;

    [[nodiscard]] QFont font(TextStyle style) const;
    [[nodiscard]] QFont font(TextStyle style, QFont::Weight weight) const;
    /// Distance of the baselines of a wrapped text, in pixels.
    [[nodiscard]] static int lineSpacing(TextStyle style, const QFont& font);
    /// `points` at the desktop's text scale, in whole pixels.
    [[nodiscard]] int scaled(double points) const;

    /// For the toolkit's own parts: file dialogs, menus, text selections, tool tips.
    [[nodiscard]] QPalette palette() const;

    /// What the desktop says; absent where it says nothing.
    void setDesktopPreferences(std::optional<Appearance> appearance, std::optional<bool> reducedMotion);

    /// For tests and screenshots: wins over the desktop; absent gives the desktop its say again.
    void force(std::optional<Appearance> appearance, std::optional<bool> reducedMotion);

    void setTextScale(double scale);

    /// Runs `apply` now and after each change, until `context` is destroyed.
    static void bind(QObject* context, const std::function<void()>& apply);

Q_SIGNALS:
    void changed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void resolve();

    std::optional<Appearance> desktopAppearance_;
    std::optional<bool> desktopReducedMotion_;
    std::optional<Appearance> forcedAppearance_;
    std::optional<bool> forcedReducedMotion_;
    Appearance appearance_ = Appearance::light;
    bool reducedMotion_ = false;
    double textScale_ = 1;
};

} // namespace loadscope
