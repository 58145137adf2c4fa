// Reading the version file.
#include "core/VersionFile.h"

#include "core/vb.h"

namespace {

// Reads the next field from `pos`; the comma or line end after it is taken
// with it. Nothing when the text has no further field.
std::optional<std::string> ReadField(std::string_view text, std::size_t& pos) {
    const auto lineEnd = [&](std::size_t i) { return text[i] == '\r' || text[i] == '\n'; };
    while (pos < text.size() && (text[pos] == ' ' || text[pos] == '\t')) ++pos;
    if (pos >= text.size()) return std::nullopt;

    std::string field;
    if (text[pos] == '"') {
        const std::size_t close = text.find('"', pos + 1);
        const std::size_t end = close == std::string_view::npos ? text.size() : close;
        field = std::string(text.substr(pos + 1, end - pos - 1));
        pos = close == std::string_view::npos ? text.size() : close + 1;
        // Whatever stands between the closing quote and the delimiter goes.
        while (pos < text.size() && text[pos] != ',' && !lineEnd(pos)) ++pos;
    } else {
        const std::size_t start = pos;
        while (pos < text.size() && text[pos] != ',' && !lineEnd(pos)) ++pos;
        field = vb::Trim(text.substr(start, pos - start));
    }
    if (pos < text.size()) {
        if (text[pos] == '\r' && pos + 1 < text.size() && text[pos + 1] == '\n') ++pos;
        ++pos;
    }
    return field;
}

}  // namespace

std::optional<VersionFile> ParseVersionFile(std::string_view text) {
    if (text.size() > kMaxVersionFileBytes) return std::nullopt;
    if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
    std::size_t pos = 0;
    std::optional<std::string> newest = ReadField(text, pos);
    if (!newest) return std::nullopt;
    std::optional<std::string> address = ReadField(text, pos);
    if (!address) return std::nullopt;
    return VersionFile{std::move(*newest), std::move(*address)};
}

bool IsNewerVersion(const std::string& newest, int major, int minor) {
    const double theirs = vb::Val(newest) / 10.0;
    const double ours = major + minor / 10.0;
    return ours < theirs;
}
