#pragma once
// Values of the scenario paths: their kinds, how they print and how a text
// given in a scenario reads as one.

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace scenario {

enum class ValueKind { Bool, Int, Colour, Float, Text };

// One value; `kind` of the path says which member counts.
struct Value {
    bool b = false;
    long long i = 0;
    float f = 0;
    std::string s;
};

// A plain field's value and back, and the kind of value a field's type reads as.
inline Value ToValue(bool b) { return Value{b, 0, 0, {}}; }
inline Value ToValue(float f) { return Value{false, 0, f, {}}; }
inline Value ToValue(std::string s) { return Value{false, 0, 0, std::move(s)}; }
template <class T>
requires std::is_integral_v<T> Value ToValue(T i) { return Value{false, static_cast<long long>(i), 0, {}}; }
inline void FromValue(const Value& v, bool& out) { out = v.b; }
inline void FromValue(const Value& v, float& out) { out = v.f; }
inline void FromValue(const Value& v, std::string& out) { out = v.s; }
template <class T>
requires std::is_integral_v<T>
void FromValue(const Value& v, T& out) { out = static_cast<T>(v.i); }
template <class T>
constexpr ValueKind KindOf() {
    if constexpr (std::is_same_v<T, bool>) return ValueKind::Bool;
    if constexpr (std::is_same_v<T, float>) return ValueKind::Float;
    if constexpr (std::is_same_v<T, std::string>) return ValueKind::Text;
    return ValueKind::Int;
}

// Text with carriage return, line feed, tab and backslash shown as \r \n \t \\.
std::string EscapeText(std::string_view text);

std::string FormatBool(bool v);                           // True, False
std::string FormatColour(std::int32_t bgr);               // &H2600C0; eight digits when the top byte is set
std::string FormatFloat(float v);                         // 75, 37.5, 0.1 (shortest form that reads back)
std::string FormatValue(ValueKind kind, const Value& v);  // unescaped text for Text

// True or False, in any case.
bool ParseBool(std::string_view s, bool& out);
// &H and one to eight hexadecimal digits (any case), or a decimal number;
// within 32 bits.
bool ParseColour(std::string_view s, std::int32_t& out);

// Reads `text` as a value of `kind`; Int within [lo, hi]. False with a
// reason in `error`.
bool ParseValue(ValueKind kind, long long lo, long long hi, const std::string& text, Value& out, std::string& error);

}  // namespace scenario
