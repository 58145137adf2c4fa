// Words, paths and numbers of a scenario line.
#include "sim/Lexer.h"

#include <cctype>
#include <charconv>
#include <cmath>

namespace scenario {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsNameChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

}  // namespace

bool Tokenize(std::string_view line, std::vector<Token>& words, std::string& error) {
    words.clear();
    std::size_t i = 0;
    while (i < line.size() && IsBlank(line[i])) ++i;
    if (i < line.size() && line[i] == '#') return true;

    while (i < line.size()) {
        if (IsBlank(line[i])) {
            ++i;
            continue;
        }
        Token t;
        const std::size_t begin = i;
        if (line[i] == '"') {
            t.quoted = true;
            ++i;
            bool closed = false;
            while (i < line.size()) {
                const char c = line[i];
                if (c == '"') {
                    closed = true;
                    ++i;
                    break;
                }
                if (c == '\\') {
                    if (i + 1 >= line.size()) {
                        error = "a backslash ends the line inside a quoted word";
                        return false;
                    }
                    const char e = line[i + 1];
                    switch (e) {
                        case '"': t.text += '"'; break;
                        case '\\': t.text += '\\'; break;
                        case 'r': t.text += '\r'; break;
                        case 'n': t.text += '\n'; break;
                        case 't': t.text += '\t'; break;
                        default:
                            error = std::string("unknown escape \\") + e +
                                    " in a quoted word (known: \\\" \\\\ \\r \\n \\t)";
                            return false;
                    }
                    i += 2;
                    continue;
                }
                t.text += c;
                ++i;
            }
            if (!closed) {
                error = "a quoted word is not closed (column " + std::to_string(begin + 1) + ")";
                return false;
            }
            if (i < line.size() && !IsBlank(line[i])) {
                error = "a blank must follow the closing quote (column " + std::to_string(i + 1) + ")";
                return false;
            }
        } else {
            while (i < line.size() && !IsBlank(line[i])) {
                if (line[i] == '"') {
                    error = "a double quote inside a word (column " + std::to_string(i + 1) + "): quote the whole word";
                    return false;
                }
                t.text += line[i];
                ++i;
            }
        }
        words.push_back(std::move(t));
    }
    return true;
}

bool SplitPath(const std::string& text, PathPieces& p) {
    p = PathPieces{};
    auto name = [&text](std::size_t i) {
        while (i < text.size() && IsNameChar(text[i])) ++i;
        return i;
    };
    std::size_t start = name(0);
    if (text.compare(0, 3, "frm") == 0 && start < text.size() && text[start] == '.')
        p.form = text.substr(0, start++);
    else
        start = 0;
    std::size_t i = name(start);
    p.name = text.substr(start, i - start);
    const std::size_t close = text.rfind(')');
    if (i < text.size() && text[i] == '(' && close != std::string::npos && close > i) {
        p.hasArg = true;
        p.arg = text.substr(i + 1, close - i - 1);
        i = close + 1;
    }
    if (i < text.size() && text[i] == '.') {
        p.hasProp = true;
        const std::size_t end = name(i + 1);
        p.prop = text.substr(i + 1, end - i - 1);
        i = end;
    }
    return !p.name.empty() && i == text.size() && !(p.hasProp && p.prop.empty());
}

bool ParseInt(std::string_view s, long long& out) {
    std::size_t i = 0;
    if (i < s.size() && s[i] == '-') ++i;
    if (i == s.size()) return false;
    for (std::size_t j = i; j < s.size(); ++j)
        if (!IsDigit(s[j])) return false;
    long long v = 0;
    const auto r = std::from_chars(s.data(), s.data() + s.size(), v);
    if (r.ec != std::errc() || r.ptr != s.data() + s.size()) return false;
    out = v;
    return true;
}

bool ParseDecimal(std::string_view s, double& out) {
    std::size_t i = 0;
    if (i < s.size() && s[i] == '-') ++i;
    bool digits = false, dot = false;
    for (; i < s.size(); ++i) {
        if (IsDigit(s[i]))
            digits = true;
        else if (s[i] == '.' && !dot)
            dot = true;
        else
            return false;
    }
    if (!digits) return false;
    double v = 0;
    const auto r = std::from_chars(s.data(), s.data() + s.size(), v, std::chars_format::fixed);
    if (r.ec != std::errc() || r.ptr != s.data() + s.size() || !std::isfinite(v)) return false;
    out = v;
    return true;
}

}  // namespace scenario
