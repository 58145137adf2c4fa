#pragma once
// Runs a scenario (the language of tessuma-cli script) against the game's
// form models in a simulated world.

#include <functional>
#include <iosfwd>
#include <string>

namespace scenario {

// Exit status: 0 all expectations held, 1 some failed, 2 malformed.
// Every failed expectation prints a FAIL line on `out`, `print` its value; a
// malformed scenario prints one error line and runs nothing.
int Run(const std::string& text, std::ostream& out);

class Runtime;
// The same, handing the world and the program to `inspect` after the last
// command (for tests of the runner itself).
int Run(const std::string& text, std::ostream& out, const std::function<void(Runtime&)>& inspect);

// Checks a scenario without running it: 0 when it is well formed, else 2
// with the error line on `out`.
int Check(const std::string& text, std::ostream& out);

}  // namespace scenario
