// Saved games: a game is five lines of text in a ".tsm" file, each ending
// with CR LF: the board state, the score shown, the level word, the clock in
// seconds and the 729 characters of the marks.
//
// Writing goes through a temporary file that replaces the old one only when
// it is whole. Reading is forgiving about missing lines, but a file that
// can't be a game (missing, unreadable, empty, a first line under 81
// characters, a folder, a huge file) is refused before anything on the
// board changes, with the game's own words for it.

#include "forms/frmTessuma.h"

#include <new>

#include "core/Levels.h"
#include "core/SavedGame.h"
#include "core/vb.h"
#include "forms/clsDIALOGS.h"
#include "forms/modMain.h"

namespace {

constexpr const char* kFilter = "Tessuma Saved Games (*.tsm)|*.tsm";
constexpr const char* kOpenTitle = "Open a Saved Tessuma Game";
constexpr const char* kSaveTitle = "Save Your Tessuma Game";
constexpr const char* kNoGood = "That file no good.";
constexpr int kStyleYesNo = 4, kStyleWarning = 48;

// The game's use of the file dialogs: its title and filter, one file, and
// the last folder of the dialog's kind to start in.
clsDIALOGS* PrepareDialogs(Program& program, const char* title) {
    clsDIALOGS* d = program.gDialogs.get();
    if (!d) return nullptr;
    d->strTitle(title);
    d->blnAllowMultipleFileSelect(false);
    d->strInitialDir("");
    d->strFilter(kFilter);
    return d;
}

}  // namespace

// Side button 1: a saved game replaces the running one at once, saved or not.
void frmTessuma::OpenGame() {
    clsDIALOGS* d = PrepareDialogs(program, kOpenTitle);
    if (!d) return;
    const std::string path = d->strGetOpenFileName("");
    if (!path.empty() && ports.files.IsFile(path)) LoadGameFile(path);
}

// Side button 2. The question about an existing file comes before ".tsm" is
// added, so a name typed without it replaces "name.tsm" without a question.
void frmTessuma::SaveGame() {
    clsDIALOGS* d = PrepareDialogs(program, kSaveTitle);
    if (!d) return;
    const std::string path = d->strGetSaveFileName("");
    if (path.empty()) return;
    if (ports.files.IsFile(path)) {
        const int answer = ports.sysbox.Show(path + " already exists.\r\n\r\nDo you want to replace it?", "Save As",
                                              kStyleWarning | kStyleYesNo);
        if (answer != ISystemMessageBox::Yes) return;
    }
    WriteGameFile(path);
}

// Reads a saved game. Missing lines are forgiven; a file that can't be a
// game is refused and the board stays as it was.
void frmTessuma::LoadGameFile(const std::string& path) {
    if (!path.empty() && (path.back() == '\\' || path.back() == '/')) return;

    std::optional<SavedGame> game;
    try {
        std::string text;
        if (ports.files.ReadFile(path, kMaxGameFileBytes, text) == IFiles::Read::Ok) game = ParseSavedGame(text);
    } catch (const std::bad_alloc&) {
        game.reset();
    }
    if (!game) {
        ShowMessage(kNoGood, "");
        return;
    }

    BoardState = game->board;
    ShowBoardState();
    lblScore.Caption = game->score;
    const LevelInfo* level = LevelOfWord(game->level);
    lblDifficulty.Caption = level ? level->labelName : "";
    BaseScore = level ? level->baseScore : 0;
    // The clock by the number's value, rounded; the label shows "0:00" until
    // the next tick.
    ClockSeconds = game->clock;
    SetViewPosText(game->marks);
}

// Writes the game. The change handling stays switched off afterwards: only
// the next deal, load or help switches it on again.
void frmTessuma::WriteGameFile(const std::string& path) {
    if (path.empty()) return;
    const std::string target = WithGameExtension(path);
    SuppressChange = true;

    bool written = false;
    try {
        const SavedGame game{BuildBoardState(), lblScore.Caption, lblDifficulty.Caption, ClockSeconds,
                             GetViewPosText()};
        written = ports.files.WriteFileAtomically(target, FormatSavedGame(game));
    } catch (const std::bad_alloc&) {
        written = false;
    }
    if (!written) {
        ShowMessage(kNoGood, "");
        return;
    }
    PuzzleDirty = false;
}
