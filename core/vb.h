#pragma once
// Small helpers that give the game's string and number rules one home:
// lower-casing, case-blind search, numeric reading of text, rounding halves
// to even, and the colour constants that tell the kind of a cell.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vb {

// Colours as the program writes them, &HBBGGRR.
constexpr std::int32_t kColorGiven = 0x2600C0;    // red
constexpr std::int32_t kColorEntered = 0x000000;  // black
constexpr std::int32_t kColorHinted = 0xB55E0B;   // blue
constexpr std::int32_t kColorLive = 0xC000C0;     // "auto-mark" available, answer labels
constexpr std::int32_t kColorGreyed = 13139164;   // 0xC87CDC, "auto-mark" greyed
constexpr std::int32_t kColorClock = 0x0BB559;    // green
constexpr std::int32_t kColorCream = 0xD4F5F5;
constexpr std::int32_t kColorWhite = 0xFFFFFF;

// Mouse pointers of the form model.
constexpr int kPointerDefault = 0;
constexpr int kPointerHourglass = 11;
constexpr int kPointerCustom = 99;  // the hand

std::string LCase(std::string_view s);
bool ContainsNoCase(std::string_view haystack, std::string_view needle);

// The numeric value of the leading number of a text, 0 when there is none;
// blanks before the number are skipped. "12abc" is 12, "abc" 0, " -3.5" -3.5.
double Val(std::string_view s);

// A strict conversion to a whole number (rounded, halves to even); false when
// the text is not a number at all.
bool TryCLng(std::string_view s, std::int32_t& out);

// Rounds to the nearest whole number, halves to even.
double RoundHalfEven(double x);
std::int32_t CLng(double x);  // rounded halves to even, clamped to 32 bits

// Number as plain decimal text, no leading blank.
std::string Str(long long n);

// A number as the program writes it into text: whole values without a
// decimal point ("2880"), others in their shortest exact form ("2887.5").
std::string NumText(double x);

// Removes every occurrence of `what` from `s`.
std::string Remove(std::string_view s, std::string_view what);

// Trims blanks at both ends.
std::string Trim(std::string_view s);
// Trims blanks and tabs at both ends.
std::string TrimBlanks(std::string_view s);

// The lines of a text: "a\r\nb\r\n" is "a", "b", "". CR LF or a lone LF
// ends a line.
std::vector<std::string> SplitLines(std::string_view text);

}  // namespace vb
