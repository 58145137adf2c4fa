#pragma once
// The generator's own random numbers: xoshiro256** seeded by SplitMix64.
// Only integer arithmetic, so a seed gives the same banks with any compiler
// and library (the standard distributions are not fixed across libraries).

#include <cstdint>

namespace bankgen {

class Random64 {
public:
    explicit Random64(std::uint64_t seed) {
        for (auto& w : s_) {
            seed += 0x9E3779B97F4A7C15ull;
            std::uint64_t z = seed;
            z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
            z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
            w = z ^ (z >> 31);
        }
    }

    std::uint64_t Next() {
        const std::uint64_t result = Rotl(s_[1] * 5, 7) * 9;
        const std::uint64_t t = s_[1] << 17;
        s_[2] ^= s_[0];
        s_[3] ^= s_[1];
        s_[1] ^= s_[2];
        s_[0] ^= s_[3];
        s_[2] ^= t;
        s_[3] = Rotl(s_[3], 45);
        return result;
    }

    // Uniform in 0..n-1 (n >= 1), by rejection so that no value is favoured.
    std::uint32_t Below(std::uint32_t n) {
        const std::uint64_t limit = UINT64_MAX - UINT64_MAX % n;
        std::uint64_t x;
        do x = Next();
        while (x >= limit);
        return static_cast<std::uint32_t>(x % n);
    }

    // Fisher-Yates shuffle of a random-access range.
    template <class It>
    void Shuffle(It first, It last) {
        const auto n = static_cast<std::uint32_t>(last - first);
        for (std::uint32_t i = n; i > 1; --i) {
            const std::uint32_t j = Below(i);
            auto tmp = first[i - 1];
            first[i - 1] = first[j];
            first[j] = tmp;
        }
    }

private:
    static std::uint64_t Rotl(std::uint64_t x, int k) { return (x << k) | (x >> (64 - k)); }
    std::uint64_t s_[4];
};

}  // namespace bankgen
