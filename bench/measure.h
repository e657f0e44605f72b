// What a piece of work costs, and how a comparison with a yardstick is told.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

// Time in seconds, memory in kilobytes.
struct Cost {
    double wall = 0;
    // User and system time together, of the children that were waited for too.
    double cpu = 0;
    // Peak resident size. Only known of processes.
    double peak = 0;
};

// Runs work in this process. Its cost is without memory.
Cost costOf(const std::function<void()>& work);

// Runs work, which measures itself, in a process of its own. Returns what it tells. For work that
// holds much: a program counts into its peak what the process held that started it. Raises
// std::runtime_error when that fails.
Cost costToldByChild(const std::function<Cost()>& work);

// Runs a program with its output going to nowhere. Raises std::runtime_error when its status is not
// 0.
Cost costOfProgram(const std::vector<std::string>& arguments);

Cost mean(const Cost& left, const Cost& right);

// Subject and yardstick, measured side by side several times. The ratio is the median of the ratios
// of the pairs, so that a machine whose speed changes in the meantime does it no harm.
class Comparison {
  public:
    // name: of the subject, for the report.
    explicit Comparison(std::string name) : name_(std::move(name)) {}

    void add(const Cost& subject, const Cost& yardstick);

    // Prints a line for wall time and one for processor time. times: how often the measured work
    // was done. target: the highest good ratio. Returns false when a ratio is above it.
    bool tellTime(double target, int times = 1) const;

    // Prints a line for peak memory. allowance: in kilobytes, what the subject may take on top; the
    // ratio is that of the subject without it. The rest as in tellTime.
    bool tellPeak(double target, double allowance = 0) const;

  private:
    bool tell(const char* what, double Cost::*field, double scale, const char* unit, double target,
              double allowance = 0) const;

    std::string name_;
    std::vector<Cost> subject_;
    std::vector<Cost> yardstick_;
};

// Prints the heading of a group of comparisons.
void tellHeading(const std::string& title, const std::string& subject,
                 const std::string& yardstick);

}  // namespace bench
