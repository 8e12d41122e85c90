#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What actions cost in processor time at several sizes, and whether that is in proportion.
class Costs
{
public:
    /// @p unit is printed behind the sizes.
    explicit Costs(std::string unit);

    /// Runs the work and remembers its cost. Each action is measured at three sizes or more.
    void measure(const std::string &action, double size, const std::function<void()> &work);

    /// Prints the cheapest run of each size, and the power of the size that the cost grows
    /// with. False if an action grows faster than in proportion.
    bool print() const;

private:
    struct Run
    {
        double size;
        double seconds;
    };

    std::string unit;
    std::map<std::string, std::vector<Run>> costs;
};
