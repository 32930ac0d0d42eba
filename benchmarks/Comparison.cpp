// SPDX-FileCopyrightText: The Loadscope authors
// SPDX-License-Identifier: MIT
#include "benchmarks/Comparison.h"
#include "benchmarks/Figures.h"

#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace loadscope {
namespace {

using Figures::median;
using Figures::number;

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

bool hasGoal(const Comparison& comparison) { return comparison.factor > 0 || comparison.seconds > 0; }

std::string goalOf(const Comparison& comparison) {
    if (!hasGoal(comparison)) return "-";
    if (!comparison.reference) return "<= " + number(comparison.seconds * 1000, 0) + " ms";
    std::string goal = "<= " + number(comparison.factor, 2);
    if (comparison.seconds > 0) goal += " + " + number(comparison.seconds * 1000, 0) + " ms";
    return goal;
}

} // namespace

bool runComparison(const Comparison& comparison) {
    std::vector<double> ours;
    std::vector<double> reference;
    for (int round = 0; round <= comparison.rounds; ++round) {
        const double first = secondsOf(comparison.ours);
        const double second = comparison.reference ? secondsOf(comparison.reference) : 0;
        if (round == 0) continue; // warms the caches
        ours.push_back(first);
        reference.push_back(second);
    }
    const double limit = median(reference) * comparison.factor + comparison.seconds;
    const bool holds = !hasGoal(comparison) || median(ours) <= limit;
    const std::string other = comparison.reference ? number(median(reference) * 1000, 2) : "-";
    const std::string ratio = comparison.reference ? number(median(ours) / median(reference), 2) : "-";
    std::cout << comparison.what << '\t' << number(median(ours) * 1000, 2) << '\t' << other << '\t' << ratio
              << '\t' << goalOf(comparison) << '\t'
              << (!hasGoal(comparison) ? "-"
                  : holds              ? "yes"
                                       : "NO")
              << std::endl;
    return holds;
}

void runProgram(const std::vector<std::string>& arguments, const std::string& folder) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    int status = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (status == 0) waitpid(child, &status, 0);
    if (status == 0) return;
    std::cerr << "Failed: " << arguments.front() << '\n';
    std::exit(1);
}

} // namespace loadscope
