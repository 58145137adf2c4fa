// The sub-commands of tessuma-cli.
#pragma once
#include <iosfwd>
#include <string>
#include <vector>

// Each sub-command of tessuma-cli: arguments after the command word,
// standard streams passed in so that tests can drive them.
using CliArgs = std::vector<std::string>;
int CmdSolve(const CliArgs& args, std::istream& in, std::ostream& out, std::ostream& err);
int CmdRate(const CliArgs& args, std::istream& in, std::ostream& out, std::ostream& err);
int CmdBank(const CliArgs& args, std::istream& in, std::ostream& out, std::ostream& err);
int CmdScript(const CliArgs& args, std::istream& in, std::ostream& out, std::ostream& err);
