// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QSocketNotifier;

namespace loadscope {

/// Turns a request to end the process (Ctrl-C in a terminal, the end of the session) into an ordinary quit,
/// so that a scan's child process ends with the application. One per process.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

private:
    QSocketNotifier* notifier_ = nullptr;
    int ends_[2] = {-1, -1};
};

} // namespace loadscope
