#pragma once
// Small helpers shared by the fuzz targets.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace fuzz {

// A property that must hold for every input; a failure is a finding, and
// libFuzzer keeps the input that caused it.
inline void Require(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "fuzz: property broken: %s\n", what);
    std::abort();
}

inline std::string Text(const std::uint8_t* data, std::size_t size) {
    return std::string(reinterpret_cast<const char*>(data), size);
}

// The parts of a text between the separators; a text of n separators has
// n + 1 parts.
inline std::vector<std::string> Split(const std::string& text, char sep) {
    std::vector<std::string> parts;
    std::size_t pos = 0;
    while (true) {
        const std::size_t at = text.find(sep, pos);
        if (at == std::string::npos) {
            parts.push_back(text.substr(pos));
            return parts;
        }
        parts.push_back(text.substr(pos, at - pos));
        pos = at + 1;
    }
}

}  // namespace fuzz
