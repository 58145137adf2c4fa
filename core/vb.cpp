// The small string and number rules the game's texts are read and written by.
#include "core/vb.h"

#include <cctype>
#include <charconv>
#include <climits>
#include <cmath>

namespace vb {

namespace {

// Numbers in settings, saved games and the version file are written and read
// the same in every locale: never through strtod or printf, which follow the
// user's decimal comma once the application has set the locale.
double ParsePlain(std::string_view num) {
    if (!num.empty() && num.front() == '+') num.remove_prefix(1);
    double v = 0.0;
    const auto [end, ec] = std::from_chars(num.data(), num.data() + num.size(), v);
    if (ec == std::errc::result_out_of_range) {
        // Only a run of digits too long for a double gets here: huge when
        // its whole part is not nought, else as good as nought.
        const std::string_view whole = num.substr(0, num.find('.'));
        return whole.find_first_not_of("-0") == std::string_view::npos ? 0.0 : HUGE_VAL;
    }
    return ec == std::errc() ? v : 0.0;
}

}  // namespace

std::string LCase(std::string_view s) {
    std::string r(s);
    for (char& c : r) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return r;
}

bool ContainsNoCase(std::string_view haystack, std::string_view needle) {
    return LCase(haystack).find(LCase(needle)) != std::string::npos;
}

double Val(std::string_view s) {
    std::size_t i = 0;
    while (i < s.size() && (s[i] == ' ' || s[i] == '\t')) ++i;
    std::string num;
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) num += s[i++];
    bool digits = false, dot = false;
    for (; i < s.size(); ++i) {
        char c = s[i];
        if (std::isdigit(static_cast<unsigned char>(c))) {
            num += c;
            digits = true;
        } else if (c == '.' && !dot) {
            num += c;
            dot = true;
        } else {
            break;
        }
    }
    if (!digits) return 0.0;
    double v = ParsePlain(num);
    if (!std::isfinite(v)) return 0.0;
    return v;
}

bool TryCLng(std::string_view s, std::int32_t& out) {
    std::string t = Trim(s);
    if (t.empty()) return false;
    std::size_t i = 0;
    if (t[i] == '-' || t[i] == '+') ++i;
    bool digits = false, dot = false;
    for (; i < t.size(); ++i) {
        if (std::isdigit(static_cast<unsigned char>(t[i])))
            digits = true;
        else if (t[i] == '.' && !dot)
            dot = true;
        else
            return false;
    }
    if (!digits) return false;
    double v = ParsePlain(t);
    if (!std::isfinite(v) || v > INT32_MAX || v < INT32_MIN) return false;
    out = CLng(v);
    return true;
}

double RoundHalfEven(double x) { return std::nearbyint(x); }

std::int32_t CLng(double x) {
    double r = RoundHalfEven(x);
    if (!(r == r)) return 0;
    if (r > INT32_MAX) return INT32_MAX;
    if (r < INT32_MIN) return INT32_MIN;
    return static_cast<std::int32_t>(r);
}

std::string Str(long long n) { return std::to_string(n); }

std::string NumText(double x) {
    if (!std::isfinite(x)) return "0";
    if (x == std::floor(x) && std::fabs(x) < 1e15) return std::to_string(static_cast<long long>(x));
    // The shortest text that reads back as the same number, with a point.
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::general);
    return std::string(buf, res.ptr);
}

std::string Remove(std::string_view s, std::string_view what) {
    std::string r;
    if (what.empty()) return std::string(s);
    std::size_t pos = 0;
    while (true) {
        std::size_t f = s.find(what, pos);
        if (f == std::string_view::npos) {
            r.append(s.substr(pos));
            break;
        }
        r.append(s.substr(pos, f - pos));
        pos = f + what.size();
    }
    return r;
}

std::string Trim(std::string_view s) {
    std::size_t b = 0, e = s.size();
    while (b < e && s[b] == ' ') ++b;
    while (e > b && s[e - 1] == ' ') --e;
    return std::string(s.substr(b, e - b));
}

std::string TrimBlanks(std::string_view s) {
    std::size_t b = 0, e = s.size();
    while (b < e && (s[b] == ' ' || s[b] == '\t')) ++b;
    while (e > b && (s[e - 1] == ' ' || s[e - 1] == '\t')) --e;
    return std::string(s.substr(b, e - b));
}

std::vector<std::string> SplitLines(std::string_view text) {
    std::vector<std::string> lines;
    std::size_t pos = 0;
    while (true) {
        const auto at = text.find('\n', pos);
        if (at == std::string_view::npos) {
            lines.emplace_back(text.substr(pos));
            return lines;
        }
        const std::size_t end = at > pos && text[at - 1] == '\r' ? at - 1 : at;
        lines.emplace_back(text.substr(pos, end - pos));
        pos = at + 1;
    }
}

}  // namespace vb
