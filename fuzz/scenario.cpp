// Fuzz target: a scenario file, any bytes, run by scenario::Run as
// `tessuma-cli script` runs it. The runner checks the whole text before it
// runs anything and then drives the game's forms, so this reaches most of
// the game through the scenario language.
//
// The status is 0, 1 or 2; a malformed text is reported on its first line
// and nothing runs; an exception out of the game is a finding. Scenarios
// that let more than a few thousand seconds pass are skipped: a long `tick`
// is allowed and only slow.

#include <sstream>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "scenario/Scenario.h"

namespace {

constexpr long kMaxTicks = 5000;

// The seconds that the tick lines of a text let pass, roughly, as the
// lexer would read them; more than enough to skip the slow ones.
long Ticks(const std::string& text) {
    long total = 0;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string cmd, n;
        if (!(words >> cmd) || cmd != "tick") continue;
        if (!(words >> n)) {
            ++total;
            continue;
        }
        if (n.size() > 7) return kMaxTicks + 1;
        total += std::strtol(n.c_str(), nullptr, 10);
    }
    return total;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using fuzz::Require;
    const std::string text = fuzz::Text(data, size);
    if (Ticks(text) > kMaxTicks) return 0;

    std::ostringstream checked;
    const int check = scenario::Check(text, checked);
    std::ostringstream out;
    const int status = scenario::Run(text, out);
    Require(status >= 0 && status <= 2, "the status is 0, 1 or 2");
    if (check != 0) {
        Require(status == 2 && out.str() == checked.str(), "a malformed scenario runs nothing");
    }
    Require(out.str().find("the program stopped with an exception") == std::string::npos,
            "no exception comes out of the game");
    return 0;
}
