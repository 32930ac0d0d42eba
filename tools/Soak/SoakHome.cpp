// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "tools/Soak/SoakHome.h"

#include "LoadscopeCore/History/ScanHistoryStore.h"
#include "LoadscopeCore/Platform/AtomicFile.h"
#include "tools/Soak/Journal.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>

namespace loadscope::soak {
namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 41> claudeWords{
    "signed-out",    "auth-error",      "auth-error-text", "old-version",    "status-text",
    "status-flood",  "status-failed",   "is-error",        "is-error-empty", "not-json",
    "escape-prefix", "verbose-array",   "two-documents",   "no-session",     "empty",
    "binary",        "empty-report",    "no-table",        "no-total",       "no-total-usage",
    "no-usage",      "multi-turn",      "unknown-turns",   "no-categories",  "no-window",
    "window-1m",     "over-attributed", "huge-counts",     "hostile-names",  "hang",
    "ignore-term",   "stopped",         "closed-outputs",  "grandchild",     "slow",
    "flood",         "flood-both",      "crash",           "hang",           "ignore-term",
    "grandchild"};
constexpr std::array<std::string_view, 32> codexWords{"turn-completed",
                                                      "payload",
                                                      "usage-only",
                                                      "on-stderr",
                                                      "failed-but-measured",
                                                      "signed-out",
                                                      "api-key",
                                                      "api-key-configured",
                                                      "own-provider",
                                                      "refuses-ephemeral",
                                                      "offline",
                                                      "status-failed",
                                                      "status-flood",
                                                      "turn-failed",
                                                      "turn-failed-zero",
                                                      "not-json",
                                                      "empty",
                                                      "hang",
                                                      "ignore-term",
                                                      "reconnecting",
                                                      "slow",
                                                      "flood",
                                                      "crash",
                                                      "grandchild",
                                                      "hostile-text",
                                                      "items-with-tools",
                                                      "items-refused",
                                                      "items-other-form",
                                                      "items-hostile",
                                                      "items-hang",
                                                      "items-flood",
                                                      "items-crash"};

constexpr int wellBehavedOneIn = 2;
constexpr int hangingStatusOneIn = 60; ///< blocks scans for many seconds

void write(const std::string& path, std::string_view text) {
    std::error_code error;
    fs::create_directories(fs::path(path).parent_path(), error);
    std::ofstream(path, std::ios::binary | std::ios::trunc) << text;
}

template <typename Words>
std::string word(Dice& dice, const Words& words) {
    if (dice.oneIn(hangingStatusOneIn)) return "status-hang";
    return std::string(dice.oneIn(wellBehavedOneIn) ? std::string_view("ok") : dice.pick(words));
}

} // namespace

SoakHome::SoakHome(Dice& dice) {
    path_ = (fs::canonical(fs::temp_directory_path()) / "loadscope-soak-XXXXXX").string();
    if (mkdtemp(path_.data()) == nullptr) Journal::current().violated("no temporary folder");
    fs::current_path(path_); // where dialogs open
    fs::create_directory(path_ + "/run");
    fs::permissions(path_ + "/run", fs::perms::owner_all);
    setEnvironment();
    makeRepositories(dice);
    repairTools();
    write(exports() + "/no-folder", "a file\n");
}

SoakHome::~SoakHome() {
    std::error_code error;
    fs::permissions(path_ + "/src/no-access", fs::perms::owner_all, error);
    fs::remove_all(path_, error);
}

void SoakHome::setEnvironment() const {
    const std::pair<const char*, std::string> variables[] = {{"HOME", path_},
                                                             {"XDG_DATA_HOME", path_ + "/.local/share"},
                                                             {"XDG_CONFIG_HOME", path_ + "/.config"},
                                                             {"XDG_CACHE_HOME", path_ + "/.cache"},
                                                             {"XDG_RUNTIME_DIR", path_ + "/run"},
                                                             {"XDG_STATE_HOME", path_ + "/.local/state"},
                                                             {"PATH", "/usr/local/bin:/usr/bin:/bin"},
                                                             {"LC_ALL", "en_US.UTF-8"},
                                                             {"QT_QPA_PLATFORM", "offscreen"},
                                                             {"DBUS_SESSION_BUS_ADDRESS", "disabled:"},
                                                             {"LOADSCOPE_DEMO_DELAY", "0.1"},
                                                             {"LOADSCOPE_DEMO_FLOOD_MB", "6"}};
    for (const auto& [name, value] : variables)
        setenv(name, value.c_str(), 1);
    for (const char* name : {"CLAUDE_CONFIG_DIR", "CODEX_HOME", "CLAUDECODE", "DISPLAY", "WAYLAND_DISPLAY",
                             "LOADSCOPE_DEMO_CLAUDE", "LOADSCOPE_DEMO_CODEX"})
        unsetenv(name);
}

