// Ranking the high scores.
#include "core/HighScores.h"

#include "core/modSort.h"
#include "core/vb.h"

namespace {

// One past the comma's place, 0 when there is none.
int AfterComma(const std::string& entry) {
    const std::size_t comma = entry.find(',');
    return comma == std::string::npos ? 0 : static_cast<int>(comma) + 1;
}

}  // namespace

void RankHighScores(HighTable& entries) {
    for (auto& entry : entries) {
        const int pad = 7 - AfterComma(entry);
        if (pad >= 1 && pad <= 6) entry = std::string(static_cast<std::size_t>(pad), '0') + entry;
    }
    modSort::SortStrings(entries, 0, 13);
}

std::optional<HighRow> HighRowOf(const std::string& entry) {
    const int p = AfterComma(entry);
    if (p < 1 || p > 7) return std::nullopt;
    HighRow row;
    row.name = entry.substr(static_cast<std::size_t>(p));
    const std::string digits = entry.substr(0, static_cast<std::size_t>(p - 1));
    std::int32_t value = 0;
    if (vb::TryCLng(digits, value))
        row.score = value == 0 ? "" : vb::Str(value);
    else
        row.score = digits;
    return row;
}
