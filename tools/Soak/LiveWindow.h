// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeApp/App/QtUIThread.h"
#include "LoadscopeApp/App/SettingsStore.h"
#include "LoadscopeApp/Window/ContentView.h"
#include "LoadscopeCore/Readiness/ToolReadiness.h"
#include "LoadscopeCore/Scan/ScanModel.h"
#include "tools/Soak/Dice.h"
#include "tools/Soak/HistoryWatch.h"

#include <optional>
#include <string>
#include <vector>

class QAbstractButton;

namespace loadscope::soak {

/// The window as the application makes it, over the real tools, history and settings of the home folder; only
/// the time limits are shorter. It counts how its scans end and looks that its state is a legal one.
class LiveWindow {
public:
    LiveWindow(Dice& dice, HistoryWatch& history);
    /// Closes it as its user would, whatever is under way.
    ~LiveWindow();

    ContentView& view() { return view_; }
    ScanModel& model() { return model_; }
    ScanBatch& batch() { return batch_; }
    ReadinessModel& readiness() { return readiness_; }

    /// The folder that the next question for a folder is answered with; without one the real dialog asks.
    void setNextChoice(std::optional<std::string> path) { nextChoice_ = std::move(path); }

    /// The visible and enabled buttons that the user can reach now.
    [[nodiscard]] std::vector<QAbstractButton*> buttons() const;
    /// One of them with this text or accessible name, else null.
    [[nodiscard]] QAbstractButton* button(const QString& name) const;

    /// No scan, no check and no sheet.
    [[nodiscard]] bool isAtRest() const;

    /// Ends the program when what the model or the window says cannot be.
    void check();

private:
    static ScanModel::Collaborators collaborators(Dice& dice);
    void onModelChanged();
    void followClearing();

    /// Tells the watch when the window begins to clear the history, and, at the latest when the model has
    /// gone, that it has ended.
    struct Clearing {
        HistoryWatch& watch;
        bool isOpen = false;

        void set(bool open) {
            if (open == isOpen) return;
            isOpen = open;
            open ? watch.clearingBegins() : watch.clearingEnds();
        }
        ~Clearing() { set(false); }
    };

    HistoryWatch& history_;
    Clearing clearing_;
    std::optional<std::string> nextChoice_;
    std::optional<Timestamp> scanBegin_;
    bool wasCancelled_ = false;

    QtUIThread uiThread_;
    SettingsStore settings_;
    ScanModel model_;
    ReadinessModel readiness_;
    RecentFolders recent_{uiThread_};
    ScanBatch batch_{uiThread_, ScanModel::Collaborators::forUser, 2};
    ContentView view_;
    Subscription subscription_;
};

} // namespace loadscope::soak
