#pragma once
// The words of a scenario line, the pieces of a path, and the plain number
// forms the commands take.

#include <string>
#include <string_view>
#include <vector>

namespace scenario {

// One word of a line. `quoted` tells "cancel" (a text) from cancel (a keyword).
struct Token {
    std::string text;
    bool quoted = false;
};

// Splits one line into words separated by blanks (spaces and tabs). A line
// whose first non-blank character is '#' is a comment and gives no words.
// A word in double quotes may hold blanks and the escapes \" \\ \r \n \t.
// Returns false with a reason in `error` for an unknown escape, a quote left
// open, a quote inside a plain word or text glued to a closing quote.
bool Tokenize(std::string_view line, std::vector<Token>& words, std::string& error);

// The pieces of a path: [form.]Name[(ARG)][.Prop], where a form is a name
// that starts with "frm". The argument runs to the last ")".
struct PathPieces {
    std::string form, name, arg, prop;
    bool hasArg = false, hasProp = false;
};
// False when `text` is not made of those pieces.
bool SplitPath(const std::string& text, PathPieces& out);

// A whole decimal number: an optional minus and digits, nothing else.
bool ParseInt(std::string_view s, long long& out);

// A decimal number with an optional minus and an optional fraction ("75",
// "-3.5", ".25"); no exponent, no blanks. Only finite values.
bool ParseDecimal(std::string_view s, double& out);

}  // namespace scenario
