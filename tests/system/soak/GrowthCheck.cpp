#include "system/soak/GrowthCheck.h"

#include <algorithm>

namespace {

std::string KindsText(const HostFigures& figures) {
    std::string text;
    for (const auto& [kind, count] : figures.handleKinds) {
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + kind;
    }
    return text.empty() ? "" : " (" + text + ")";
}

std::string At(const Sample& sample) {
    return " after " + std::to_string(sample.jobs) + " jobs";
}

void CompareCounts(const Sample& first, const Sample& other, std::vector<std::string>& reasons) {
    if (other.figures.handles != first.figures.handles) {
        reasons.push_back(std::to_string(other.figures.handles) + " handles" + At(other) + KindsText(other.figures) +
                          ", " + std::to_string(first.figures.handles) + At(first) + KindsText(first.figures));
    }
    if (other.figures.threads != first.figures.threads) {
        reasons.push_back(std::to_string(other.figures.threads) + " threads" + At(other) + ", " +
                          std::to_string(first.figures.threads) + At(first));
    }
    if (other.figures.zombies != 0) {
        reasons.push_back(std::to_string(other.figures.zombies) + " zombies" + At(other));
    }
}

} // namespace

double BytesPerJob(const std::vector<Sample>& samples) {
    const auto count = static_cast<double>(samples.size());
    double jobs = 0;
    double bytes = 0;
    for (const Sample& sample : samples) {
        jobs += sample.jobs / count;
        bytes += static_cast<double>(sample.figures.privateBytes) / count;
    }
    double products = 0;
    double squares = 0;
    for (const Sample& sample : samples) {
        products += (sample.jobs - jobs) * (static_cast<double>(sample.figures.privateBytes) - bytes);
        squares += (sample.jobs - jobs) * (sample.jobs - jobs);
    }
    return squares > 0 ? products / squares : 0;
}

double AllowedBytesPerJob(const std::vector<Sample>& samples, const GrowthLimits& limits) {
    const int jobs = samples.empty() ? 1 : std::max(1, samples.back().jobs - samples.front().jobs);
    return limits.specifiedBytesPerJob + limits.noiseBytesPerJob + limits.noiseBytes / jobs;
}

std::vector<std::string> ReasonsNotFlat(const std::vector<Sample>& samples, const GrowthLimits& limits) {
    if (samples.size() < 2) {
        return {"fewer than two samples: nothing can be said"};
    }
    std::vector<std::string> reasons;
    for (const Sample& sample : samples) {
        CompareCounts(samples.front(), sample, reasons);
    }
    const double slope = BytesPerJob(samples);
    const double allowed = AllowedBytesPerJob(samples, limits);
    if (slope > allowed) {
        reasons.push_back("memory grows by " + std::to_string(slope) + " bytes a job, allowed are " +
                          std::to_string(allowed));
    }
    return reasons;
}
