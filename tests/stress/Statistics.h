#pragma once

#include <vector>

/// What a series of measurements says, for the figures that the stress tests print.
namespace statistics {

/// The straight line through points, by least squares.
struct Line
{
    double slope = 0;
    double intercept = 0;
    /// The slope lies within this of the true one with a confidence of 95 %, as far as the
    /// points scatter independently of one another.
    double margin = 0;
};

/// The line through at least three points whose x are not all the same.
Line fit(const std::vector<double> &x, const std::vector<double> &y);

/// The power of x that y grows with: 1 where twice as much costs twice as much. All values
/// are positive.
Line fitPower(const std::vector<double> &x, const std::vector<double> &y);

/// The smallest value that at least this share (0 to 1) of the values does not exceed.
double percentile(std::vector<double> values, double share);

} // namespace statistics
