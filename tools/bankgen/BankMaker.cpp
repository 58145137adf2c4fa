// Making the four banks: generating, rating and writing their sources.
#include "tools/bankgen/BankMaker.h"

#include <algorithm>
#include <ostream>
#include <unordered_set>
#include <vector>

#include "tools/bankgen/Generator.h"

namespace bankgen {

const char* const kEasyFirstEntry =
    "8E6217C94|B4GI356HA|9136DHGE2|5FD1832G9|C2879416E|7I1562DC8|6HICB1547|AC547IH2F|47B8569A3|";
const char* const kEasyEnteredNine =
    "591CD6H72|D73AH295F|8B67IEA4C|ICE264781|7DB81C569|1F8I5GC2D|6HG431BI5|B1457I63H|3E96R8417|";
const char* const kGeniusLastEntry =
    "HI3712D5F|74A9F528C|B654831G9|514C2I867|3G68549A2|928F7A534|6E729834A|A325D6G98|D8I1376BE|";

namespace {

// One stream of random numbers for each job, so that each part of the banks
// depends only on its own seed and on the code.
constexpr std::uint64_t kSeedEasy = 0x7E55'0001'1200'0030ull;
constexpr std::uint64_t kSeedUpper = 0x7E55'0002'3600'0024ull;
constexpr std::uint64_t kSeedRich = 0x7E55'0003'0002'0026ull;
constexpr std::uint64_t kSeedLayout = 0x7E55'0004'0000'4800ull;

constexpr int kIntermediateRepeats = 85;  // entries that repeat another one
constexpr int kGeniusRepeats = 3;
constexpr int kRichClues = 26;  // the two genius entries with more givens
constexpr int kRichSlots[] = {SlotOf(1, 0), SlotOf(1, 14)};
constexpr int kOddBatch = 2;  // mod_P1_Easy batch without the last "|"

struct Made {
    std::string entry;
    Technique hardest;
};

class Maker {
public:
    Maker(MakeReport& report, std::ostream* log) : report_(report), log_(log) {
        for (const char* e : {kEasyFirstEntry, kEasyEnteredNine, kGeniusLastEntry}) {
            Grid p, s;
            if (DecodeEntry(e, p, s))
                seen_.insert(ToLine(p));
            else
                seen_.insert(e);  // the entry with 'R' is no plain entry
        }
    }

    BankSet Run() {
        std::vector<Made> easy = MakeEasy(kEntriesPerBank - 2);
        // Upper levels: the intermediate bank holds one entry more than it
        // makes room for, because one of its entries also stands in genius.
        std::array<std::vector<Made>, kLevelCount> upper =
            MakeUpper({0, kLevels[1].distinctEntries, kEntriesPerBank, kEntriesPerBank - kGeniusRepeats - 4});
        std::vector<Made> rich = MakeRich(2);
        Log("layout\n");

        Random64 rng(kSeedLayout);
        BankSet banks;

        // Easy: two fixed entries, the rest in order of making.
        {
            Bank& b = banks[0];
            b[SlotOf(1, 0)] = kEasyFirstEntry;
            b[SlotOf(8, 75)] = kEasyEnteredNine;
            std::size_t next = 0;
            for (int slot = 0; slot < kEntriesPerBank; ++slot)
                if (b[slot].empty()) b[slot] = easy[next++].entry;
            for (int e = 0; e < kEntriesPerBatch; ++e) b[SlotOf(kOddBatch, e)].pop_back();
        }

        // Intermediate: 85 repeats at random places, the other 1,115 slots
        // filled in order of making; the last one made is the entry that
        // also stands in genius.
        std::string shared;
        {
            Bank& b = banks[1];
            std::vector<int> free = FreeSlots(b);
            rng.Shuffle(free.begin(), free.end());
            std::vector<int> copies(free.begin(), free.begin() + kIntermediateRepeats);
            for (int slot : copies) b[slot] = "-";
            std::size_t next = 0;
            int sharedSlot = -1;
            for (int slot = 0; slot < kEntriesPerBank; ++slot) {
                if (!b[slot].empty()) continue;
                if (next + 1 == upper[1].size()) sharedSlot = slot;
                b[slot] = upper[1][next++].entry;
            }
            shared = upper[1].back().entry;
            FillCopies(b, copies, {sharedSlot}, rng);
        }

        // Advanced: all 1,200 in order of making.
        for (int slot = 0; slot < kEntriesPerBank; ++slot) banks[2][slot] = upper[2][slot].entry;

        // Genius: the fixed last entry, the two entries with 26 givens, the
        // shared entry at a random place, 3 repeats, the rest in order.
        {
            Bank& b = banks[3];
            b[SlotOf(12, 99)] = kGeniusLastEntry;
            b[kRichSlots[0]] = rich[0].entry;
            b[kRichSlots[1]] = rich[1].entry;
            std::vector<int> free = FreeSlots(b);
            rng.Shuffle(free.begin(), free.end());
            b[free[0]] = shared;
            std::vector<int> copies(free.begin() + 1, free.begin() + 1 + kGeniusRepeats);
            for (int slot : copies) b[slot] = "-";
            std::size_t next = 0;
            for (int slot = 0; slot < kEntriesPerBank; ++slot)
                if (b[slot].empty()) b[slot] = upper[3][next++].entry;
            FillCopies(b, copies, {SlotOf(12, 99), kRichSlots[0], kRichSlots[1], free[0]}, rng);
        }
        return banks;
    }

private:
    void Log(const std::string& s) {
        if (log_) *log_ << s << std::flush;
    }

