// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#pragma once

#include "LoadscopeCore/Process/ChildProcess.h"

#include <QDBusConnection>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <unistd.h>

namespace loadscope::testing {

/// A bus of its own, on which no service can be started.
class Bus {
public:
    Bus() {
        const QString config = folder_.filePath("bus.conf");
        QFile file(config);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            R"(<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>
            <policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/>
            <allow own="*"/></policy></busconfig>)");
        file.close();
        daemon_ = std::make_unique<ChildProcess>(
            ChildProcess::Options{.executable = program().toStdString(),
                                  .arguments = {"--config-file=" + config.toStdString(), "--nofork",
                                                "--nopidfile", "--print-address"}});
        daemon_->launch();
        for (char c = 0; read(daemon_->standardOutput().get(), &c, 1) == 1 && c != '\n';)
            address_ += QChar::fromLatin1(c);
    }
    static QString program() { return QStandardPaths::findExecutable("dbus-daemon"); }
    [[nodiscard]] QDBusConnection connection(const QString& name) const {
        return QDBusConnection::connectToBus(address_, name);
    }

private:
    QTemporaryDir folder_;
    std::unique_ptr<ChildProcess> daemon_;
    QString address_;
};

} // namespace loadscope::testing
