#include "measure.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <stdexcept>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double processorTime(const rusage& usage) {
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double processorTime() {
    rusage self{};
    rusage children{};
    getrusage(RUSAGE_SELF, &self);
    getrusage(RUSAGE_CHILDREN, &children);
    return processorTime(self) + processorTime(children);
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

template <class Function>
double medianOf(std::size_t count, const Function& function) {
    std::vector<double> values;
    for (std::size_t i = 0; i < count; ++i) {
        values.push_back(function(i));
    }
    return median(values);
}

[[noreturn]] void becomeProgram(const std::vector<std::string>& arguments) {
    std::vector<char*> argv;
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    execvp(argv[0], argv.data());
    _exit(127);
}

pid_t startChild(const std::function<void()>& work) {
    const pid_t pid = fork();
    if (pid < 0) {
        throw std::runtime_error("fork failed");
    }
    if (pid > 0) {
        return pid;
    }
    try {
        work();
        _exit(0);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        _exit(1);
    }
}

rusage waitForChild(pid_t pid) {
    int status = 0;
    rusage usage{};
    if (wait4(pid, &status, 0, &usage) < 0 || status != 0) {
        throw std::runtime_error("the measured process failed");
    }
    return usage;
}

}  // namespace

Cost costOf(const std::function<void()>& work) {
    const double cpu = processorTime();
    const auto start = Clock::now();
    work();
    return {secondsSince(start), processorTime() - cpu};
}

Cost costToldByChild(const std::function<Cost()>& work) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("pipe failed");
    }
    const pid_t pid = startChild([&] {
        const Cost cost = work();
        if (write(ends[1], &cost, sizeof(cost)) != sizeof(cost)) {
            throw std::runtime_error("cannot tell a cost");
        }
    });
    close(ends[1]);
    Cost cost;
    const bool isTold = read(ends[0], &cost, sizeof(cost)) == sizeof(cost);
    close(ends[0]);
    waitForChild(pid);
    if (!isTold) {
        throw std::runtime_error("the measured process told nothing");
    }
    return cost;
}

Cost costOfProgram(const std::vector<std::string>& arguments) {
    const auto start = Clock::now();
    const rusage usage = waitForChild(startChild([&] { becomeProgram(arguments); }));
    return {secondsSince(start), processorTime(usage), static_cast<double>(usage.ru_maxrss)};
}

Cost mean(const Cost& left, const Cost& right) {
    return {(left.wall + right.wall) / 2, (left.cpu + right.cpu) / 2, (left.peak + right.peak) / 2};
}

void Comparison::add(const Cost& subject, const Cost& yardstick) {
    subject_.push_back(subject);
    yardstick_.push_back(yardstick);
}

bool Comparison::tellTime(double target, int times) const {
    const bool isLong = subject_.front().wall / times > 0.1;
    const double scale = (isLong ? 1 : 1e3) / times;
    const char* const unit = isLong ? "s" : "ms";
    const bool isWallOk = tell("wall", &Cost::wall, scale, unit, target);
    return tell("cpu", &Cost::cpu, scale, unit, target) && isWallOk;
}

bool Comparison::tellPeak(double target, double allowance) const {
    return tell("peak", &Cost::peak, 1.0 / 1024, "MB", target, allowance);
}

bool Comparison::tell(const char* what, double Cost::*field, double scale, const char* unit,
                      double target, double allowance) const {
    const std::size_t count = subject_.size();
    const double ratio = medianOf(count, [&](std::size_t i) {
        return (subject_[i].*field - allowance) / yardstick_[i].*field;
    });
    const double subject = medianOf(count, [&](std::size_t i) { return subject_[i].*field; });
    const double yardstick = medianOf(count, [&](std::size_t i) { return yardstick_[i].*field; });
    const bool isOk = ratio <= target;
    std::printf("  %-38s %-4s %9.3f %-2s %9.3f %-2s %7.3f  <= %5.2f  %s\n", name_.c_str(), what,
                subject * scale, unit, yardstick * scale, unit, ratio, target,
                isOk ? "ok" : "MISSED");
    std::fflush(stdout);
    return isOk;
}

void tellHeading(const std::string& title, const std::string& subject,
                 const std::string& yardstick) {
    std::printf("\n%s\n  subject: %s\n  yardstick: %s\n", title.c_str(), subject.c_str(),
                yardstick.c_str());
    std::printf("  %-38s %-4s %12s %12s %7s  %8s\n", "", "", "subject", "yardstick", "ratio",
                "target");
    std::fflush(stdout);
}

}  // namespace bench
