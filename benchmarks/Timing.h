#pragma once

#include <functional>
#include <vector>

/// The seconds that `work` takes, by the steady clock.
double SecondsFor(const std::function<void()>& work);

/// The median; `values` is not empty.
double Median(std::vector<double> values);
