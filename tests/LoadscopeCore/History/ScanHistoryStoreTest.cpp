// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/History/ScanHistoryFile.h"
#include "tests/Support/HistoryRecords.h"
#include "tests/Support/Testing.h"

#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

struct ScanHistoryStoreTest : testing::Test {
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> list;
        for (const auto& entry : fs::directory_iterator(store.directory()))
            list.push_back(entry.path().filename().string());
        return list;
    }

    TemporaryFolder folder;
    ScanHistoryStore store{folder.path("data/Loadscope")};
    const std::string path = store.filePath();
    const RecordedScan scan = record(1, "app", day(1), 100);
    const std::string whole = ScanHistoryFile::encode({record(7, "old", day(1), 1)});
};

fs::perms mode(const std::string& path) { return fs::status(path).permissions(); }

TEST_F(ScanHistoryStoreTest, CreatesFolderAndFileForTheirOwnerOnly) {
    EXPECT_TRUE(store.load().empty() && store.clear() && !fs::exists(folder.path("data")));
    EXPECT_THAT(store.append(scan), ElementsAre(scan));
    EXPECT_EQ(readFile(path), ScanHistoryFile::encode({scan}));
    EXPECT_EQ(mode(path), fs::perms(0600));
    EXPECT_EQ(mode(store.directory()), fs::perms(0700));
}

TEST_F(ScanHistoryStoreTest, KeepsTheNewestInOrder) {
    std::vector<RecordedScan> many;
    for (int number = 10000; number > 0; --number)
        many.push_back(record(number, "app", day(1) + std::chrono::seconds(number), number));
    writeFile(path, ScanHistoryFile::encode(many));
    const RecordedScan a = record(9, "a", day(9), 1), b = record(0, "b", day(9), 2),
                       c = record(1, "b", day(9), 3);
    store.append(c), store.append(b);
    const std::vector<RecordedScan> kept = store.append(a);
    ASSERT_EQ(kept.size(), ScanHistoryStore::maximumScans);
    EXPECT_EQ(kept.front().total, 9804);
    EXPECT_TRUE(kept[197] == a && kept[198] == b && kept[199] == c);
    EXPECT_EQ(store.load(), kept);
}

TEST_F(ScanHistoryStoreTest, KeepsNewScansBesideThoseOfTheFuture) {
    const Timestamp now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    using std::chrono::hours;
    std::vector<RecordedScan> many;
    for (int number = 2; number < 200; ++number)
        many.push_back(record(number, "ahead", now + hours(25 + number), number));
    many.push_back(record(0, "old", now - hours(25), 0));
    many.push_back(record(1, "tomorrow", now + hours(23), 1));
    writeFile(path, ScanHistoryFile::encode(many));
    for (int number = 300; number < 303; ++number)
        store.append(record(number, "new", now, number));
    std::map<std::string, int> kept;
    for (const RecordedScan& scan : store.load())
        ++kept[scan.repositoryName];
    EXPECT_EQ(kept, (std::map<std::string, int>{{"ahead", 196}, {"new", 3}, {"tomorrow", 1}}))
        << "the old one goes before those of the future";
    EXPECT_EQ(store.load().back().total, 199) << "they stay in their place";
}

TEST_F(ScanHistoryStoreTest, SetsUnreadableFilesAsideAndNeverOverAnother) {
    for (const auto& [text, reason] :
         {std::pair<std::string, std::string>("?", "corrupt"), {R"({"version":2})", "version"}}) {
        const std::string first = "scan-history.unreadable-" + reason + ".json";
        const std::string second = "scan-history.unreadable-" + reason + "-2.json";
        writeFile(path, text);
        EXPECT_TRUE(store.load().empty());
        EXPECT_THAT(names(), ElementsAre(first));
        writeFile(path, text + "\n");
        EXPECT_TRUE(store.load().empty());
        EXPECT_THAT(names(), UnorderedElementsAre("scan-history.json", first))
            << "reading moves it over nothing";
        EXPECT_THAT(store.append(scan), ElementsAre(scan));
        const std::string base = store.directory() + "/";
        EXPECT_THAT(store.unreadableBackupPaths(), ElementsAre(base + first, base + second));
        EXPECT_EQ(readFile(base + first) + readFile(base + second), text + text + "\n");
        writeFile(base + "scan-history.unreadable-corrupt-02.json", "not ours");
        EXPECT_TRUE(store.clear());
        EXPECT_THAT(names(), ElementsAre("scan-history.unreadable-corrupt-02.json"));
        fs::remove_all(base);
    }
}

