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
    // The form's own properties, its controls and form-level values, as
    // declared in frmTessuma.def.
#define FORM(Type, name, init, lo, hi) Type name{init};
#define CONTROL(Type, name) Type name;
#define CONTROLS(Type, name, size, lo, hi) std::array<Type, size> name;
#define VALUE(Type, name, init, lo, hi) Type name{init};
#include "forms/frmTessuma.def"

    std::array<std::array<std::string, 9>, 9> Possible;  // Possible[row][col]
    std::array<std::string, 14> HighEntries;             // "score,name"

    // Focus, and the keystrokes the program queues for itself ("{tab}",
    // "{DEL}"); the view or the scenario runner delivers them after the
    // handler has returned.
    ControlRef Focus;
    std::deque<std::string> KeyQueue;

    // ----------------------------------------------------------------------
    // The handlers and routines, as declared in frmTessuma.def; the code is
    // split by subject over the files listed at the top.
#define HANDLER(Ret, name, params, ...) Ret name params;
#define QUERY(Ret, name, params, ...) Ret name params const;
#include "forms/frmTessuma.def"

    // What a cell's text box does by itself with a key: typing a character
    // (`text`), Backspace, Delete, Home, End, or the whole text replaced.
    // Nothing in a Locked cell; the change handler runs when the text changes.
    enum class CellEdit { Insert, Backspace, Delete, Home, End, Replace };
    void txtCell_Edit(int Index, CellEdit Edit, const std::string& Text = {});
    // The window system changed the window's state (0 normal, 1 minimised).
    void SetWindowState(int state) { WindowState = state; }
    static std::int16_t CellIndex(int row, int col);
    // tmrSongCheck's tick as the window runs it; true when it went on to the
    // next song. A check that finds the song still playing changes nothing,
    // so the window need not look at the form again.
    bool SongCheckTick();

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
    std::uint64_t songsStarted_ = 0;  // calls of NextSong
};
