#pragma once
// A profile (INI) text, read and written as the platform's profile functions
// do: sections and keys without regard to case, values trimmed and freed of
// one pair of surrounding quotes; writing a key keeps every other line.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class IniText {
public:
    IniText() = default;
    explicit IniText(std::string_view text);

    std::optional<std::string> Get(const std::string& section, const std::string& key) const;
    // A line break in a value would break the file: it is written as a blank.
    void Set(const std::string& section, const std::string& key, std::string value);
    std::string Text() const;

private:
    std::vector<std::string> lines_;
};

// The platform's reading of a whole number in a profile: its leading digits;
// a text without any reads as 0, a negative number as 0.
std::int32_t ProfileInt(const std::string& text);
