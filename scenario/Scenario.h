#pragma once
// Runs a scenario (the language of tessuma-cli script) against the game's
// form models in a simulated world.

#include <iosfwd>
#include <string>

namespace scenario {

// Exit status: 0 all expectations held, 1 some failed, 2 malformed.
int Run(const std::string& text, std::ostream& out);

}  // namespace scenario
