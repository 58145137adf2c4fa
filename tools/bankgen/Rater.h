#pragma once
// The difficulty rater: solves a puzzle the way a person does, always with
// the simplest technique that still makes progress, and grades the puzzle by
// the hardest technique it needed.
//
// Techniques, from simple to hard (the grade of a puzzle is the number of the
// hardest one it needed):
//    1 hidden single        2 naked single        3 locked candidates
//    4 naked pair           5 hidden pair         6 naked triple
//    7 hidden triple        8 naked quad          9 hidden quad
//   10 X-wing              11 swordfish          12 jellyfish
//   13 XY-wing             14 XYZ-wing           15 simple colouring
//   16 X-chain             17 XY-chain           18 alternating inference chain
//   19 trial and error
//
// After every step the search starts again from hidden singles, so a harder
// technique is used only when nothing simpler applies anywhere on the board.

#include <array>

#include "tools/bankgen/Grid.h"

namespace bankgen {

enum class Technique : int {
    None = 0,
    HiddenSingle,
    NakedSingle,
    LockedCandidates,
    NakedPair,
    HiddenPair,
    NakedTriple,
    HiddenTriple,
    NakedQuad,
    HiddenQuad,
    XWing,
    Swordfish,
    Jellyfish,
    XYWing,
    XYZWing,
    SimpleColouring,
    XChain,
    XYChain,
    AlternatingChain,
    Trial,
};
constexpr int kTechniqueCount = static_cast<int>(Technique::Trial) + 1;

// "hidden single", "X-wing", ...; "none" for Technique::None.
const char* TechniqueName(Technique t);

enum class RateOutcome {
    Rated,             // a single solution; hardest and uses are filled
    NoSolution,        // the givens cannot be completed
    SeveralSolutions,  // more than one completion
};

struct Rating {
    RateOutcome outcome = RateOutcome::NoSolution;
    Technique hardest = Technique::None;      // None only for a puzzle given full
    std::array<int, kTechniqueCount> uses{};  // steps made with each technique
    Grid solution{};                          // filled when outcome is Rated
    // The step-by-step solve ended on the solution found by the counter; a
    // false here means a technique went wrong.
    bool steppedToSolution = false;

    int Grade() const { return static_cast<int>(hardest); }
};

// Rates a puzzle (0 = empty cell). Uniqueness is settled first with the
// independent counter; only a puzzle with one solution is solved step by step.
Rating RatePuzzle(const Grid& puzzle);

// One step of the rater on a board of candidates, for tests of the single
// techniques. cand[c] holds bit d-1 for each digit d still open in cell c, 0
// for a filled cell; values[c] is the digit of a filled cell or 0. Applies
// `t` once if it can (placing a digit or removing candidates) and tells
// whether anything changed. Trial needs the solution and is not offered here.
struct CandidateBoard {
    std::array<std::uint16_t, 81> cand{};
    Grid values{};
    // The candidates left by the givens alone: every digit not seen by a peer.
    static CandidateBoard FromGivens(const Grid& givens);
};
bool ApplyTechnique(Technique t, CandidateBoard& board);

// The criteria of the four levels, by the rater's grade:
//   level 0 (beginner)      singles only: hidden and naked singles
//   level 1 (intermediate)  hardest technique: locked candidates
//   level 2 (advanced)      hardest technique: a naked or hidden subset
//                           (pair, triple or quad)
//   level 3 (genius)        hardest technique beyond the subsets: fish
//                           (X-wing, swordfish, jellyfish), XY- or XYZ-wing,
//                           simple colouring, X-chain, XY-chain or an
//                           alternating inference chain
// A puzzle that needs trial and error belongs to no level. Returns 0..3, or
// -1 when the technique fits no level.
int LevelOfTechnique(Technique hardest);

// The word for a grade as a player reads it: the level names of the game,
// "beyond genius" for trial and error.
const char* GradeWord(Technique hardest);

}  // namespace bankgen
