#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Counts what jobs have taken of the resources that the rules name. Not thread-safe.
class ResourcePool {
public:
    /// Positive amounts by name.
    using Needs = std::map<std::wstring, std::int64_t>;
    /// Amounts, in the order of the names of the rules' resources.
    using Amounts = std::vector<std::int64_t>;

    /// Needs as places in `Amounts`.
    class Demand {
    public:
        explicit Demand(std::vector<std::pair<std::size_t, std::int64_t>> places) : needed(std::move(places)) {}
        bool FitsInto(const Amounts& free) const { return FirstLack(free) == nullptr; }
        /// Takes the amounts out of `free`, of which nothing becomes negative.
        void SetAside(Amounts& free) const;
        /// The place of the first amount that is not free; null if all are.
        const std::size_t* FirstLack(const Amounts& free) const;

    private:
        std::vector<std::pair<std::size_t, std::int64_t>> needed;
    };

    /// Replaces the resources that exist. What is taken stays taken, even of a resource that no longer exists.
    void SetCapacities(const Needs& resources) { capacities = resources; }
    void Take(const Needs& needs);
    /// Gives back what `Take` took.
    void Return(const Needs& needs);
    /// What nobody has taken; nothing of a resource of which more is taken than exists.
    Amounts Free() const;
    /// Returns nothing if the needs never fit: a resource does not exist, or less of it exists than is needed.
    std::optional<Demand> DemandOf(const Needs& needs) const;
    /// The first resource that makes the needs never fit.
    const std::wstring* NeverFitting(const Needs& needs) const;
    const std::wstring& NameOf(std::size_t place) const;

private:
    /// A sum that never overflows: amounts may be as large as their type allows.
    struct Sum {
        std::uint64_t low = 0;
        std::uint64_t carries = 0;
    };

    std::int64_t FreeOf(const std::wstring& name, std::int64_t capacity) const;

    Needs capacities;
    std::map<std::wstring, Sum> taken;
};