    static std::vector<int> FreeSlots(const Bank& b) {
        std::vector<int> free;
        for (int slot = 0; slot < kEntriesPerBank; ++slot)
            if (b[slot].empty()) free.push_back(slot);
        return free;
    }

    // Each slot in `copies` gets the entry of another slot of the bank,
    // chosen among the slots not in `keep` (fixed entries, the shared one);
    // no two copies share a source.
    static void FillCopies(Bank& b, const std::vector<int>& copies, std::vector<int> keep, Random64& rng) {
        keep.insert(keep.end(), copies.begin(), copies.end());
        std::vector<int> sources;
        for (int slot = 0; slot < kEntriesPerBank; ++slot)
            if (std::find(keep.begin(), keep.end(), slot) == keep.end()) sources.push_back(slot);
        rng.Shuffle(sources.begin(), sources.end());
        for (std::size_t i = 0; i < copies.size(); ++i) b[copies[i]] = b[sources[i]];
    }

    // A puzzle not met before; records it.
    bool Fresh(const Grid& puzzle) { return seen_.insert(ToLine(puzzle)).second; }

    std::vector<Made> MakeEasy(int count) {
        Log("beginner: 30 givens, singles only\n");
        Random64 rng(kSeedEasy);
        std::vector<Made> out;
        while (static_cast<int>(out.size()) < count) {
            ++report_.attempts30;
            const Grid solution = RandomSolution(rng);
            const auto puzzle = CarvePuzzle(solution, kLevels[0].clues, rng);
            if (!puzzle) continue;
            const Rating r = RatePuzzle(*puzzle);
            if (r.outcome != RateOutcome::Rated || LevelOfTechnique(r.hardest) != 0) continue;
            if (!Fresh(*puzzle)) continue;
            out.push_back({EncodeEntry(*puzzle, solution), r.hardest});
            ++report_.byTechnique[0][r.Grade()];
        }
        return out;
    }

