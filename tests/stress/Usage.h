#pragma once

#include <functional>

/// What this process uses up, as the kernel and the allocator tell it.
namespace usage {

/// Resident memory in KiB.
double residentKiB();
/// Memory that was allocated on the heap and not given back yet, in KiB.
double heapKiB();
int openFiles();
int threads();
/// All QObjects that can be reached from the application and its windows.
int objects();

/// Seconds of processor time that @p work takes in this process. Other processes that keep
/// the machine busy do not count.
double cpuSeconds(const std::function<void()> &work);

} // namespace usage
