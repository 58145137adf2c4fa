#pragma once
// frmTessuma: the main form of the game as a headless model. Its controls are
// plain fields named as the game names them; its event handlers and routines
// are methods with the same names and arguments. The 81 cells and their 243
// labels are the live board; there is no separate game object.
//
// The form reaches the outside world only through the ports of
// platform/Ports.h. The Qt view draws these fields and forwards input to the
// handlers; the scenario runner and the tests drive the same handlers.
//
// The code of the form is split by subject over several files:
//   frmTessuma_Board.cpp    cells, labels, reading and writing a board state
//   frmTessuma_Game.cpp     deal, clock, score, pause, completion
//   frmTessuma_Cells.cpp    keyboard in the cells, judging a digit
//   frmTessuma_Ring.cpp     click ring, HideOverlays
//   frmTessuma_Marks.cpp    possibles view, auto-mark, mark picker
//   frmTessuma_Solve.cpp    solve command, puzzle vetting, own puzzles, hints
//   frmTessuma_Nav.cpp      side navigation, popups, option labels, Alt keys
//   frmTessuma_Highs.cpp    high scores
//   frmTessuma_Files.cpp    saved games
//   frmTessuma_Life.cpp     start-up, options, closing, message box, sounds
//   frmTessuma_Frame.cpp    window frame, skin, option panel, help pages, printing
//   frmTessuma_Music.cpp    songs and the volume slider
//   frmTessuma_Update.cpp   update check and links

#include <array>
#include <cstdint>
#include <deque>
#include <string>

#include "forms/Controls.h"
#include "forms/Ports.h"

class Program;

class frmTessuma {
public:
    explicit frmTessuma(Program& program);

    Program& program;
    Ports& ports;

    // ----------------------------------------------------------------------
    // The form itself. Left and Top in twips; Width and Height in twips too.
    int Left = 0, Top = 0, Width = 9600, Height = 7200;
    bool Visible = false;
    int WindowState = 0;                  // 0 normal, 1 minimised
    int MousePointer = vb::kPointerDefault;
    int Picture = 101;                    // background bitmap: 101 skinned, 102 plain

    // ----------------------------------------------------------------------
    // The board.
    std::array<TextField, 81> txtCell;
    std::array<Label, 243> lblViewPos;
    std::array<std::array<std::string, 9>, 9> Possible;  // Possible[row][col]
    int RecalcRow = 0, RecalcCol = 0;                     // RecalcPossible's walk

    // Right panel labels.
    Label lblTimer, lblScore, lblDifficulty, lblLoading;
    std::array<Label, 11> lblOption;      // 1..10; index 0 does not exist
    std::array<Label, 7> lblUnderscore;

    // Side navigation and window buttons (hover buttons).
    std::array<CommandButton, 9> cmdSideNav;
    CommandButton cmdMinimize, cmdMaximize, cmdRestoreDown, cmdClose;
    CommandButton cmdShowOptions, cmdHideOptions;
    CommandButton cmdOK;                  // in picHelpNav

    // Frames over the board: 2 help, 3 pause and loading, 4 high scores.
    std::array<PictureBox, 5> picFrame;
    std::array<PictureBox, 10> picRing;      // 0..8 digits 1..9, 9 the cross
    std::array<PictureBox, 10> picMark;      // 0..8 toggles, 9 the close cross
    PictureBox picHelpNav, imgHelpMonkey, picVolume;
    Thumb imgVolume;

    // High score page.
    Label Label3;
    std::array<Label, 10> lblSHName, lblSHScore;
    std::array<std::string, 14> HighEntries;

    // Help page labels and links.
    std::array<Label, 10> lblHelpPages;
    Label lblSupport, lblWiki;

    // Options.
    CheckBox chkClickring, chkSkin, chkSounds;

    // Timers.
    Timer tmrClock{false, 1000};
    Timer tmrSongCheck{false, 250};

    // Popup menus and their entries.
    std::array<MenuItem, 4> mnuDifficulty;
    MenuItem mnuEnterPuzzle, mnuCancelNewPuzzle;
    MenuItem mnuFillRandomSquare, mnuClearSolvedSquares, mnuSolvePuzzle;
    MenuItem mnuDeleteFile;

    // The twenty hidden command buttons, for their access keys.
    CommandButton cmdHiddenCreate, cmdHiddenFinish, cmdHiddenLoad, cmdHiddenSave, cmdHiddenPrint,
        cmdHiddenSolveOK, cmdHiddenHighs, cmdHiddenHelp, cmdHiddenPause, cmdMark, cmdHiddenClickRing,
        cmdHiddenSkin, cmdHiddenSounds, cmdHiddenMinus, cmdHiddenPlus, cmdHiddenUpdate, cmdHiddenDonate,
        cmdHiddenFirstCell, cmdHiddenShow, cmdHiddenHide;

