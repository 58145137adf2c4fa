// tessuma-cli bank LEVEL: prints the 1,200 built-in puzzles of level LEVEL
// (0 beginner .. 3 genius) in batch and entry order, one a line, exactly as
// the bank holds them.

#include "commands.h"

#include "core/Levels.h"
#include "core/banks/Banks.h"

#include <ostream>
#include <string>

int CmdBank(const CliArgs& args, std::istream&, std::ostream& out, std::ostream& err) {
    const char* usage = "usage: tessuma-cli bank LEVEL   (LEVEL 0 beginner, 1 intermediate, 2 advanced, 3 genius)\n";
    if (args.size() != 1) {
        err << "tessuma-cli bank: give one level\n" << usage;
        return 2;
    }
    const std::string& a = args[0];
    if (a.size() != 1 || a[0] < '0' || a[0] >= '0' + kLevelCount) {
        err << "tessuma-cli bank: no level \"" << a << "\"\n" << usage;
        return 2;
    }
    const int level = a[0] - '0';
    for (int batch = 1; batch <= kBatchesPerBank; ++batch)
        for (int entry = 0; entry < kEntriesPerBatch; ++entry) out << BankEntry(level, batch, entry) << '\n';
    out.flush();
    return 0;
}
