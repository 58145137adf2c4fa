// The bank tools: the independent solution counter, the grid generator and
// the difficulty rater with each of its techniques.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <string_view>

#include "tools/bankgen/Generator.h"
#include "tools/bankgen/Grid.h"
#include "tools/bankgen/Rater.h"

using namespace bankgen;

namespace {

constexpr int C(int row, int col) { return row * 9 + col; }

Grid Line(std::string_view s) {
    Grid g{};
    EXPECT_TRUE(FromLine(s, g)) << s;
    return g;
}

const char* const kSolved =
    "534678912672195348198342567859761423426853791713924856961537284287419635345286179";

// ---- Solution counter and entries --------------------------------------------

TEST(SolutionCounter, CountsUpToTheLimit) {
    Grid empty{};
    EXPECT_EQ(CountSolutions(empty, 2), 2);
    EXPECT_EQ(CountSolutions(empty, 5), 5);

    const Grid full = Line(kSolved);
    Grid first{};
    EXPECT_EQ(CountSolutions(full, 2, &first), 1);
    EXPECT_EQ(first, full);

    // A well-known puzzle with one solution, the grid above.
    const Grid puzzle =
        Line("53..7....6..195....98....6.8...6...34..8.3..17...2...6.6....28....419..5....8..79");
    first = {};
    EXPECT_EQ(CountSolutions(puzzle, 2, &first), 1);
    EXPECT_EQ(first, full);
}

TEST(SolutionCounter, SeesTwoSolutionsAndNone) {
    // Empty the four corners of a rectangle of two digits that spans two
    // boxes only: both ways of filling it are solutions.
    Grid two = Line(kSolved);
    bool found = false;
    for (int r1 = 0; r1 < 9 && !found; ++r1)
        for (int r2 = r1 + 1; r2 < 9 && !found; ++r2)
            for (int c1 = 0; c1 < 9 && !found; ++c1)
                for (int c2 = c1 + 1; c2 < 9 && !found; ++c2) {
                    const int a = two[C(r1, c1)], b = two[C(r1, c2)];
                    const bool twoBoxes = BoxOf(C(r1, c1)) == BoxOf(C(r2, c1)) || BoxOf(C(r1, c1)) == BoxOf(C(r1, c2));
                    if (two[C(r2, c1)] == b && two[C(r2, c2)] == a && twoBoxes) {
                        for (int c : {C(r1, c1), C(r1, c2), C(r2, c1), C(r2, c2)}) two[c] = 0;
                        found = true;
                    }
                }
    ASSERT_TRUE(found);
    EXPECT_EQ(CountSolutions(two, 2), 2);
    EXPECT_EQ(CountSolutions(two, 1), 1);

    Grid clash{};
    clash[0] = 5;
    clash[8] = 5;
    EXPECT_EQ(CountSolutions(clash, 2), 0);

    // No digit stands twice, yet the last cell of row 1 can hold nothing.
    Grid stuck{};
    for (int c = 0; c < 8; ++c) stuck[c] = static_cast<std::uint8_t>(c + 1);
    stuck[C(1, 8)] = 9;
    EXPECT_TRUE(IsConsistent(stuck));
    EXPECT_EQ(CountSolutions(stuck, 2), 0);
}

TEST(Entries, EncodeAndDecode) {
    const Grid solution = Line(kSolved);
    Grid puzzle{};
    puzzle[0] = 5;
    puzzle[80] = 9;
    const std::string e = EncodeEntry(puzzle, solution);
    ASSERT_EQ(e.size(), 90u);
    EXPECT_EQ(e.substr(0, 10), "E34678912|");
    EXPECT_EQ(e.substr(80), "34528617I|");
    Grid p2{}, s2{};
    ASSERT_TRUE(DecodeEntry(e, p2, s2));
    EXPECT_EQ(p2, puzzle);
    EXPECT_EQ(s2, solution);
    // Without separators too; anything else in a cell, or a wrong length, fails.
    std::string bare;
    for (char ch : e)
        if (ch != '|') bare += ch;
    EXPECT_TRUE(DecodeEntry(bare, p2, s2));
    EXPECT_FALSE(DecodeEntry(bare.substr(1), p2, s2));
    EXPECT_FALSE(DecodeEntry(bare + "1", p2, s2));
    bare[40] = 'R';
    EXPECT_FALSE(DecodeEntry(bare, p2, s2));
    bare[40] = '0';
    EXPECT_FALSE(DecodeEntry(bare, p2, s2));
}

// ---- Generator -----------------------------------------------------------------

TEST(Generator, GridsAndPuzzlesAreValidAndReproducible) {
    Random64 a(42), b(42);
    for (int i = 0; i < 20; ++i) {
        const Grid s = RandomSolution(a);
        ASSERT_TRUE(IsCompleteValid(s));
        EXPECT_EQ(s, RandomSolution(b));
        const auto p = CarvePuzzle(s, 30, a);
        EXPECT_EQ(p, CarvePuzzle(s, 30, b));
        ASSERT_TRUE(p.has_value());
        EXPECT_EQ(CountClues(*p), 30);
        Grid only{};
        EXPECT_EQ(CountSolutions(*p, 2, &only), 1);
        EXPECT_EQ(only, s);
        for (int c = 0; c < 81; ++c) {
            if ((*p)[c]) { EXPECT_EQ((*p)[c], s[c]); }
        }
    }
    // Different seeds give different grids.
    Random64 c(43);
    Random64 d(42);
    EXPECT_NE(RandomSolution(c), RandomSolution(d));
}

TEST(Generator, CarvingStopsAtMinimalAndAddingKeepsUniqueness) {
    Random64 rng(7);
    const Grid s = RandomSolution(rng);
    // 17 givens is below what random carving reaches.
    EXPECT_FALSE(CarvePuzzle(s, 17, rng).has_value());
    std::optional<Grid> p;
    while (!(p = CarvePuzzle(s, 24, rng))) {
    }
    const Grid more = AddClues(*p, s, 2, rng);
    EXPECT_EQ(CountClues(more), 26);
    EXPECT_EQ(CountSolutions(more, 2), 1);
    for (int c = 0; c < 81; ++c) {
        if ((*p)[c]) { EXPECT_EQ(more[c], (*p)[c]); }
    }
}

TEST(Random64, BelowStaysInRangeAndShuffleKeepsElements) {
    Random64 rng(1);
    std::set<std::uint32_t> seen;
    for (int i = 0; i < 1000; ++i) {
        const auto v = rng.Below(9);
        ASSERT_LT(v, 9u);
        seen.insert(v);
    }
    EXPECT_EQ(seen.size(), 9u);
    std::array<int, 81> a{};
    for (int i = 0; i < 81; ++i) a[i] = i;
    rng.Shuffle(a.begin(), a.end());
    std::set<int> all(a.begin(), a.end());
    EXPECT_EQ(all.size(), 81u);
}

// ---- Techniques on hand-made candidate boards ------------------------------------
//
// Every cell is closed (filled) except the few opened with chosen candidates,
// so each board shows one pattern of a technique.

CandidateBoard Closed() {
    CandidateBoard b;
    b.values.fill(1);
    b.cand.fill(0);
    return b;
}

void Open(CandidateBoard& b, int cell, std::string_view digits) {
    b.values[cell] = 0;
    b.cand[cell] = 0;
    for (char ch : digits) b.cand[cell] |= static_cast<std::uint16_t>(1u << (ch - '1'));
}

std::string Cands(const CandidateBoard& b, int cell) {
    std::string s;
    for (int d = 1; d <= 9; ++d)
        if (b.cand[cell] & (1u << (d - 1))) s += static_cast<char>('0' + d);
    return s;
}

// Applies t once and checks that exactly the listed cells changed, to the
// listed candidates.
void ExpectStep(Technique t, CandidateBoard b, std::initializer_list<std::pair<int, std::string>> changes) {
    const CandidateBoard before = b;
    ASSERT_TRUE(ApplyTechnique(t, b)) << TechniqueName(t) << " found nothing";
    for (int c = 0; c < 81; ++c) {
        std::string want = Cands(before, c);
        for (const auto& [cell, digits] : changes)
            if (cell == c) want = digits;
        EXPECT_EQ(Cands(b, c), want) << TechniqueName(t) << ", r" << c / 9 + 1 << "c" << c % 9 + 1;
    }
}

TEST(Techniques, Singles) {
    CandidateBoard b = Closed();
    Open(b, C(0, 0), "123");
    Open(b, C(0, 1), "23");
    Open(b, C(0, 2), "23");
    CandidateBoard h = b;
    ASSERT_TRUE(ApplyTechnique(Technique::HiddenSingle, h));
    EXPECT_EQ(h.values[C(0, 0)], 1);  // 1 has no other place in row 1
    EXPECT_EQ(h.cand[C(0, 0)], 0);
    EXPECT_FALSE(ApplyTechnique(Technique::NakedSingle, b));

    CandidateBoard n = Closed();
    Open(n, C(4, 4), "7");
    Open(n, C(4, 5), "78");
    Open(n, C(8, 8), "78");
    ASSERT_TRUE(ApplyTechnique(Technique::NakedSingle, n));
    EXPECT_EQ(n.values[C(4, 4)], 7);
    EXPECT_EQ(Cands(n, C(4, 5)), "8");  // a peer loses the digit
    EXPECT_EQ(Cands(n, C(8, 8)), "78");  // no peer: untouched
}

TEST(Techniques, LockedCandidates) {
    // Pointing: in the top left box 4 lies only in row 1.
    CandidateBoard p = Closed();
    Open(p, C(0, 0), "45");
    Open(p, C(0, 1), "46");
    Open(p, C(1, 0), "56");
    Open(p, C(0, 5), "48");
    ExpectStep(Technique::LockedCandidates, p, {{C(0, 5), "8"}});

    // Claiming: in row 5, 2 lies only in the centre box.
    CandidateBoard c = Closed();
    Open(c, C(4, 3), "23");
    Open(c, C(4, 4), "25");
    Open(c, C(3, 3), "29");
    ExpectStep(Technique::LockedCandidates, c, {{C(3, 3), "9"}});

    // Spread over two rows and two columns of the box: nothing.
    CandidateBoard none = Closed();
    Open(none, C(0, 0), "4");
    Open(none, C(1, 1), "4");
    Open(none, C(0, 5), "4");
    Open(none, C(5, 1), "4");
    EXPECT_FALSE(ApplyTechnique(Technique::LockedCandidates, none));
}

TEST(Techniques, NakedSubsets) {
    CandidateBoard pair = Closed();
    Open(pair, C(8, 0), "19");
    Open(pair, C(8, 1), "19");
    Open(pair, C(8, 2), "159");
    Open(pair, C(8, 3), "56");
    ExpectStep(Technique::NakedPair, pair, {{C(8, 2), "5"}});

    CandidateBoard triple = Closed();
    Open(triple, C(0, 4), "24");
    Open(triple, C(1, 4), "46");
    Open(triple, C(2, 4), "26");
    Open(triple, C(3, 4), "2468");
    Open(triple, C(4, 4), "69");
    ExpectStep(Technique::NakedTriple, triple, {{C(3, 4), "8"}, {C(4, 4), "9"}});
    EXPECT_FALSE(ApplyTechnique(Technique::NakedPair, triple));

    CandidateBoard quad = Closed();
    Open(quad, C(6, 0), "12");
    Open(quad, C(6, 1), "23");
    Open(quad, C(6, 2), "34");
    Open(quad, C(6, 3), "14");
    Open(quad, C(6, 4), "123456");
    Open(quad, C(6, 5), "567");
    ExpectStep(Technique::NakedQuad, quad, {{C(6, 4), "56"}});
    EXPECT_FALSE(ApplyTechnique(Technique::NakedTriple, quad));
}

TEST(Techniques, HiddenSubsets) {
    CandidateBoard pair = Closed();
    Open(pair, C(2, 0), "378");
    Open(pair, C(2, 1), "379");
    Open(pair, C(2, 2), "189");
    Open(pair, C(2, 3), "189");
    ExpectStep(Technique::HiddenPair, pair, {{C(2, 0), "37"}, {C(2, 1), "37"}});

    CandidateBoard triple = Closed();
    Open(triple, C(5, 0), "1256");
    Open(triple, C(5, 1), "237");
    Open(triple, C(5, 2), "1389");
    Open(triple, C(5, 3), "56789");
    Open(triple, C(5, 4), "56789");
    ExpectStep(Technique::HiddenTriple, triple, {{C(5, 0), "12"}, {C(5, 1), "23"}, {C(5, 2), "13"}});

    CandidateBoard quad = Closed();
    Open(quad, C(7, 0), "128");
    Open(quad, C(7, 1), "239");
    Open(quad, C(7, 2), "348");
    Open(quad, C(7, 3), "149");
    Open(quad, C(7, 4), "56789");
    Open(quad, C(7, 5), "56789");
    Open(quad, C(7, 6), "56789");
    ExpectStep(Technique::HiddenQuad, quad,
               {{C(7, 0), "12"}, {C(7, 1), "23"}, {C(7, 2), "34"}, {C(7, 3), "14"}});
}

TEST(Techniques, Fish) {
    // X-wing on 5: rows 2 and 5 hold it only in columns 3 and 8.
    CandidateBoard x = Closed();
    Open(x, C(1, 2), "56");
    Open(x, C(1, 7), "57");
    Open(x, C(4, 2), "58");
    Open(x, C(4, 7), "59");
    Open(x, C(0, 2), "15");
    Open(x, C(7, 2), "35");
    Open(x, C(8, 7), "45");
    ExpectStep(Technique::XWing, x, {{C(0, 2), "1"}, {C(7, 2), "3"}, {C(8, 7), "4"}});
    // A third place in one of the rows spoils it.
    CandidateBoard spoilt = x;
    Open(spoilt, C(1, 4), "5");
    EXPECT_FALSE(ApplyTechnique(Technique::XWing, spoilt));

    // Swordfish on 3: rows 1, 5, 9 in columns 2, 5, 8.
    CandidateBoard s = Closed();
    Open(s, C(0, 1), "13");
    Open(s, C(0, 4), "23");
    Open(s, C(4, 4), "34");
    Open(s, C(4, 7), "35");
    Open(s, C(8, 1), "37");
    Open(s, C(8, 7), "38");
    Open(s, C(1, 1), "36");
    Open(s, C(6, 4), "38");
    Open(s, C(2, 7), "39");
    ExpectStep(Technique::Swordfish, s, {{C(1, 1), "6"}, {C(6, 4), "8"}, {C(2, 7), "9"}});
    EXPECT_FALSE(ApplyTechnique(Technique::XWing, s));

    // Jellyfish on 7: rows 1, 3, 6, 8 in columns 1, 4, 6, 9.
    CandidateBoard j = Closed();
    for (int cell : {C(0, 0), C(0, 3), C(2, 3), C(2, 5), C(5, 5), C(5, 8), C(7, 0), C(7, 8)}) Open(j, cell, "7");
    Open(j, C(1, 0), "27");
    Open(j, C(4, 3), "47");
    Open(j, C(8, 5), "67");
    Open(j, C(3, 8), "17");
    ExpectStep(Technique::Jellyfish, j, {{C(1, 0), "2"}, {C(4, 3), "4"}, {C(8, 5), "6"}, {C(3, 8), "1"}});
    EXPECT_FALSE(ApplyTechnique(Technique::Swordfish, j));
}

TEST(Techniques, Wings) {
    // XY-wing: pivot r5c5 {1,2}, pincers r5c1 {1,3} and r1c5 {2,3}; r1c1
    // sees both pincers and loses 3.
    CandidateBoard xy = Closed();
    Open(xy, C(4, 4), "12");
    Open(xy, C(4, 0), "13");
    Open(xy, C(0, 4), "23");
    Open(xy, C(0, 0), "35");
    Open(xy, C(0, 8), "36");
    ExpectStep(Technique::XYWing, xy, {{C(0, 0), "5"}});
    // Without the pivot's link to a pincer there is no wing.
    CandidateBoard broken = xy;
    Open(broken, C(4, 4), "14");
    EXPECT_FALSE(ApplyTechnique(Technique::XYWing, broken));

    // XYZ-wing: pivot r5c5 {1,2,3}, pincers r5c6 {1,3} and r1c5 {2,3}; the
    // cells of column 5 in the centre box see all three and lose 3.
    CandidateBoard xyz = Closed();
    Open(xyz, C(4, 4), "123");
    Open(xyz, C(4, 5), "13");
    Open(xyz, C(0, 4), "23");
    Open(xyz, C(3, 4), "37");
    Open(xyz, C(5, 4), "38");
    Open(xyz, C(2, 4), "39");  // sees the pivot and r1c5 only
    ExpectStep(Technique::XYZWing, xyz, {{C(3, 4), "7"}, {C(5, 4), "8"}});
    EXPECT_FALSE(ApplyTechnique(Technique::XYWing, xyz));
}

TEST(Techniques, SimpleColouring) {
    // Chain of 6: r1c1 - r1c9 - r9c9 - r9c1; r5c1 sees both colours.
    CandidateBoard trap = Closed();
    Open(trap, C(0, 0), "26");
    Open(trap, C(0, 8), "36");
    Open(trap, C(8, 8), "46");
    Open(trap, C(8, 0), "56");
    Open(trap, C(4, 0), "16");
    ExpectStep(Technique::SimpleColouring, trap, {{C(4, 0), "1"}});

    // Chain r1c1 - r1c9 - r9c9 - r9c3 - r3c3: r1c1 and r3c3 share a colour
    // and a box, so that colour is false.
    CandidateBoard wrap = Closed();
    Open(wrap, C(0, 0), "26");
    Open(wrap, C(0, 8), "36");
    Open(wrap, C(8, 8), "46");
    Open(wrap, C(8, 2), "67");
    Open(wrap, C(2, 2), "56");
    Open(wrap, C(1, 1), "69");
    ExpectStep(Technique::SimpleColouring, wrap, {{C(0, 0), "2"}, {C(8, 8), "4"}, {C(2, 2), "5"}});
}

TEST(Techniques, Chains) {
    // X-chain (a skyscraper) on 4: r2c1 = r8c1 - r8c5 = r3c5, so r3c2,
    // which sees both ends, loses 4. Row 8 has a third 4 and is no strong link.
    CandidateBoard x = Closed();
    Open(x, C(1, 0), "14");
    Open(x, C(7, 0), "24");
    Open(x, C(7, 4), "34");
    Open(x, C(2, 4), "46");
    Open(x, C(7, 7), "47");
    Open(x, C(2, 1), "45");
    ExpectStep(Technique::XChain, x, {{C(2, 1), "5"}});

    // XY-chain r1c1 {1,2} - r1c5 {2,3} - r5c5 {3,4} - r5c1 {4,1}: one end is
    // 1, so column 1 loses 1 elsewhere.
    CandidateBoard xy = Closed();
    Open(xy, C(0, 0), "12");
    Open(xy, C(0, 4), "23");
    Open(xy, C(4, 4), "34");
    Open(xy, C(4, 0), "14");
    Open(xy, C(2, 0), "17");
    Open(xy, C(8, 0), "18");
    ExpectStep(Technique::XYChain, xy, {{C(2, 0), "7"}, {C(8, 0), "8"}});

    // Alternating chain, mixing conjugate pairs and two-digit cells:
    // r1c1 not 1 => r1c5 is 1 (row 1) => r1c5 not 5 => r5c5 is 5 (column 5)
    // => r5c1 not 5 => r5c1 is 3. So r1c1 is 1 or r5c1 is 3; as they share
    // column 1, r1c1 cannot be 3.
    CandidateBoard aic = Closed();
    Open(aic, C(0, 0), "123");
    Open(aic, C(0, 4), "15");
    Open(aic, C(4, 4), "57");
    Open(aic, C(4, 0), "35");
    for (auto t : {Technique::SimpleColouring, Technique::XChain, Technique::XYChain}) {
        CandidateBoard plain = aic;
        EXPECT_FALSE(ApplyTechnique(t, plain)) << TechniqueName(t);
    }
    ExpectStep(Technique::AlternatingChain, aic, {{C(0, 0), "12"}});
}

// ---- The whole rater on puzzles ---------------------------------------------------------

struct Known {
    const char* puzzle;
    Technique hardest;
};

// One puzzle for each technique that whole puzzles come to need, graded by
// the hardest one.
const Known kKnown[] = {
    {".7...36..4...961...1.....7.......49....26.......5.8...1.4.....93..4.256..58.....1", Technique::HiddenSingle},
    {"...231.....2.48.16.9.....3.6..3.........5..4...84..695.....3.5.97.8....2.5.......", Technique::NakedSingle},
    {".....7....26.3......8.26.7.5.....64..93..1........43.5.....35...7....9...5..7.2..", Technique::LockedCandidates},
    {"7........2...8.....4...532.3.85.7.......6...5....4.83.4.....78...1..4..6.5.12.4..", Technique::NakedPair},
    {".........3.....4..7.238...9...2..5.4.....1..3..965.81.8..5.....56........91.2....", Technique::HiddenPair},
    {".25...........8...9.....73.......9....7.9.8.1.4.6........13.56..81.....35.2..7.1.", Technique::NakedTriple},
    {".3..6...486.....2.9..5..7...9...........8.1..28.14.3......354...46.....8........1", Technique::HiddenTriple},
    {"6.....4.3..457.....3..4...8....17....5..98.1..4....78...6..12..3.........87..49..", Technique::NakedQuad},
    {"5.9.1.78..8..3..95..........6......8...7.3.....5..692.......467..48...5..7.......", Technique::XWing},
    {".5..7.24.1.......9.3..12.5....1.867.56..3......3...4......2.81..8.3.......9..1...", Technique::Swordfish},
    {".4.12..8....7.53...9.6.87....23..5..8.....9.6.5...7.3.9.4.8.......5............47", Technique::XYWing},
    {"...6..9....542..8.4.........4.2..7.5..37...469....6..27.6...5...3...76.8..1......", Technique::XYZWing},
    {".....6.......9.14..2.....8.....6..1..69.8..7.3....246.9.75..........7.944.69..8..", Technique::SimpleColouring},
    {"7..39.4..85..721.......5..6..3...2..281.....4.6.....9..12..3..56...........2...8.", Technique::XChain},
    {"...6.......5.2....47.1..58...9.....1.8....4.312...3.7..3.7.6..525.....97..1......", Technique::XYChain},
    {"23.9..5..1...2......7..53..9.4..8........74.8...2..6.3.7.5.2.1..4.......8.....9.7", Technique::AlternatingChain},
    {".9..34.5...4......8...9..1.....45..6.6.3.....5........98.2..5.7.2.6...9..3......1", Technique::Trial},
};

TEST(Rater, GradesKnownPuzzlesByTheirHardestTechnique) {
    for (const Known& k : kKnown) {
        const Rating r = RatePuzzle(Line(k.puzzle));
        ASSERT_EQ(r.outcome, RateOutcome::Rated) << k.puzzle;
        EXPECT_EQ(TechniqueName(r.hardest), std::string(TechniqueName(k.hardest))) << k.puzzle;
        EXPECT_TRUE(r.steppedToSolution) << k.puzzle;
        EXPECT_GT(r.uses[static_cast<int>(k.hardest)], 0);
        for (int t = r.Grade() + 1; t < kTechniqueCount; ++t) EXPECT_EQ(r.uses[t], 0);
        EXPECT_EQ(CountSolutions(r.solution, 1), 1);
        EXPECT_TRUE(IsCompleteValid(r.solution));
    }
}

TEST(Rater, ReportsPuzzlesWithoutASingleSolution) {
    Grid empty{};
    EXPECT_EQ(RatePuzzle(empty).outcome, RateOutcome::SeveralSolutions);
    Grid clash = Line(kKnown[0].puzzle);
    clash[0] = 7;  // a second 7 in row 1
    EXPECT_EQ(RatePuzzle(clash).outcome, RateOutcome::NoSolution);
    Grid full = Line(kSolved);
    const Rating r = RatePuzzle(full);
    EXPECT_EQ(r.outcome, RateOutcome::Rated);
    EXPECT_EQ(r.hardest, Technique::None);
    EXPECT_TRUE(r.steppedToSolution);
}

TEST(Rater, LevelsFollowTheTechniques) {
    EXPECT_EQ(LevelOfTechnique(Technique::HiddenSingle), 0);
    EXPECT_EQ(LevelOfTechnique(Technique::NakedSingle), 0);
    EXPECT_EQ(LevelOfTechnique(Technique::LockedCandidates), 1);
    for (auto t : {Technique::NakedPair, Technique::HiddenPair, Technique::NakedTriple, Technique::HiddenTriple,
                   Technique::NakedQuad, Technique::HiddenQuad})
        EXPECT_EQ(LevelOfTechnique(t), 2) << TechniqueName(t);
    for (int t = static_cast<int>(Technique::XWing); t <= static_cast<int>(Technique::AlternatingChain); ++t)
        EXPECT_EQ(LevelOfTechnique(static_cast<Technique>(t)), 3) << t;
    EXPECT_EQ(LevelOfTechnique(Technique::Trial), -1);
    // Levels never overlap and rise with the grade.
    int last = 0;
    for (int t = 1; t < kTechniqueCount - 1; ++t) {
        const int level = LevelOfTechnique(static_cast<Technique>(t));
        EXPECT_GE(level, last);
        last = level;
    }
    EXPECT_STREQ(GradeWord(Technique::NakedSingle), "beginner");
    EXPECT_STREQ(GradeWord(Technique::XYWing), "genius");
    EXPECT_STREQ(GradeWord(Technique::Trial), "beyond genius");
    std::set<std::string> names;
    for (int t = 0; t < kTechniqueCount; ++t) names.insert(TechniqueName(static_cast<Technique>(t)));
    EXPECT_EQ(names.size(), static_cast<std::size_t>(kTechniqueCount));
}

}  // namespace
