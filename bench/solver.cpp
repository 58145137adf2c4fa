// Speed of the solver: the empty board, the board that exhausts the trial
// (two 5s in the first row, 8801 SearchCell calls), and a set of puzzles.
//
// TESSUMA_BENCH_PUZZLES names a file of puzzles, one a line, in either form
// that tessuma-cli solve reads (digits with '0' or '.', or bank entries as
// printed by `tessuma-cli bank`). Without it a small built-in set is used.
//
// Counters: puzzles_per_s, calls_per_s and ns_per_call (SearchCell calls,
// by CPU time),
// allocs_per_solve (operator new calls during the timed loop; a solve must
// not allocate, so this has to read 0).

#include "core/PuzzleText.h"
#include "core/modSudoku.h"

#include <benchmark/benchmark.h>

#include <time.h>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <new>
#include <string>
#include <vector>

// ---- Counting allocator -----------------------------------------------------
namespace {
std::atomic<long> gAllocations{0};
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(size ? size : 1)) return p;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    gAllocations.fetch_add(1, std::memory_order_relaxed);
    return std::malloc(size ? size : 1);
}
void* operator new[](std::size_t size, const std::nothrow_t& nt) noexcept { return operator new(size, nt); }
[[gnu::noinline]] void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
[[gnu::noinline]] void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }

namespace {

struct Puzzle {
    std::uint8_t digits[81];
};

// Proper puzzles (one solution each), 23 to 26 givens.
const char* const kBuiltInPuzzles[] = {
    "8.9...........87...35..96...5.......6.139..5...35....2.6.....8..1.753......2..1..",
    "......86....4...2.74.2..9....8........6.8.25....97...1..73..6..4.......5.2..9....",
    ".38..9..7...1..6....4.65.........98.8...1....4..6...2..13.....49...3..5.....7...2",
    "9...73...25.9......36........7...4.....79.6.1...348.....3..1.........8.4.458...2.",
    "..6......48.9..2.6.2.....5..7..51..8....4......3.264...............136.2.5...2.83",
    "......7..5.8...4...4..36.1.....2.......3....9.6.51....1.52.....38......6..9..15..",
    "3.....2.1....97...8..........3.7.5.2.7....3.......56.8..4.1..8.2.....7....56.4...",
    "...2....32....4.5.........9.4.6.....7.1.3.......18.2...24...18..1.3..562.5.......",
    "6..3.......72..1.8...798....1...4.3272.....1.......4...7.561.4.8.6............9..",
    ".86..4.......6....3....19....5.2.13.....197...2.....9..61...5.85.......4.......7.",
    ".5..4.....47.12....8....3..6....5.1....2.79.6.........3........5....4..9.79...52.",
    "7.62....4.4...37.....6...1..3..6.........26..5....9.....7.9.2.....83..9..81..4...",
    "...4.5.32.8..26..7..7.....11.....5..89.....7....3..41.7........2..9...85....34...",
    "..4......27.5..8...6.3...2....96.......1..4...2...7..3..6....1.5....63.813...5.6.",
    "3..6.982....51........2.79...6....1.5.........7....4.8264...........3..7.1....94.",
    ".4.....9....25.1..8....9.....1.....2.5.......4697.8.........4.7.8...3..6.97.8...5",
    ".3....6..2.693......7.4..8.......9...4..58...82537....9....13..35.8....6.........",
    "..7.....4.8.2.1.....2.9....6..4...17...6.8.45.....7..31.........9.....5.768.35...",
    "....8...2..8..59.4...6..5.751..3.2..4....9..1...12........53.9..3...4...98...6...",
    "2...4..85...9.24.....8......12.....68.6.....9.....4..7.39..........1....5.1.78..2",
    "...749..2.91..23.7.....................4.5....62.8....57.6..4...4.....29...8...71",
    "6....7.1...56.9.2.1.95...........7..53.8......46.....2...78..5.8......4.....5.1.7",
    ".8..7..1..1...6.3.3..9...7..9...7.8......91.5..5.8....9.45..8.........5...382.7..",
    ".......39.6...84..91.7....6..7....8..4...79.1...6.............35.1.2.......9.47..",
    "..2..1....8......57...43.........4.6..1..89.38..3.....3.6....9......7...5.9..672.",
    "..428.5..1..7.59....59.6...8..4....7......3..253..9........1..6.7.......6.2.....8",
    ".5.......7.1.5...36..471...4..1...875.324.....8.7........6..128......7........3.6",
    "....4...8.9.6.....14....39...1.....63.....21...92....4..85.2...7....4..2....37.8.",
    ".4..7.618..7......6...1.7....6....49519.62.8.2...........3.....3..69..2.4......6.",
    "8.7....62.5..........4.7....316.......6..2.1.7.......5...25...9.8..9...12....34..",
};

std::vector<Puzzle> LoadPuzzles() {
    std::vector<Puzzle> out;
    auto add = [&out](const std::string& line) {
        Puzzle p;
        if (ParsePuzzleLine(line, PuzzleForm::Digits, p.digits) || ParsePuzzleLine(line, PuzzleForm::Givens, p.digits))
            out.push_back(p);
    };
    if (const char* path = std::getenv("TESSUMA_BENCH_PUZZLES"); path && *path) {
        std::ifstream in(path);
        if (!in) {
            std::cerr << "bench_solver: cannot read " << path << "\n";
            return out;
        }
        std::string line;
        while (std::getline(in, line))
            if (!line.empty() && line != "\r") add(line);
    } else {
        for (const char* s : kBuiltInPuzzles) add(s);
    }
    return out;
}

// CPU time of this thread, so that the figures hold on a busy machine too.
double ThreadSeconds() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
}

