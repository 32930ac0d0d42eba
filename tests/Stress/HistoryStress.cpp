// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
// Processes that append to one history are killed at random moments, over and over. After each kill the file
// must be whole, and every record whose append had returned must be in it or older than all that are.
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "tests/Support/HistoryRecords.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <random>
#include <set>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace loadscope;

namespace {

using Counter = std::atomic<int>;

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "HistoryStress: %s\n", what);
    std::exit(EXIT_FAILURE);
}

/// Appends until it is killed; each number goes to the pipe once its record is stored.
[[noreturn]] void appendForever(const std::string& folder, Counter& next, int confirmations) {
    ScanHistoryStore store(folder);
    const std::vector<RecordedCategory> categories(20, {"System prompt", 3000});
    while (true) {
        const int number = next++;
        store.append(record(number, "app", day(1) + std::chrono::seconds(number), number, categories));
        if (write(confirmations, &number, sizeof number) != sizeof number) _exit(EXIT_FAILURE);
    }
}

struct Writer {
    pid_t process = -1;
    int confirmations = -1;

    void start(const std::string& folder, Counter& next) {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) != 0 || (process = fork()) < 0) fail("no process to write");
        if (process == 0) appendForever(folder, next, ends[1]);
        close(ends[1]);
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
        confirmations = ends[0];
    }

    void collect(std::set<std::int64_t>& confirmed) const {
        int number = 0;
        while (read(confirmations, &number, sizeof number) == sizeof number)
            confirmed.insert(number);
    }

    void stop(std::set<std::int64_t>& confirmed) {
        int status = 0;
        kill(process, SIGKILL);
        if (waitpid(process, &status, 0) != process || !WIFSIGNALED(status)) fail("a writer ended by itself");
        collect(confirmed);
        close(confirmations);
    }
};

/// Forgets the confirmed records that have been trimmed.
void check(const std::string& file, std::set<std::int64_t>& confirmed) {
    const std::optional<std::string> bytes = AtomicFile::read(file, 1 << 30);
    if (!bytes && confirmed.empty()) return;
    const auto decoded = ScanHistoryFile::decode(bytes.value_or(""));
    const auto* scans = std::get_if<std::vector<RecordedScan>>(&decoded);
    if (!scans || scans->empty()) fail("the file is not whole");
    std::set<std::int64_t> stored;
    for (const RecordedScan& scan : *scans)
        stored.insert(scan.total);
    if (scans->size() == ScanHistoryStore::maximumScans)
        confirmed.erase(confirmed.begin(), confirmed.lower_bound(*stored.begin()));
    if (!std::includes(stored.begin(), stored.end(), confirmed.begin(), confirmed.end()))
        fail("a confirmed record is gone");
}

} // namespace

int main(int argumentCount, char** arguments) {
    const int kills = argumentCount > 1 ? std::atoi(arguments[1]) : 40;
    std::string base = (std::filesystem::temp_directory_path() / "history-stress-XXXXXX").string();
    if (!mkdtemp(base.data())) fail("no temporary folder");
    void* memory = mmap(nullptr, sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) fail("no shared memory");
    auto& next = *new (memory) Counter(0);
    std::mt19937 random(std::random_device{}());

    ScanHistoryStore store(base + "/history");
    std::set<std::int64_t> confirmed;
    std::array<Writer, 3> writers;
    for (Writer& writer : writers)
        writer.start(store.directory(), next);
    for (int count = 0; count < kills; ++count) {
        poll(nullptr, 0, static_cast<int>(random() % 60));
        Writer& writer = writers.at(random() % writers.size());
        writer.stop(confirmed);
        writer.start(store.directory(), next);
        for (const Writer& each : writers)
            each.collect(confirmed);
        check(store.filePath(), confirmed);
    }
    for (Writer& writer : writers)
        writer.stop(confirmed);
    check(store.filePath(), confirmed);
    if (!store.unreadableBackupPaths().empty()) fail("a whole file was set aside");
    if (!store.clear() || !std::filesystem::is_empty(store.directory())) fail("something was left behind");
    std::filesystem::remove_all(base);
    std::printf("%d kills, %d appends begun, none lost\n", kills, next.load());
}