    // ----------------------------------------------------------------------
    // Form-level values.
    std::string BoardState;
    bool SuppressChange = false;
    bool PuzzleDirty = false;
    bool PerfectGame = false;
    std::int32_t ClockSeconds = 0;
    std::int32_t BaseScore = 0;
    bool LoadingOptions = false;
    bool OptionsShown = false;
    std::int16_t LastHelpPage = 0;
    std::int16_t HelpPageMax = 0;
    std::int32_t SavedScreenWidth = 0, SavedScreenHeight = 0;
    std::int16_t SongIndex = -1;
    std::int16_t SongLast = 0;
    std::string SongPath;
    std::int16_t CurrentCell = 0;
    bool SolverResult = false;
    bool PuzzleAccepted = false;
    std::string DuplicateDigit, DuplicateUnit;
    bool DragActive = false;
    float DragStartX = 0, DragStartY = 0;
    float LastX = 0;

    // Focus, and the keystrokes the program queues for itself ("{tab}",
    // "{DEL}"); the view or the scenario runner delivers them after the
    // handler has returned.
    ControlRef Focus;
    std::deque<std::string> KeyQueue;

    // ----------------------------------------------------------------------
    // Plumbing shared by all handlers.

    // A program-made change of a cell's text: the change handler runs when the
    // text really changes (it checks SuppressChange itself).
    void SetCellText(int index, const std::string& text);
    // The player edits a cell: unless Locked, the text becomes `text` (at most
    // one character) and the change handler runs.
    void PlayerTypes(int index, const std::string& text);
    // What a cell's text box does by itself with a key: typing a character
    // (`text`), Backspace, Delete, Home, End, or the whole text replaced.
    // Nothing in a Locked cell; the change handler runs when the text changes.
    enum class CellEdit { Insert, Backspace, Delete, Home, End, Replace };
    void txtCell_Edit(int Index, CellEdit Edit, const std::string& Text = {});
    // A key pressed on the form, as the platform delivers it: an Alt access
    // key first, else the cell that has the focus gets its KeyDown and then
    // its text box's own editing. `Text` is the character the key types.
    // Keys the program queued for itself follow. False when nothing took it.
    bool KeyPress(int KeyCode, int Shift, const std::string& Text);
    // The window system changed the window's state (0 normal, 1 minimised).
    void SetWindowState(int state) { WindowState = state; }
    // Check box values; the click handler runs when the value changes.
    void SetClickringValue(int value);
    void SetSkinValue(int value);
    void SetSoundsValue(int value);
    // Moves the focus; the cell that loses it runs its LostFocus handler.
    void SetFocus(const ControlRef& target);
    // The control that has the focus, or an empty ref when none or hidden.
    ControlRef FocusedControl() const;
    void SendKeys(const std::string& keys);
    // Delivers the queued keystrokes to the focused control, as the
    // platform would. Returns the number delivered.
    int DeliverQueuedKeys();
    // The player pressed Tab: the focus goes to the next cell that can take it.
    void TabForward();
    void SetMousePointer(int pointer);
    // Opens a popup menu at the pointer and runs the handler of the choice.
    void PopupMenu(const std::string& menuName);

    // ----------------------------------------------------------------------
    // Board state (frmTessuma_Board.cpp).
    static std::int16_t CellIndex(int row, int col);
    void CreateBoardFields();             // step 5 of the form's load
    void ShowBoardState();
    std::string BuildBoardState() const;
    std::string GetViewPosText() const;
    void SetViewPosText(const std::string& text);
    void RecalcPossible();

    // Running game (frmTessuma_Game.cpp).
    void mnuDifficulty_Click(int Index);
    void PickPuzzle(int levelIndex);
    void tmrClock_Timer();
    void UpdateScore();
    void AddPenalty();                    // 299 seconds and one tick
    void TogglePause();
    bool CountClues() const;
    bool IsSolved() const;                // "solved" in lblOption(8), any case
    void CompletePuzzle();                // a player's digit filled the last cell
    void Form_Click();
    void lblTimer_Click();
    void picFrame_Click(int Index);

    // Cell entry (frmTessuma_Cells.cpp).
    void txtCell_KeyDown(int Index, int KeyCode, int Shift);
    void txtCell_Change(int Index);
    void txtCell_LostFocus(int Index);
    void cmdHiddenFirstCell_Click();
    bool BoardUncovered() const;

    // Click ring (frmTessuma_Ring.cpp).
    void ShowRing();
    void HideRing();
    void picRing_MouseDown(int Index, int Button, int Shift, float X, float Y);
    void HideOverlays();
    void chkClickring_Click();
    void cmdHiddenClickRing_Click();

