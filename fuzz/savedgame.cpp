// Fuzz target: a saved game made of any bytes.
//
// The file is named on the command line at start-up (in quotes, which the
// game removes), then opened again over the running game with LoadGameFile.
// A file whose first line has 81 characters or more is a game, and its board
// is that line, unless the file is larger than the reader takes (1 MiB); any
// other file is refused with "That file no good." and the board stays as it
// was. A game that was read is saved and read back and
// must come back the same. Then a little play, and the close command.

#include <string>

#include "core/SavedGame.h"
#include "core/modSudoku.h"
#include "core/vb.h"
#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "fuzz/FuzzSupport.h"
#include "sim/World.h"

namespace {

// The board line of a file: "|" removed, up to the first CR LF, or (as the
// reader also takes the lone LF of editors here as a line end) up to the
// first LF with a CR before it dropped.
std::string FirstLine(const std::string& text, bool lineFeedEnds) {
    const std::string t = vb::Remove(text, "|");
    std::size_t at = t.find(lineFeedEnds ? "\n" : "\r\n");
    if (at == std::string::npos) return t;
    if (lineFeedEnds && at > 0 && t[at - 1] == '\r') --at;
    return t.substr(0, at);
}

// What a saved game holds.
struct Game {
    std::string board, marks, score, level;
    std::int32_t base = 0, clock = 0;
    bool operator==(const Game&) const = default;
};

Game Take(const frmTessuma& f) {
    return Game{f.BuildBoardState(),     f.GetViewPosText(), f.lblScore.Caption,
                f.lblDifficulty.Caption, f.BaseScore,        f.ClockSeconds};
}

// Whether the solver settles the board's digits within a budget of trial
// steps: 1M take about a second under the sanitizers.
bool QuickToSearch(const frmTessuma& f) {
    modSudoku::Board digits{};
    for (std::size_t cell = 0; cell < 81; ++cell) {
        const double v = vb::Val(f.txtCell[cell].Text);
        digits[cell] = (v >= 1 && v <= 9) ? static_cast<std::uint8_t>(v) : 0;
    }
    modSudoku::SearchStop budget;
    budget.maxCalls = 1000000;
    (void)modSudoku::LoadBoard(digits);
    (void)modSudoku::SolveBoard(&budget);
    return !modSudoku::Stopped();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using fuzz::Require;
    const std::string text = fuzz::Text(data, size);
    const std::string crlfLine = FirstLine(text, false), lfLine = FirstLine(text, true);

    World w;
    const std::string path = w.Path("game.tsm");
    w.files.Put(path, text);
    w.commandLine = "\"" + path + "\"";
    Program p(w.MakePorts());
    p.Main();
    Require(p.Running && p.MainForm != nullptr, "the game starts with any file on its command line");
    frmTessuma& f = *p.MainForm;

    const bool loaded = !f.BoardState.empty();
    if (!loaded) {
        Require(lfLine.size() < 81 || text.size() > kMaxGameFileBytes,
                "a file of at most 1 MiB with 81 characters on its first line is a game");
        Require(w.messages.lastText == "That file no good.", "a file that is no game is refused");
        Require(!f.tmrClock.Enabled, "a refused file deals no board");
    } else {
        const std::string board = f.BuildBoardState();
        Require(crlfLine.size() >= 81, "a file with less than 81 characters on its first line is refused");
        Require(text.size() <= kMaxGameFileBytes, "a file over 1 MiB is refused");
        Require(board == crlfLine.substr(0, 81) || (lfLine.size() >= 81 && board == lfLine.substr(0, 81)),
                "the board is the first line of the file");
    }

    // A tick, then the same file over the running game.
    if (f.tmrClock.Enabled) f.tmrClock_Timer();
    const Game before = Take(f);
    const int messages = w.messages.count;
    f.LoadGameFile(path);
    if (!loaded) {
        Require(Take(f) == before, "a refused file leaves the game as it was");
        Require(w.messages.count == messages + 1, "a refused file is told");
    } else {
        // Saved and read back, the game is the same.
        const Game loaded = Take(f);
        const int shown = w.messages.count;
        f.WriteGameFile(w.Path("copy"));
        Require(w.messages.count == shown && !f.PuzzleDirty, "the game saves into the sandbox");
        f.LoadGameFile(w.Path("copy.tsm"));
        Require(Take(f) == loaded, "a saved game reads back the same");
    }

    // A little play on whatever board there is, then the close command; the
    // question about the unsaved game is closed unanswered. The solver has
    // no limit on effort: on a board without a solution (a digit twice in a
    // unit, or no doubled digit and still none) it may search for minutes
    // before it gives up, which is slow by design, not broken. The solve
    // command is left out where a search of the board's digits takes more
    // than a budget of trial steps.
    if (f.tmrClock.Enabled) f.tmrClock_Timer();
    f.UpdateViewPossible();
    f.mnuFillRandomSquare_Click();
    bool doubled = false;
    f.FindDuplicate(doubled);
    if (!doubled && QuickToSearch(f)) {
        w.popups.answers.push_back(MenuAnswer{false, "mnuSolvePuzzle", -1});
        f.cmdSideNav_Click(4);  // the hint menu: solve the rest
    }
    f.cmdClose_Click();
    return 0;
}
