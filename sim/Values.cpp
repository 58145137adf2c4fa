// How scenario values print and read.
#include "sim/Values.h"

#include <charconv>
#include <cmath>
#include <cstdio>

#include "sim/Lexer.h"

namespace scenario {

std::string EscapeText(std::string_view text) {
    std::string r;
    r.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '\r': r += "\\r"; break;
            case '\n': r += "\\n"; break;
            case '\t': r += "\\t"; break;
            case '\\': r += "\\\\"; break;
            default: r += c;
        }
    }
    return r;
}

std::string FormatBool(bool v) { return v ? "True" : "False"; }

std::string FormatColour(std::int32_t bgr) {
    const auto u = static_cast<std::uint32_t>(bgr);
    char buf[16];
    if (u <= 0xFFFFFFu)
        std::snprintf(buf, sizeof buf, "&H%06X", u);
    else
        std::snprintf(buf, sizeof buf, "&H%08X", u);
    return buf;
}

std::string FormatFloat(float v) {
    if (!std::isfinite(v)) return std::isnan(v) ? "NaN" : (v > 0 ? "Infinity" : "-Infinity");
    if (v == 0) return "0";  // also minus zero
    char buf[64];
    const auto r = std::to_chars(buf, buf + sizeof buf, v, std::chars_format::fixed);
    if (r.ec != std::errc()) return "0";
    return std::string(buf, r.ptr);
}

std::string FormatValue(ValueKind kind, const Value& v) {
    switch (kind) {
        case ValueKind::Bool: return FormatBool(v.b);
        case ValueKind::Int: return std::to_string(v.i);
        case ValueKind::Colour: return FormatColour(static_cast<std::int32_t>(v.i));
        case ValueKind::Float: return FormatFloat(v.f);
        case ValueKind::Text: return v.s;
    }
    return v.s;
}

bool ParseBool(std::string_view s, bool& out) {
    auto same = [](std::string_view a, std::string_view b) {
        if (a.size() != b.size()) return false;
        for (std::size_t i = 0; i < a.size(); ++i) {
            char c = a[i];
            if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
            if (c != b[i]) return false;
        }
        return true;
    };
    if (same(s, "true")) {
        out = true;
        return true;
    }
    if (same(s, "false")) {
        out = false;
        return true;
    }
    return false;
}

bool ParseColour(std::string_view s, std::int32_t& out) {
    if (s.size() > 2 && s[0] == '&' && (s[1] == 'H' || s[1] == 'h')) {
        const std::string_view hex = s.substr(2);
        if (hex.size() > 8) return false;
        std::uint32_t v = 0;
        const auto r = std::from_chars(hex.data(), hex.data() + hex.size(), v, 16);
        if (r.ec != std::errc() || r.ptr != hex.data() + hex.size()) return false;
        out = static_cast<std::int32_t>(v);
        return true;
    }
    long long v = 0;
    if (!ParseInt(s, v) || v < INT32_MIN || v > INT32_MAX) return false;
    out = static_cast<std::int32_t>(v);
    return true;
}

bool ParseValue(ValueKind kind, long long lo, long long hi, const std::string& text, Value& out, std::string& error) {
    out = Value{};
    switch (kind) {
        case ValueKind::Bool:
            if (ParseBool(text, out.b)) return true;
            error = "\"" + EscapeText(text) + "\" is not a Boolean (True or False)";
            return false;
        case ValueKind::Int:
            if (!ParseInt(text, out.i)) {
                error = "\"" + EscapeText(text) + "\" is not a whole decimal number";
                return false;
            }
            if (out.i < lo || out.i > hi) {
                error = std::to_string(out.i) + " is out of range " + std::to_string(lo) + " to " + std::to_string(hi);
                return false;
            }
            return true;
        case ValueKind::Colour: {
            std::int32_t c = 0;
            if (!ParseColour(text, c)) {
                error = "\"" + EscapeText(text) + "\" is not a colour (&HBBGGRR or a decimal number)";
                return false;
            }
            out.i = c;
            return true;
        }
        case ValueKind::Float: {
            double d = 0;
            if (!ParseDecimal(text, d) || std::fabs(d) > 3.4e38) {
                error = "\"" + EscapeText(text) + "\" is not a decimal number";
                return false;
            }
            out.f = static_cast<float>(d);
            return true;
        }
        case ValueKind::Text: out.s = text; return true;
    }
    return false;
}

}  // namespace scenario