    // One stream of 24-given puzzles, each put into the level its grade
    // belongs to until every level has `want` entries.
    std::array<std::vector<Made>, kLevelCount> MakeUpper(std::array<int, kLevelCount> want) {
        Log("intermediate, advanced, genius: 24 givens\n");
        Random64 rng(kSeedUpper);
        std::array<std::vector<Made>, kLevelCount> out;
        auto done = [&] {
            for (int l = 1; l < kLevelCount; ++l)
                if (static_cast<int>(out[l].size()) < want[l]) return false;
            return true;
        };
        long nextLog = 5000;
        while (!done()) {
            ++report_.attempts24;
            if (report_.attempts24 >= nextLog) {
                Log("  " + std::to_string(report_.attempts24) + " grids: " + std::to_string(out[1].size()) + " / " +
                    std::to_string(out[2].size()) + " / " + std::to_string(out[3].size()) + "\n");
                nextLog += 5000;
            }
            const Grid solution = RandomSolution(rng);
            const auto puzzle = CarvePuzzle(solution, 24, rng);
            if (!puzzle) continue;
            const Rating r = RatePuzzle(*puzzle);
            if (r.outcome != RateOutcome::Rated) continue;
            const int level = LevelOfTechnique(r.hardest);
            if (level < 1 || static_cast<int>(out[level].size()) >= want[level]) continue;
            if (!Fresh(*puzzle)) continue;
            out[level].push_back({EncodeEntry(*puzzle, solution), r.hardest});
            ++report_.byTechnique[level][r.Grade()];
        }
        return out;
    }

    // Genius puzzles of 24 givens that keep their grade with two givens more.
    std::vector<Made> MakeRich(int count) {
        Log("genius with 26 givens\n");
        Random64 rng(kSeedRich);
        std::vector<Made> out;
        while (static_cast<int>(out.size()) < count) {
            const Grid solution = RandomSolution(rng);
            const auto puzzle = CarvePuzzle(solution, 24, rng);
            if (!puzzle) continue;
            const Rating first = RatePuzzle(*puzzle);
            if (first.outcome != RateOutcome::Rated || LevelOfTechnique(first.hardest) != 3) continue;
            const Grid richer = AddClues(*puzzle, solution, kRichClues - 24, rng);
            const Rating r = RatePuzzle(richer);
            if (r.outcome != RateOutcome::Rated || LevelOfTechnique(r.hardest) != 3) continue;
            if (!Fresh(richer)) continue;
            out.push_back({EncodeEntry(richer, solution), r.hardest});
            ++report_.byTechnique[3][r.Grade()];
        }
        return out;
    }

    MakeReport& report_;
    std::ostream* log_;
    std::unordered_set<std::string> seen_;
};

}  // namespace

BankSet MakeBanks(MakeReport* report, std::ostream* log) {
    MakeReport local;
    Maker maker(report ? *report : local, log);
    return maker.Run();
}

std::string ModuleFileName(int level) { return std::string(kLevels[level].bankModule) + ".cpp"; }

std::string ModuleSource(int level, const Bank& bank) {
    const LevelInfo& info = kLevels[level];
    std::string s;
    s.reserve(130000);
    s += "// ";
    s += info.bankModule;
    s += ": the 1,200 puzzles of the level \"";
    s += info.labelName;
    s += "\", 12 batches of 100.\n";
    s += "// Made by tessuma-bankgen from fixed seeds. Do not edit: regenerate it as\n";
    s += "// tools/bankgen/README.md tells.\n\n";
    s += "#include \"core/banks/Banks.h\"\n\n";
    s += "namespace ";
    s += info.bankModule;
    s += " {\nnamespace {\n\nconstexpr banks_detail::BankTable kBank = {\n";
    for (int batch = 1; batch <= kBatchesPerBank; ++batch) {
        s += "    {\n        // batch " + std::to_string(batch) + "\n";
        for (int e = 0; e < kEntriesPerBatch; ++e) {
            s += "        \"";
            s += bank[SlotOf(batch, e)];
            s += "\",\n";
        }
        s += "    },\n";
    }
    s += "};\n\n}  // namespace\n\n";
    s += "std::string GetPuzzle(IRandom& rnd) { return banks_detail::PickFromBank(kBank, rnd); }\n\n";
    s += "std::string Entry(int batch, int entry) { return banks_detail::EntryOfBank(kBank, batch, entry); }\n\n";
    s += "}  // namespace ";
    s += info.bankModule;
    s += "\n";
    return s;
}

}  // namespace bankgen
