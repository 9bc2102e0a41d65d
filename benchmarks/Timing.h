#pragma once

#include <functional>
#include <vector>

/// The seconds that `work` takes, by the steady clock.
double SecondsFor(const std::function<void()>& work);

/// The value below which the given share (0 to 1) of the values is; `values` is not empty.
double Quantile(std::vector<double> values, double share);

double Median(std::vector<double> values);
