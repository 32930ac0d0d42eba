// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/Theme/AppTheme.h"

#include <QWidget>

#include <optional>

namespace loadscope {

class WholeSelection;

/// A short text on a capsule, with an optional icon before it. One line, unless told otherwise; a text that
/// does not fit is cut and shown whole on hover.
class Pill : public QWidget {
    Q_OBJECT

public:
    struct Look {
        QString text;
        QString symbol;                 ///< key of an icon, or empty
        std::optional<ThemeColor> tint; ///< of text and capsule; without one the capsule is muted
        TextStyle style = TextStyle::subheadline;
        QFont::Weight weight = QFont::Medium;
    };

    explicit Pill(Look look, QWidget* parent = nullptr);

    [[nodiscard]] const Look& look() const { return look_; }
    void setLook(Look look);
    /// Breaks a text that does not fit, into lines of about equal length. `longest` is the longest text of
    /// the pills in the same row: this one takes as much height as that one would, so that what is below them
    /// lines up.
    void setWraps(const QString& longest);
    /// Lets the mouse select the text, all of it.
    void setSelectable();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] int symbolWidth() const;
    [[nodiscard]] bool isCut() const;
    /// The text as it is painted in the given width.
    [[nodiscard]] QStringList lines(const QString& text, int width) const;
    [[nodiscard]] qsizetype lineCount(const QString& text, int width) const;
    [[nodiscard]] int textRoom(int width) const;

    Look look_;
    std::optional<QString> longest_;      ///< where the text may break
    WholeSelection* selection_ = nullptr; ///< when it can be selected
};

/// Tells a status: an icon and a title in one tint.
class StatusPill : public Pill {
    Q_OBJECT

public:
    StatusPill(const QString& title, const QString& symbol, ThemeColor tint, QWidget* parent = nullptr)
        : Pill(lookFor(title, symbol, tint), parent) {}
    void setStatus(const QString& title, const QString& symbol, ThemeColor tint) {
        setLook(lookFor(title, symbol, tint));
    }

private:
    static Look lookFor(const QString& title, const QString& symbol, ThemeColor tint) {
        return {title, symbol, tint, TextStyle::subheadline, QFont::Medium};
    }
};

/// Tells where a number comes from.
class ProvenancePill : public Pill {
    Q_OBJECT

public:
    explicit ProvenancePill(const QString& label, QWidget* parent = nullptr)
        : Pill({label, {}, {}, TextStyle::caption, QFont::Normal}, parent) {}
};

} // namespace loadscope
