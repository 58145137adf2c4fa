// The built-in puzzle banks: the form of every entry, a single solution for
// each, the game's solver agreeing with the stored solutions, the picking
// rule, the grades of the levels and the oddities the data keeps on purpose.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "core/Levels.h"
#include "core/banks/Banks.h"
#include "core/modSudoku.h"
#include "tools/bankgen/Grid.h"
#include "tools/bankgen/Rater.h"

using namespace bankgen;

namespace {

// Entries that stand as they were handed down, not as the generator makes them.
const char* const kEasyFirst =
    "8E6217C94|B4GI356HA|9136DHGE2|5FD1832G9|C2879416E|7I1562DC8|6HICB1547|AC547IH2F|47B8569A3|";
const char* const kEasyWithR =
    "591CD6H72|D73AH295F|8B67IEA4C|ICE264781|7DB81C569|1F8I5GC2D|6HG431BI5|B1457I63H|3E96R8417|";
const char* const kGeniusLast =
    "HI3712D5F|74A9F528C|B654831G9|514C2I867|3G68549A2|928F7A534|6E729834A|A325D6G98|D8I1376BE|";

struct Slot {
    int level, batch, entry;
};

bool IsEasyWithR(const Slot& s) { return s.level == 0 && s.batch == 8 && s.entry == 75; }
bool IsRichGenius(const Slot& s) { return s.level == 3 && s.batch == 1 && (s.entry == 0 || s.entry == 14); }
bool IsGeniusLast(const Slot& s) { return s.level == 3 && s.batch == 12 && s.entry == 99; }

template <class F>
void ForEachSlot(F&& f) {
    for (int level = 0; level < kLevelCount; ++level)
        for (int batch = 1; batch <= kBatchesPerBank; ++batch)
            for (int entry = 0; entry < kEntriesPerBatch; ++entry) f(Slot{level, batch, entry});
}

std::string Where(const Slot& s) {
    return std::string(kLevels[s.level].bankModule) + " batch " + std::to_string(s.batch) + " entry " +
           std::to_string(s.entry);
}

// The one entry found in both the intermediate and the genius bank.
std::set<std::string> SharedIntermediateGenius() {
    std::set<std::string> inter, shared;
    for (int b = 1; b <= kBatchesPerBank; ++b)
        for (int e = 0; e < kEntriesPerBatch; ++e) inter.insert(BankEntry(1, b, e));
    for (int b = 1; b <= kBatchesPerBank; ++b)
        for (int e = 0; e < kEntriesPerBatch; ++e)
            if (inter.count(BankEntry(3, b, e))) shared.insert(BankEntry(3, b, e));
    return shared;
}

// ---- Form of the entries ---------------------------------------------------------------

TEST(Banks, EveryEntryHasTheFormOfItsBank) {
    ForEachSlot([](const Slot& s) {
        const std::string e = BankEntry(s.level, s.batch, s.entry);
        const bool shortBatch = s.level == 0 && s.batch == 2;
        ASSERT_EQ(e.size(), shortBatch ? 89u : 90u) << Where(s);
        for (std::size_t i = 0; i < e.size(); ++i) {
            if (i % 10 == 9) {
                ASSERT_EQ(e[i], '|') << Where(s) << " position " << i + 1;
            } else if (!IsEasyWithR(s)) {
                ASSERT_TRUE((e[i] >= 'A' && e[i] <= 'I') || (e[i] >= '1' && e[i] <= '9')) << Where(s);
            }
        }
        if (IsEasyWithR(s)) return;
        Grid puzzle, solution;
        ASSERT_TRUE(DecodeEntry(e, puzzle, solution)) << Where(s);
        const int clues = IsRichGenius(s) ? 26 : kLevels[s.level].clues;
        EXPECT_EQ(CountClues(puzzle), clues) << Where(s);
        EXPECT_TRUE(IsCompleteValid(solution)) << Where(s);
    });
}

TEST(Banks, EveryPuzzleHasOneSolutionAndTheGameSolverFindsIt) {
    ForEachSlot([](const Slot& s) {
        if (IsEasyWithR(s)) return;
        Grid puzzle, solution;
        ASSERT_TRUE(DecodeEntry(BankEntry(s.level, s.batch, s.entry), puzzle, solution)) << Where(s);
        Grid only{};
        ASSERT_EQ(CountSolutions(puzzle, 2, &only), 1) << Where(s);
        EXPECT_EQ(only, solution) << Where(s);

        modSudoku::Board digits;
        for (int c = 0; c < 81; ++c) digits[c] = puzzle[c];
        modSudoku::LoadBoard(digits);
        EXPECT_TRUE(modSudoku::SolveBoard()) << Where(s);
        modSudoku::GetSolution(digits);
        for (int c = 0; c < 81; ++c) ASSERT_EQ(digits[c], solution[c]) << Where(s) << " cell " << c;
    });
}

// ---- The oddities kept in the data ------------------------------------------------------

TEST(Banks, HandedDownEntriesStandAtTheirPlaces) {
    EXPECT_EQ(mod_P1_Easy::Entry(1, 0), kEasyFirst);
    EXPECT_EQ(mod_P4_Genius::Entry(12, 99), kGeniusLast);

    // Batch 8 entry 75 of the easy bank: 31 givens and a 9 entered by the
    // player in the last row, fifth cell, where a 9 already stands and the
    // solution is 2.
    const std::string odd = mod_P1_Easy::Entry(8, 75);
    EXPECT_EQ(odd, kEasyWithR);
    EXPECT_EQ(std::count_if(odd.begin(), odd.end(), [](char c) { return c >= 'A' && c <= 'I'; }), 31);
    EXPECT_EQ(std::count(odd.begin(), odd.end(), 'R'), 1);
    EXPECT_EQ(odd[80 + 4], 'R');
    EXPECT_NE(odd.substr(80, 9).find('9'), std::string::npos);

    // Batch 2 of the easy bank lacks the last "|"; stripped, it is like the rest.
    for (int e = 0; e < kEntriesPerBatch; ++e) {
        const std::string entry = mod_P1_Easy::Entry(2, e);
        EXPECT_EQ(entry.size(), 89u);
        EXPECT_NE(entry.back(), '|');
        EXPECT_EQ(std::count(entry.begin(), entry.end(), '|'), 8);
    }
    EXPECT_EQ(mod_P1_Easy::Entry(3, 0).back(), '|');
    EXPECT_EQ(mod_P1_Easy::Entry(1, 99).back(), '|');
}

TEST(Banks, RepeatsGiveTheCountsOfDistinctEntries) {
    for (int level = 0; level < kLevelCount; ++level) {
        std::map<std::string, int> seen;
        for (int b = 1; b <= kBatchesPerBank; ++b)
            for (int e = 0; e < kEntriesPerBatch; ++e) ++seen[BankEntry(level, b, e)];
        EXPECT_EQ(static_cast<int>(seen.size()), kLevels[level].distinctEntries) << kLevels[level].bankModule;
        // Each repeat stands twice, none three times.
        for (const auto& [entry, n] : seen) EXPECT_LE(n, 2) << entry;
    }
    EXPECT_EQ(kLevels[1].distinctEntries, 1115);
    EXPECT_EQ(kLevels[3].distinctEntries, 1197);

    // Exactly one entry stands in both the intermediate and the genius bank;
    // no other two banks share one.
    EXPECT_EQ(SharedIntermediateGenius().size(), 1u);
    for (int a = 0; a < kLevelCount; ++a) {
        for (int b = a + 1; b < kLevelCount; ++b) {
            if (a == 1 && b == 3) continue;
            std::set<std::string> in;
            for (int x = 1; x <= kBatchesPerBank; ++x)
                for (int e = 0; e < kEntriesPerBatch; ++e) in.insert(BankEntry(a, x, e));
            for (int x = 1; x <= kBatchesPerBank; ++x)
                for (int e = 0; e < kEntriesPerBatch; ++e)
                    EXPECT_EQ(in.count(BankEntry(b, x, e)), 0u) << a << " and " << b;
        }
    }
}

// ---- Grades --------------------------------------------------------------------------

// Level 0 needs singles only, 1 locked candidates, 2 subsets, 3 fish, wings
// or chains; no entry needs trial and error, and each level's hardest entry
// is graded below the easiest of the next. Exempt: the entry with the 'R'
// (no plain puzzle), the handed-down last genius entry (a naked triple) and
// the genius copy of the entry shared with the intermediate bank.
TEST(Banks, LevelsRiseInDifficulty) {
    const std::set<std::string> shared = SharedIntermediateGenius();
    std::array<int, kLevelCount> lowest, highest;
    lowest.fill(kTechniqueCount);
    highest.fill(-1);
    int exempt = 0;
    ForEachSlot([&](const Slot& s) {
        const std::string e = BankEntry(s.level, s.batch, s.entry);
        if (IsEasyWithR(s) || IsGeniusLast(s) || (s.level == 3 && shared.count(e))) {
            ++exempt;
            return;
        }
        Grid puzzle, solution;
        ASSERT_TRUE(DecodeEntry(e, puzzle, solution));
        const Rating r = RatePuzzle(puzzle);
        ASSERT_EQ(r.outcome, RateOutcome::Rated) << Where(s);
        EXPECT_TRUE(r.steppedToSolution) << Where(s);
        EXPECT_EQ(LevelOfTechnique(r.hardest), s.level) << Where(s) << ": " << TechniqueName(r.hardest);
        lowest[s.level] = std::min(lowest[s.level], r.Grade());
        highest[s.level] = std::max(highest[s.level], r.Grade());
    });
    EXPECT_EQ(exempt, 3);
    for (int level = 0; level + 1 < kLevelCount; ++level)
        EXPECT_LT(highest[level], lowest[level + 1]) << "levels " << level << " and " << level + 1;
    EXPECT_LE(highest[0], static_cast<int>(Technique::NakedSingle));
    EXPECT_GT(lowest[3], static_cast<int>(Technique::HiddenQuad));
    EXPECT_LT(highest[3], static_cast<int>(Technique::Trial));
}

TEST(Banks, ExemptEntriesAreWhatTheyAreSaidToBe) {
    // The last genius entry is graded as an advanced puzzle.
    Grid puzzle, solution;
    ASSERT_TRUE(DecodeEntry(kGeniusLast, puzzle, solution));
    EXPECT_EQ(RatePuzzle(puzzle).hardest, Technique::NakedTriple);
    // The shared entry is an intermediate puzzle.
    const std::set<std::string> shared = SharedIntermediateGenius();
    ASSERT_EQ(shared.size(), 1u);
    ASSERT_TRUE(DecodeEntry(*shared.begin(), puzzle, solution));
    EXPECT_EQ(LevelOfTechnique(RatePuzzle(puzzle).hardest), 1);
    // The two genius entries with 26 givens are genius puzzles all the same.
    for (int e : {0, 14}) {
        ASSERT_TRUE(DecodeEntry(mod_P4_Genius::Entry(1, e), puzzle, solution));
        EXPECT_EQ(CountClues(puzzle), 26);
        EXPECT_EQ(LevelOfTechnique(RatePuzzle(puzzle).hardest), 3);
    }
}

// ---- Picking ---------------------------------------------------------------------------

class Draws : public IRandom {
public:
    explicit Draws(std::vector<float> v) : values(std::move(v)) {}
    float Rnd() override { return count < values.size() ? values[count++] : (++count, 0.0f); }
    void Randomize(float) override {}
    std::vector<float> values;
    std::size_t count = 0;
};

TEST(Banks, PickingTakesBatchThenEntryFromTwoDraws) {
    const float justBelowOne = std::nextafter(1.0f, 0.0f);
    for (int level = 0; level < kLevelCount; ++level) {
        Draws low({0.0f, 0.0f});
        EXPECT_EQ(GetPuzzle(level, low), BankEntry(level, 1, 0));
        EXPECT_EQ(low.count, 2u);

        Draws high({justBelowOne, justBelowOne});
        EXPECT_EQ(GetPuzzle(level, high), BankEntry(level, 12, 99));
        EXPECT_EQ(high.count, 2u);

        // The first draw picks the batch, the second the entry.
        Draws mid({0.5f, 0.25f});
        EXPECT_EQ(GetPuzzle(level, mid), BankEntry(level, 7, 25));
        Draws swapped({0.25f, 0.5f});
        EXPECT_EQ(GetPuzzle(level, swapped), BankEntry(level, 4, 50));
    }
    Draws genius({0.0f, justBelowOne});
    EXPECT_EQ(mod_P4_Genius::GetPuzzle(genius), BankEntry(3, 1, 99));
    Draws easy({justBelowOne, 0.0f});
    EXPECT_EQ(mod_P1_Easy::GetPuzzle(easy), BankEntry(0, 12, 0));
    Draws inter({0.0f, 0.0f});
    EXPECT_EQ(mod_P2_Intermediate::GetPuzzle(inter), BankEntry(1, 1, 0));
    Draws adv({0.0f, 0.0f});
    EXPECT_EQ(mod_P3_Advanced::GetPuzzle(adv), BankEntry(2, 1, 0));
}

TEST(Banks, DrawsAreScaledInSinglePrecision) {
    // Exactly, r * 12 is below 11 here, but in single precision it rounds to
    // 11: batch 12. The same for the entry.
    const float r12 = 0.916666627f;
    ASSERT_LT(static_cast<double>(r12) * 12.0, 11.0);
    EXPECT_EQ(BankBatchFromDraw(r12), 12);
    const float r100 = 0.0899999961f;
    ASSERT_LT(static_cast<double>(r100) * 100.0, 9.0);
    EXPECT_EQ(BankEntryFromDraw(r100), 9);

    EXPECT_EQ(BankBatchFromDraw(1.0f / 12.0f), 2);
    EXPECT_EQ(BankEntryFromDraw(0.999f), 99);
    // Draws outside [0, 1) are held to the ends instead of reading past them.
    EXPECT_EQ(BankBatchFromDraw(1.0f), 12);
    EXPECT_EQ(BankEntryFromDraw(7.5f), 99);
    EXPECT_EQ(BankBatchFromDraw(-0.5f), 1);
    EXPECT_EQ(BankEntryFromDraw(std::nanf("")), 0);
}

TEST(Banks, OutOfRangeGivesNothing) {
    Draws none({0.5f, 0.5f});
    EXPECT_EQ(GetPuzzle(4, none), "");
    EXPECT_EQ(GetPuzzle(-1, none), "");
    EXPECT_EQ(none.count, 0u);
    EXPECT_EQ(BankEntry(0, 0, 0), "");
    EXPECT_EQ(BankEntry(0, 13, 0), "");
    EXPECT_EQ(BankEntry(0, 1, 100), "");
    EXPECT_EQ(BankEntry(0, 1, -1), "");
    EXPECT_EQ(BankEntry(4, 1, 0), "");
    EXPECT_EQ(mod_P3_Advanced::Entry(12, 99), BankEntry(2, 12, 99));
}

}  // namespace
