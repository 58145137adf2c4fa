// tessuma-cli script FILE|-: runs one scenario against the game's forms in a
// simulated world. Exit status 0 when every expectation held, 1 when one
// failed, 2 when the scenario is malformed or can't be read.

#include "commands.h"

#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "sim/Scenario.h"

int CmdScript(const CliArgs& args, std::istream& in, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) {
        err << "usage: tessuma-cli script FILE|-\n";
        return 2;
    }
    std::string text;
    if (args[0] == "-") {
        std::ostringstream os;
        os << in.rdbuf();
        text = os.str();
    } else {
        std::ifstream f(args[0], std::ios::binary);
        if (!f) {
            err << "tessuma-cli: cannot read \"" << args[0] << "\"\n";
            return 2;
        }
        std::ostringstream os;
        os << f.rdbuf();
        if (f.bad()) {
            err << "tessuma-cli: cannot read \"" << args[0] << "\"\n";
            return 2;
        }
        text = os.str();
    }
    const int status = scenario::Run(text, out);
    out.flush();
    return status;
}
