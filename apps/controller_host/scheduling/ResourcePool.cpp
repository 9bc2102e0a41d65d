#include "controller_host/scheduling/ResourcePool.h"

#include <algorithm>
#include <iterator>

void ResourcePool::Demand::SetAside(Amounts& free) const {
    for (const auto& [place, amount] : needed) {
        free[place] = std::max(free[place], amount) - amount;
    }
}

const std::size_t* ResourcePool::Demand::FirstLack(const Amounts& free) const {
    const auto lack =
        std::find_if(needed.begin(), needed.end(), [&](const auto& need) { return need.second > free[need.first]; });
    return lack == needed.end() ? nullptr : &lack->first;
}

void ResourcePool::Take(const Needs& needs) {
    for (const auto& [name, amount] : needs) {
        Sum& sum = taken[name];
        sum.low += static_cast<std::uint64_t>(amount);
        sum.carries += sum.low < static_cast<std::uint64_t>(amount) ? 1U : 0U;
    }
}

void ResourcePool::Return(const Needs& needs) {
    for (const auto& [name, amount] : needs) {
        const auto entry = taken.find(name);
        Sum& sum = entry->second;
        sum.carries -= sum.low < static_cast<std::uint64_t>(amount) ? 1U : 0U;
        sum.low -= static_cast<std::uint64_t>(amount);
        if (sum.low == 0 && sum.carries == 0) {
            taken.erase(entry);
        }
    }
}

std::int64_t ResourcePool::FreeOf(const std::wstring& name, std::int64_t capacity) const {
    const auto entry = taken.find(name);
    if (entry == taken.end()) {
        return std::max<std::int64_t>(capacity, 0);
    }
    const Sum& sum = entry->second;
    const bool isExhausted = capacity <= 0 || sum.carries > 0 || sum.low >= static_cast<std::uint64_t>(capacity);
    return isExhausted ? 0 : capacity - static_cast<std::int64_t>(sum.low);
}

ResourcePool::Amounts ResourcePool::Free() const {
    Amounts free;
    free.reserve(capacities.size());
    for (const auto& [name, capacity] : capacities) {
        free.push_back(FreeOf(name, capacity));
    }
    return free;
}

std::optional<ResourcePool::Demand> ResourcePool::DemandOf(const Needs& needs) const {
    if (NeverFitting(needs) != nullptr) {
        return std::nullopt;
    }
    std::vector<std::pair<std::size_t, std::int64_t>> places;
    places.reserve(needs.size());
    for (const auto& [name, amount] : needs) {
        const auto place = std::distance(capacities.begin(), capacities.find(name));
        places.emplace_back(static_cast<std::size_t>(place), amount);
    }
    return Demand(std::move(places));
}

const std::wstring* ResourcePool::NeverFitting(const Needs& needs) const {
    for (const auto& [name, amount] : needs) {
        const auto resource = capacities.find(name);
        if (resource == capacities.end() || resource->second < amount) {
            return &name;
        }
    }
    return nullptr;
}

const std::wstring& ResourcePool::NameOf(std::size_t place) const {
    return std::next(capacities.begin(), static_cast<std::ptrdiff_t>(place))->first;
}