void SetCounters(benchmark::State& state, long solves, long calls, long allocs, double seconds) {
    using benchmark::Counter;
    state.counters["puzzles_per_s"] = Counter(static_cast<double>(solves), Counter::kIsRate);
    state.counters["calls_per_s"] = Counter(static_cast<double>(calls), Counter::kIsRate);
    state.counters["ns_per_call"] = calls > 0 ? seconds * 1e9 / static_cast<double>(calls) : 0.0;
    state.counters["allocs_per_solve"] = solves > 0 ? static_cast<double>(allocs) / static_cast<double>(solves) : 0.0;
}

void SolveOne(benchmark::State& state, const modSudoku::Board& board) {
    long calls = 0;
    modSudoku::Board out;
    const long allocsBefore = gAllocations.load();
    const double t0 = ThreadSeconds();
    for (auto _ : state) {
        modSudoku::LoadBoard(board);
        benchmark::DoNotOptimize(modSudoku::SolveBoard());
        modSudoku::GetSolution(out);
        benchmark::DoNotOptimize(out);
        calls += modSudoku::SearchCalls();
    }
    const double seconds = ThreadSeconds() - t0;
    SetCounters(state, static_cast<long>(state.iterations()), calls, gAllocations.load() - allocsBefore, seconds);
}

void BM_EmptyBoard(benchmark::State& state) {
    const modSudoku::Board board{};
    SolveOne(state, board);
}
BENCHMARK(BM_EmptyBoard);

void BM_ExhaustTwoFives(benchmark::State& state) {
    modSudoku::Board board{};
    board[0] = 5;
    board[1] = 5;
    SolveOne(state, board);
}
BENCHMARK(BM_ExhaustTwoFives);

void BM_PuzzleSet(benchmark::State& state) {
    const std::vector<Puzzle> puzzles = LoadPuzzles();
    if (puzzles.empty()) {
        state.SkipWithError("no puzzles");
        return;
    }
    long calls = 0;
    std::size_t next = 0;
    modSudoku::Board out;
    const long allocsBefore = gAllocations.load();
    const double t0 = ThreadSeconds();
    for (auto _ : state) {
        modSudoku::LoadBoard(puzzles[next].digits);
        benchmark::DoNotOptimize(modSudoku::SolveBoard());
        modSudoku::GetSolution(out);
        benchmark::DoNotOptimize(out);
        calls += modSudoku::SearchCalls();
        if (++next == puzzles.size()) next = 0;
    }
    const double seconds = ThreadSeconds() - t0;
    SetCounters(state, static_cast<long>(state.iterations()), calls, gAllocations.load() - allocsBefore, seconds);
    state.SetLabel(std::to_string(puzzles.size()) + " puzzles");
}
BENCHMARK(BM_PuzzleSet);

}  // namespace

BENCHMARK_MAIN();
