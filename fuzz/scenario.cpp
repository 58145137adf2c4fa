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
#include "sim/Scenario.h"

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

// Whether the runner reported an exception out of the game: a line of its
// own, "error line N: the program stopped with an exception: ...". The words
// alone may come back in other reports, quoted from the scenario's text.
bool GameThrew(const std::string& report) {
    static const std::string kWhat = ": the program stopped with an exception: ";
    std::istringstream lines(report);
    std::string line;
    while (std::getline(lines, line)) {
        if (line.rfind("error line ", 0) != 0) continue;
        std::size_t i = 11;
        while (i < line.size() && line[i] >= '0' && line[i] <= '9') ++i;
        if (i > 11 && line.compare(i, kWhat.size(), kWhat) == 0) return true;
    }
    return false;
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
    Require(!GameThrew(out.str()), "no exception comes out of the game");
    return 0;
}
