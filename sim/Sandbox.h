#pragma once
// File paths of a scenario: relative to the sandbox (the program's folder in
// the simulated world), and the "<sandbox>" token that stands for it.

#include <string>

namespace scenario {

// A file path of a scenario: relative to the sandbox, written with "/",
// never leaving it. False with a reason when it is not one.
bool CheckSandboxPath(const std::string& path, std::string& error);

// The sandbox folder's own path shown as "<sandbox>" in values read, and
// "<sandbox>" in texts given by a scenario turned into that path.
std::string ShowSandbox(const std::string& text, const std::string& sandbox);
std::string ExpandSandbox(const std::string& text, const std::string& sandbox);

}  // namespace scenario