    // Possibles view and marks (frmTessuma_Marks.cpp).
    void lblViewPos_MouseUp(int Index, int Button, int Shift, float X, float Y);
    void UpdateViewPossible();
    void cmdMark_Click();
    void ShowMarkPicker();
    void HideMarkPicker();
    void picMark_Click(int Index);
    void picMark_KeyUp(int Index, int KeyCode, int Shift);
    std::string MarkString(int cell) const;

    // Solve command, vetting, own puzzles, hints (frmTessuma_Solve.cpp).
    void SolveOrCheck(bool CheckOnly);
    void FindDuplicate(bool& Found);
    void mnuSolvePuzzle_Click();
    void mnuEnterPuzzle_Click();
    void FinishOwnPuzzle();
    void CancelOwnPuzzle();
    void ShowPanelsAfterOwnPuzzle();
    void mnuCancelNewPuzzle_Click();
    void mnuFillRandomSquare_Click();
    void mnuClearSolvedSquares_Click();

    // Side navigation, option labels, Alt keys (frmTessuma_Nav.cpp).
    void cmdSideNav_Click(int Index);
    void SetSideNavVisible(bool Visible, std::int16_t& Count);
    void lblOption_Click(int Index);
    void cmdHiddenCreate_Click();
    void cmdHiddenFinish_Click();
    void cmdHiddenLoad_Click();
    void cmdHiddenSave_Click();
    void cmdHiddenPrint_Click();
    void cmdHiddenSolveOK_Click();
    void cmdHiddenHighs_Click();
    void cmdHiddenHelp_Click();
    void cmdHiddenPause_Click();
    void cmdHiddenSkin_Click();
    void cmdHiddenSounds_Click();
    void cmdHiddenUpdate_Click();
    void cmdHiddenDonate_Click();
    void cmdHiddenShow_Click();
    void cmdHiddenHide_Click();
    // Alt+KEY: clicks the hidden button whose access key is KEY. False when no
    // button has that key.
    bool PressAltKey(char key);

    // High scores (frmTessuma_Highs.cpp).
    void EnterHighScore();                // after a solved game with points
    void ShowHighs();
    void HideHighs();
    void LoadHighs();

    // Saved games (frmTessuma_Files.cpp).
    void OpenGame();
    void SaveGame();
    void LoadGameFile(const std::string& path);
    void WriteGameFile(const std::string& path);

    // Start-up, options, closing, message box, sounds (frmTessuma_Life.cpp).
    void Form_Load();
    void cmdClose_Click();
    void Form_Unload();
    void LoadOptions();
    void SaveOptions();
    void ShowMessage(const std::string& Message, const std::string& Kind);
    void PlayEffect(int effect);

    // Window frame, skin, option panel, help, printing (frmTessuma_Frame.cpp).
    void Form_MouseDown(int Button, int Shift, float X, float Y);
    void Form_MouseMove(int Button, int Shift, float X, float Y);
    void Form_MouseUp(int Button, int Shift, float X, float Y);
    void cmdMinimize_Click();
    void cmdMaximize_Click();
    void cmdRestoreDown_Click();
    void chkSkin_Click();
    void cmdShowOptions_Click();
    void cmdHideOptions_Click();
    void SetOptionsVisible(bool Visible, std::int16_t& Count);
    void SetFrameButtonsVisible(bool Visible);
    void SetViewPosVisible(bool Visible);
    std::int32_t AlwaysOnTop(const std::string& Owned);
    void ShowFrame(std::int16_t& Index);
    void HideFrame(std::int16_t Index);
    void lblHelpPages_Click(int Index);
    void picFrame_KeyUp(int Index, int KeyCode, int Shift);
    // The "turn page" arrows under the help's page list: 0 back, 1 on.
    void imgHelpTurn_Click(int Index);
    void TurnHelpPage(bool forward);
    void cmdOK_Click();
    void PrintBoard();

    // Songs and the volume slider (frmTessuma_Music.cpp).
    void NextSong();
    void tmrSongCheck_Timer();
    void ApplyVolume();
    void imgVolume_MouseMove(int Button, int Shift, float X, float Y);
    void cmdHiddenMinus_Click();
    void cmdHiddenPlus_Click();

    // Update check and links (frmTessuma_Update.cpp).
    void CheckForUpdate();
    void DownloadFile(const std::string& Url, const std::string& LocalPath, bool& Succeeded);
    void lblSupport_Click();
    void lblWiki_Click();

    // The effects by name.
    static constexpr int SoundPuzzleStart = 101;
    static constexpr int SoundMessage = 102;
    static constexpr int SoundDigitOk = 103;
    static constexpr int SoundHintFill = 104;
    static constexpr int SoundSolved = 105;
    static constexpr int SoundNavClick = 106;
    static constexpr int SoundPopupOpen = 107;

private:
    void InitControls();  // design-time properties of every control
};
