// Profile text: finding, replacing and adding keys in sections.
#include "core/Ini.h"

#include <cctype>
#include <climits>

#include "core/vb.h"

namespace {

bool IsSection(const std::string& line) {
    const std::string t = vb::TrimBlanks(line);
    return !t.empty() && t[0] == '[';
}

std::string SectionName(const std::string& line) {
    const std::string t = vb::TrimBlanks(line);
    if (t.empty() || t[0] != '[') return {};
    const auto close = t.find(']');
    if (close == std::string::npos) return {};
    return vb::LCase(vb::TrimBlanks(t.substr(1, close - 1)));
}

bool KeyOfLine(const std::string& line, std::string& key, std::string& value) {
    const std::string t = vb::TrimBlanks(line);
    if (t.empty() || t[0] == ';' || t[0] == '[') return false;
    const auto eq = t.find('=');
    if (eq == std::string::npos) return false;
    key = vb::LCase(vb::TrimBlanks(t.substr(0, eq)));
    value = vb::TrimBlanks(t.substr(eq + 1));
    if (value.size() >= 2 &&
        ((value.front() == '"' && value.back() == '"') || (value.front() == '\'' && value.back() == '\'')))
        value = value.substr(1, value.size() - 2);
    return true;
}

}  // namespace

IniText::IniText(std::string_view text) {
    if (text.empty()) return;
    lines_ = vb::SplitLines(text);
    if (!lines_.empty() && lines_.back().empty()) lines_.pop_back();
    // A CR at the very end, with no LF after it, ends the last line too.
    if (!lines_.empty() && !lines_.back().empty() && lines_.back().back() == '\r') lines_.back().pop_back();
}

std::optional<std::string> IniText::Get(const std::string& section, const std::string& key) const {
    const std::string s = vb::LCase(section), k = vb::LCase(key);
    bool in = false;
    for (const std::string& line : lines_) {
        if (IsSection(line)) {
            in = SectionName(line) == s;
            continue;
        }
        std::string lk, lv;
        if (in && KeyOfLine(line, lk, lv) && lk == k) return lv;
    }
    return std::nullopt;
}

void IniText::Set(const std::string& section, const std::string& key, std::string value) {
    for (char& c : value)
        if (c == '\r' || c == '\n') c = ' ';
    const std::string s = vb::LCase(section), k = vb::LCase(key);
    const std::string entry = key + "=" + value;
    bool in = false;
    std::size_t sectionAt = lines_.size(), lastKeyAt = lines_.size();
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (IsSection(lines_[i])) {
            if (in) break;  // the end of our section
            in = SectionName(lines_[i]) == s;
            if (in) sectionAt = lastKeyAt = i;
            continue;
        }
        if (!in) continue;
        std::string lk, lv;
        if (KeyOfLine(lines_[i], lk, lv)) {
            if (lk == k) {
                lines_[i] = entry;
                return;
            }
            lastKeyAt = i;
        }
    }
    if (sectionAt == lines_.size()) {
        lines_.push_back("[" + section + "]");
        lines_.push_back(entry);
        return;
    }
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(lastKeyAt + 1), entry);
}

std::string IniText::Text() const {
    std::string t;
    for (const std::string& line : lines_) t += line + "\n";
    return t;
}

std::int32_t ProfileInt(const std::string& text) {
    std::size_t i = 0;
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) negative = text[i++] == '-';
    long long v = 0;
    for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i) {
        v = v * 10 + (text[i] - '0');
        if (v > INT32_MAX) v = INT32_MAX;
    }
    return negative ? 0 : static_cast<std::int32_t>(v);
}
