#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

/// Texts that are hard to serialise, built element by element because most cannot be written as literals.
std::vector<std::wstring> HostileStrings();

/// Texts of random elements, including lone surrogates and numbers beyond Unicode. Deterministic for a seed.
class RandomTexts {
public:
    explicit RandomTexts(std::uint32_t seed) : engine(seed) {}

    std::wstring operator()();
    std::vector<std::wstring> List();
    std::int32_t Number() { return static_cast<std::int32_t>(engine()); }
    /// 0 to `most`.
    std::size_t Count(std::size_t most) { return engine() % (most + 1); }

private:
    wchar_t Element();

    std::mt19937 engine;
};
