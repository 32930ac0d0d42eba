// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// What reaches the window's thread from outside: work of other threads, and signals.
#include "LoadscopeApp/App/QtUIThread.h"
#include "LoadscopeApp/App/TerminationSignals.h"
#include "tests/LoadscopeApp/Support/WindowFixture.h"

#include <QTimer>

#include <csignal>
#include <numeric>
#include <thread>

namespace loadscope::testing {
namespace {

TEST(QtUIThread, RunsWorkInTheOrderInWhichItWasPosted) {
    QtUIThread uiThread;
    std::vector<int> done;
    std::vector<int> expected(100);
    std::iota(expected.begin(), expected.end(), 0);
    std::thread poster([&] {
        for (const int number : expected)
            uiThread.post([&done, number] { done.push_back(number); });
    });
    poster.join(); // all of it waits before the first runs
    EXPECT_TRUE(done.empty());
    ASSERT_TRUE(eventually([&] { return done.size() == expected.size(); }));
    EXPECT_EQ(done, expected);
}

/// What the process does at the signal, until the object's end.
class Handler {
public:
    Handler(int signal, void (*handler)(int)) : signal_(signal) {
        struct sigaction action {};
        action.sa_handler = handler;
        sigaction(signal, &action, &before_);
    }
    ~Handler() { sigaction(signal_, &before_, nullptr); }
    Handler(const Handler&) = delete;
    Handler& operator=(const Handler&) = delete;

    [[nodiscard]] static void (*now(int signal))(int) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        return action.sa_handler;
    }

private:
    int signal_;
    struct sigaction before_ {};
};

TEST(TerminationSignals, EndTheProgramButForAHangUpThatWasIgnored) {
    const Handler hangUp(SIGHUP, SIG_IGN);
    {
        const TerminationSignals signals_;
        EXPECT_EQ(Handler::now(SIGHUP), SIG_IGN) << "as nohup asks";
        EXPECT_NE(Handler::now(SIGTERM), SIG_DFL);
    }
    EXPECT_EQ(Handler::now(SIGHUP), SIG_IGN);
    EXPECT_EQ(Handler::now(SIGTERM), SIG_DFL);
    for (const int signal : {SIGHUP, SIGTERM, SIGINT}) {
        const Handler usual(signal, SIG_DFL);
        const TerminationSignals signals_;
        QTimer::singleShot(0, [signal] { raise(signal); });
        QTimer patience;
        patience.setSingleShot(true);
        QObject::connect(&patience, &QTimer::timeout, [] { QCoreApplication::exit(1); });
        patience.start(10'000);
        EXPECT_EQ(QApplication::exec(), 0) << signal;
    }
}

} // namespace
} // namespace loadscope::testing