TEST_F(ScanHistoryStoreTest, SurvivesPathsThatAreNoFiles) {
    const std::string other = writeFile(folder.path("other"), "alias ll=ls");
    const std::vector<std::function<void()>> cases{
        [&] { fs::create_directory(path); },      [&] { EXPECT_EQ(mkfifo(path.c_str(), 0600), 0); },
        [&] { fs::create_symlink(path, path); },  [&] { fs::create_symlink("/dev/zero", path); },
        [&] { fs::create_symlink(other, path); }, [&] { writeFile(path + "/kept", "x"); }};
    for (const auto& make : cases) {
        fs::create_directories(store.directory());
        make();
        EXPECT_THAT(store.append(scan), ElementsAre(scan));
        EXPECT_THAT(store.load(), ElementsAre(scan));
        EXPECT_THAT(names(),
                    UnorderedElementsAre("scan-history.json", "scan-history.unreadable-corrupt.json"));
        const bool isFilled = fs::exists(store.unreadableBackupPaths().at(0) + "/kept");
        EXPECT_EQ(store.clear(), !isFilled) << "a folder goes only when it is empty";
        fs::remove_all(store.directory());
    }
    EXPECT_EQ(readFile(other), "alias ll=ls");
}

TEST_F(ScanHistoryStoreTest, RemovesWhatAWriterThatDiedLeftBehind) {
    store.append(scan);
    const std::string left = store.directory() + "/.loadscope-aB3xyZ";
    for (const auto& [name, age, isLeft] :
         {std::tuple(left, 50, true), {left, 70, false}, {left + "4", 70, true}}) {
        writeFile(name, "");
        fs::last_write_time(name, fs::file_time_type::clock::now() - std::chrono::seconds(age));
        store.append(scan);
        EXPECT_EQ(fs::exists(name), isLeft) << age;
    }
    writeFile(left, "");
    EXPECT_TRUE(store.clear() && !fs::exists(left) && fs::exists(left + "4"));
}

TEST_F(ScanHistoryStoreTest, WritesAndClearsThroughLinks) {
    const std::string target = folder.path("elsewhere.json");
    makeFolder(store.directory());
    fs::create_symlink(target, path);
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(store.load().empty());
        EXPECT_THAT(store.append(scan), ElementsAre(scan));
        EXPECT_EQ(readFile(target), ScanHistoryFile::encode({scan}));
        EXPECT_TRUE(store.clear() && !fs::exists(target) && fs::is_symlink(path));
    }
}

TEST_F(ScanHistoryStoreTest, LosesNothingWithoutPermission) {
    // The link cannot be moved, and through it an unreadable file could only be overwritten.
    const std::string open = makeFolder(folder.path("open"));
    fs::permissions(open, fs::perms::all);
    ScanHistoryStore linked(makeFolder(folder.path("linked"))), own(open + "/own");
    fs::create_symlink(writeFile(open + "/history.json", "not JSON"), linked.filePath());
    EXPECT_TRUE(holdsForOrdinaryUser([&] {
        return linked.append(scan).size() == 1 && linked.load().empty() && own.append(scan).size() == 1 &&
               chmod(own.filePath().c_str(), 0) == 0 && own.append(scan).size() == 1 &&
               own.unreadableBackupPaths().size() == 1 && own.load().size() == 1;
    }));
    EXPECT_EQ(readFile(open + "/history.json"), "not JSON");
}

