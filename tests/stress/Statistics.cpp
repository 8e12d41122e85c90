#include "Statistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <QtGlobal>

namespace {

/// How many standard errors the 95 % interval reaches to either side with this many degrees
/// of freedom: Student's distribution, expanded about the normal one.
double studentQuantile(double degrees)
{
    constexpr double z = 1.959964;
    return z + (std::pow(z, 3) + z) / (4 * degrees)
        + (5 * std::pow(z, 5) + 16 * std::pow(z, 3) + 3 * z) / (96 * std::pow(degrees, 2))
        + (3 * std::pow(z, 7) + 19 * std::pow(z, 5) + 17 * std::pow(z, 3) - 15 * z)
        / (384 * std::pow(degrees, 3));
}

std::vector<double> logarithms(const std::vector<double> &values)
{
    std::vector<double> result;
    result.reserve(values.size());
    for (const double value : values)
        result.push_back(std::log(value));
    return result;
}

} // namespace

statistics::Line statistics::fit(const std::vector<double> &x, const std::vector<double> &y)
{
    Q_ASSERT(x.size() == y.size() && x.size() >= 3);
    const auto count = double(x.size());
    double meanX = 0;
    double meanY = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        meanX += x[i] / count;
        meanY += y[i] / count;
    }
    double spread = 0;
    double common = 0;
    for (std::size_t i = 0; i < x.size(); ++i) {
        spread += (x[i] - meanX) * (x[i] - meanX);
        common += (x[i] - meanX) * (y[i] - meanY);
    }
    Line line;
    line.slope = common / spread;
    line.intercept = meanY - line.slope * meanX;
    double rest = 0;
    for (std::size_t i = 0; i < x.size(); ++i)
        rest += std::pow(y[i] - line.intercept - line.slope * x[i], 2);
    const double degrees = count - 2;
    line.margin = studentQuantile(degrees) * std::sqrt(rest / degrees / spread);
    return line;
}

statistics::Line statistics::fitPower(const std::vector<double> &x, const std::vector<double> &y)
{
    return fit(logarithms(x), logarithms(y));
}

double statistics::percentile(std::vector<double> values, double share)
{
    Q_ASSERT(!values.empty());
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(share * double(values.size()));
    return values[std::size_t(std::max(rank, 1.0)) - 1];
}