void SoakHome::makeRepositories(Dice& dice) {
    const std::string names[] = {"app",
                                 "a b  c",
                                 "-leading-dash",
                                 "quotes'\"`$(x)",
                                 "line\nbreak",
                                 "<b>markup</b>&amp;",
                                 "بحر-和-हिन्दी",
                                 "\u202Ereversed",
                                 "not-utf8-\xff\xfe",
                                 "long-" + std::string(200, 'n')};
    write(path_ + "/.claude/CLAUDE.md", "See @more.md\n" + std::string(700, 'p'));
    write(path_ + "/.claude/more.md", std::string(900, 'm'));
    write(path_ + "/src/CLAUDE.md", std::string(2000, 'i'));
    for (const std::string& name : names) {
        const std::string folder = path_ + "/src/" + name;
        write(folder + "/CLAUDE.md",
              "See @notes.md\n" + std::string(static_cast<std::size_t>(dice.between(1, 9000)), 'r'));
        write(folder + "/notes.md", std::string(static_cast<std::size_t>(dice.below(6000)), 'n'));
        good_.push_back(folder);
    }
    for (int number = 0; number < 150; ++number)
        write(good_[1] + "/sub" + std::to_string(number) + "/CLAUDE.md",
              std::string(static_cast<std::size_t>(dice.between(1, 40'000)), 's'));
    bad_ = {path_ + "/src/missing", path_ + "/src/CLAUDE.md", path_ + "/src/no-access", path_ + "/src/loop"};
    fs::create_directories(bad_[2]);
    fs::permissions(bad_[2], fs::perms::none);
    fs::create_directory_symlink(bad_[3], bad_[3]);
}

std::string SoakHome::historyFile() const {
    return path_ + "/.local/share/" + ScanHistoryStore::directoryName + '/' + ScanHistoryStore::fileName;
}

std::string SoakHome::goodFolder(Dice& dice) const { return dice.pick(good_); }

std::string SoakHome::anyFolder(Dice& dice) const {
    return dice.oneIn(6) ? dice.pick(bad_) : goodFolder(dice);
}

std::string SoakHome::drawBehaviour(Dice& dice) const {
    const std::string words =
        "claude " + word(dice, claudeWords) + "\ncodex " + word(dice, codexWords) + '\n';
    // Replaced at once, since a stand-in may be reading it.
    static_cast<void>(AtomicFile::write(toolPath("behaviour"), words));
    return words.substr(0, words.find('\n')) + ", " +
           words.substr(words.find('\n') + 1, words.size() - words.find('\n') - 2);
}

std::string SoakHome::toolPath(const std::string& tool) const { return path_ + "/.local/bin/" + tool; }

void SoakHome::installTool(const std::string& tool) const {
    std::error_code error;
    fs::create_directories(path_ + "/.local/bin", error);
    const std::string fresh = toolPath(tool) + ".new";
    fs::remove_all(toolPath(tool), error);
    fs::copy_file(std::string(LOADSCOPE_DEMO_BIN "/") + tool, fresh, fs::copy_options::overwrite_existing);
    fs::permissions(fresh, fs::perms(0755));
    fs::rename(fresh, toolPath(tool));
}

std::string SoakHome::breakTool(Dice& dice) const {
    const std::string tool = dice.oneIn(2) ? "claude" : "codex";
    std::error_code error;
    fs::remove_all(toolPath(tool), error);
    switch (dice.below(4)) {
    case 0:
        return tool + " removed";
    case 1:
        fs::create_directory(toolPath(tool), error);
        return tool + " is a folder";
    case 2:
        write(toolPath(tool), "no program\n");
        fs::permissions(toolPath(tool), fs::perms(0644), error);
        return tool + " may not be executed";
    default:
        write(toolPath(tool), "#!/no/such/interpreter\n");
        fs::permissions(toolPath(tool), fs::perms(0755), error);
        return tool + " has no interpreter";
    }
}

void SoakHome::repairTools() const {
    for (const char* tool : {"claude", "codex"})
        installTool(tool);
}

} // namespace loadscope::soak
