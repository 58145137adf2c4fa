// The quicksort of the high-score entries, highest first.
#include "core/modSort.h"

#include <utility>

#include "core/vb.h"

namespace modSort {

namespace {

// Comparison by character code, case sensitive.
bool Greater(const std::string& a, const std::string& b) {
    // Unsigned bytes, as character codes compare.
    const std::size_t n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t k = 0; k < n; ++k) {
        const auto x = static_cast<unsigned char>(a[k]), y = static_cast<unsigned char>(b[k]);
        if (x != y) return x > y;
    }
    return a.size() > b.size();
}

}  // namespace

void SortStrings(std::string* entries, int low, int high) {
    int i = low, j = high;
    const std::string pivot = entries[vb::CLng((static_cast<double>(low) + high) / 2.0)];
    while (i <= j) {
        while (Greater(entries[i], pivot) && i < high) ++i;
        while (Greater(pivot, entries[j]) && j > low) --j;
        if (i > j) break;
        std::swap(entries[i], entries[j]);
        ++i;
        --j;
    }
    if (low < j) SortStrings(entries, low, j);
    if (i < high) SortStrings(entries, i, high);
}

}  // namespace modSort