TEST_F(ScanHistoryStoreTest, KeepsTheOldFileWhenTheDiskOrTheDescriptorsRunOut) {
    writeFile(path, whole);
    for (const auto& shared : {folder.path("data"), store.directory(), path})
        fs::permissions(shared, fs::perms::all);
    EXPECT_TRUE(holdsForOrdinaryUser([&] {
        const rlimit bytes{whole.size() + 10, whole.size() + 10}, descriptors{3, 3};
        signal(SIGXFSZ, SIG_IGN);
        return setrlimit(RLIMIT_FSIZE, &bytes) == 0 && store.append(scan).size() == 2 &&
               setrlimit(RLIMIT_NOFILE, &descriptors) == 0 && store.load().empty() &&
               store.append(scan).size() == 1;
    }));
    EXPECT_EQ(readFile(path), whole);
    EXPECT_THAT(names(), ElementsAre("scan-history.json"));
}

TEST_F(ScanHistoryStoreTest, LosesNoRecordOfTwoProcesses) {
    const pid_t child = fork();
    for (int number = 0; number < 100; ++number)
        ScanHistoryStore(store.directory()).append(record(number, child == 0 ? "b" : "a", day(1), number));
    if (child == 0) _exit(0);
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_EQ(store.load().size(), 200U);
}

TEST_F(ScanHistoryStoreTest, MergesWhatIsNotThereYet) {
    const auto figures = [](const ScanHistoryStore::Merge& merge) {
        return std::tuple(merge.taken, merge.known, merge.tooOld, merge.isStored);
    };
    EXPECT_EQ(figures(store.merge({})), std::tuple(0U, 0U, 0U, true));
    EXPECT_FALSE(fs::exists(folder.path("data")));
    const RecordedScan other = record(2, "other", day(2), 7);
    RecordedScan same = other;
    same.total = 8;
    EXPECT_EQ(figures(store.merge({other, scan, same})), std::tuple(2U, 1U, 0U, true));
    EXPECT_THAT(store.load(), ElementsAre(scan, other)) << "in the store's order, the first of an identifier";
    const auto before = fs::last_write_time(path);
    EXPECT_EQ(figures(store.merge({other, scan})), std::tuple(0U, 2U, 0U, true));
    EXPECT_EQ(fs::last_write_time(path), before) << "nothing to write";
    std::vector<RecordedScan> many;
    for (int number = 10; number < 10 + 205; ++number)
        many.push_back(record(number, "app", day(10) + std::chrono::seconds(number), number));
    EXPECT_EQ(figures(store.merge(many)), std::tuple(200U, 0U, 5U, true));
    EXPECT_EQ(store.load().front().total, 15);
    EXPECT_EQ(figures(store.merge({scan})), std::tuple(0U, 0U, 1U, true));
    writeFile(path, "?");
    EXPECT_EQ(figures(store.merge({scan})), std::tuple(1U, 0U, 0U, true));
    EXPECT_THAT(names(), UnorderedElementsAre("scan-history.json", "scan-history.unreadable-corrupt.json"));
    EXPECT_TRUE(holdsForOrdinaryUser(
        [] { return !ScanHistoryStore("/no").merge({record(1, "a", day(1), 1)}).isStored; }));
}

TEST_F(ScanHistoryStoreTest, LosesNothingWhenTwoProcessesMerge) {
    const pid_t child = fork();
    std::vector<RecordedScan> part;
    for (int number = 0; number < 100; ++number) {
        part.push_back(record(number + (child == 0 ? 1000 : 0), "app", day(1), number));
        if (part.size() < 10) continue;
        ScanHistoryStore(store.directory()).merge(part);
        part.clear();
    }
    if (child == 0) _exit(0);
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
    EXPECT_EQ(store.load().size(), 200U);
}

TEST_F(ScanHistoryStoreTest, GoesOnWhenTheLockIsNeverFreed) {
    store.append(scan);
    FolderLock holder(store.directory());
    const std::lock_guard held(holder);
    store.append(scan);
    EXPECT_THAT(store.load(), ElementsAre(scan, scan)) << "equal identifiers are kept";
}

} // namespace
