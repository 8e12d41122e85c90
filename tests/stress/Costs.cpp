#include "Costs.h"

#include <algorithm>

#include <QString>
#include <QtGlobal>

#include "Statistics.h"
#include "Usage.h"

namespace {

// Above a proportional growth and what scatters around it; a square would be 2.
constexpr double mostPower = 1.3;

} // namespace

Costs::Costs(std::string unit)
    : unit(std::move(unit))
{
}

void Costs::measure(const std::string &action, double size, const std::function<void()> &work)
{
    costs[action].push_back({size, usage::cpuSeconds(work)});
}

bool Costs::print() const
{
    bool isProportional = true;
    for (const auto &[action, runs] : costs) {
        std::map<double, double> least;
        std::vector<double> sizes;
        std::vector<double> seconds;
        for (const Run &run : runs) {
            const auto [place, isNew] = least.emplace(run.size, run.seconds);
            if (!isNew)
                place->second = std::min(place->second, run.seconds);
            sizes.push_back(run.size);
            seconds.push_back(run.seconds);
        }
        QString list;
        for (const auto &[size, time] : least)
            list += QStringLiteral(" %1: %2 ms,").arg(size, 0, 'f', 0).arg(time * 1000, 0, 'f', 2);
        const statistics::Line power = statistics::fitPower(sizes, seconds);
        qInfo("%s, by %s:%s growing with the power %.2f +- %.2f (95 %%)", action.c_str(),
              unit.c_str(), qPrintable(list), power.slope, power.margin);
        isProportional = isProportional && power.slope - power.margin < mostPower;
    }
    return isProportional;
}
