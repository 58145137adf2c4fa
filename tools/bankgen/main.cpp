// tessuma-bankgen: makes the game's four puzzle banks and writes them as the
// modules core/banks/mod_P1_Easy.cpp .. mod_P4_Genius.cpp.
//
//   tessuma-bankgen --out core/banks     make the banks and write the modules
//   tessuma-bankgen --check core/banks   make them and compare with the modules
//                                        there; exit 1 when any differs
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

#include "tools/bankgen/BankMaker.h"

namespace fs = std::filesystem;
using namespace bankgen;

namespace {

void Usage(std::ostream& os) {
    os << "usage: tessuma-bankgen --out DIR | --check DIR\n"
          "  --out DIR    make the four banks and write mod_P1_Easy.cpp .. mod_P4_Genius.cpp into DIR\n"
          "  --check DIR  make the banks and compare them with the modules in DIR\n";
}

bool ReadFile(const fs::path& path, std::string& text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::ostringstream ss;
    ss << in.rdbuf();
    text = ss.str();
    return true;
}

// Writes beside the target and renames, so that a failed run leaves the old
// module whole.
bool WriteFile(const fs::path& path, const std::string& text) {
    const fs::path tmp = path.string() + ".tmp";
    {
        std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
        if (!out) return false;
        out << text;
        out.close();
        if (!out) {
            std::error_code ec;
            fs::remove(tmp, ec);
            return false;
        }
    }
    std::error_code ec;
    fs::rename(tmp, path, ec);
    return !ec;
}

void PrintReport(const MakeReport& r, double seconds) {
    std::printf("grids carved: %ld towards 30 givens, %ld towards 24 givens; %.1f s\n", r.attempts30, r.attempts24,
                seconds);
    for (int level = 0; level < kLevelCount; ++level) {
        std::printf("%s (made entries by hardest technique):\n", kLevels[level].labelName);
        for (int t = 0; t < kTechniqueCount; ++t)
            if (r.byTechnique[level][t])
                std::printf("  %-28s %5d\n", TechniqueName(static_cast<Technique>(t)), r.byTechnique[level][t]);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3 || (std::string(argv[1]) != "--out" && std::string(argv[1]) != "--check")) {
        Usage(std::cerr);
        return 2;
    }
    const bool check = std::string(argv[1]) == "--check";
    const fs::path dir = argv[2];
    if (!fs::is_directory(dir)) {
        std::cerr << "tessuma-bankgen: " << dir.string() << " is not a directory\n";
        return 2;
    }

    const auto t0 = std::chrono::steady_clock::now();
    MakeReport report;
    const BankSet banks = MakeBanks(&report, &std::cerr);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    PrintReport(report, seconds);

    int differ = 0;
    for (int level = 0; level < kLevelCount; ++level) {
        const fs::path path = dir / ModuleFileName(level);
        const std::string text = ModuleSource(level, banks[level]);
        if (check) {
            std::string old;
            if (!ReadFile(path, old) || old != text) {
                std::printf("%s differs\n", path.string().c_str());
                ++differ;
            }
        } else if (!WriteFile(path, text)) {
            std::cerr << "tessuma-bankgen: cannot write " << path.string() << "\n";
            return 1;
        }
    }
    if (check) {
        std::printf(differ ? "the banks differ from what the generator makes\n"
                           : "the banks are as the generator makes them\n");
        return differ ? 1 : 0;
    }
    std::printf("wrote the four modules into %s\n", dir.string().c_str());
    return 0;
}
