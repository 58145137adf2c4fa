#include "commands.h"

#include <ostream>

int CmdScript(const CliArgs&, std::istream&, std::ostream&, std::ostream& err) {
    err << "tessuma-cli: script is not available in this build\n";
    return 2;
}
