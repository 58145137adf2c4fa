#pragma once
// modSort: a recursive quicksort of strings, highest first, by character
// code. The pivot is the middle entry, (low + high) / 2 rounded halves to
// even.

#include <string>
#include <vector>

namespace modSort {

void SortStrings(std::string* entries, int low, int high);

template <typename Container>
void SortStrings(Container& c, int low, int high) {
    SortStrings(c.data(), low, high);
}

}  // namespace modSort
