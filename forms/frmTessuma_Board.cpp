// Board state: the geometry of the 81 cells and their 243 labels, reading a
// BoardState into the cells, writing one back, the marks as text and the
// table of possible digits.

#include "forms/frmTessuma.h"

#include "core/BoardCode.h"
#include "core/vb.h"

namespace {

constexpr const char* kAllDigits = "123456789";
constexpr const char* kNeutralMarks = "   ";

// The character of a state at a cell; a state too short for the cell reads
// as a blank there, an empty cell whose right digit is unknown.
unsigned char StateChar(const std::string& state, int cell) {
    const auto i = static_cast<std::size_t>(cell);
    return i < state.size() ? static_cast<unsigned char>(state[i]) : static_cast<unsigned char>(' ');
}

}  // namespace

std::int16_t frmTessuma::CellIndex(int row, int col) { return static_cast<std::int16_t>(row * 9 + col); }

// Places the cells and their labels from the first cell, which is designed.
// Cells of a band or a stack stand together; bands and stacks are 8 pixels
// apart.
void frmTessuma::CreateBoardFields() {
    const TextField& first = txtCell[0];
    const int left0 = first.Left, top0 = first.Top, width = first.Width, height = first.Height;
    for (int row = 0; row <= 8; ++row) {
        for (int col = 0; col <= 8; ++col) {
            const int index = CellIndex(row, col);
            TextField& cell = txtCell[static_cast<std::size_t>(index)];
            if (index != 0) cell = txtCell[0];  // a new cell takes the design of the first
            cell.Left = left0 + 8 * (col / 3) + col * width;
            cell.Top = top0 + 8 * (row / 3) + row * height;
            cell.Width = width;
            cell.Height = height;
            cell.Text.clear();
            cell.SelStart = 0;
            cell.Visible = false;
            for (int k = 0; k <= 2; ++k) {
                Label& label = lblViewPos[static_cast<std::size_t>(3 * index + k)];
                if (index != 0) label = lblViewPos[static_cast<std::size_t>(k)];
                label.Left = cell.Left + 1;
                label.Top = cell.Top + 1 + 13 * k;
                label.Width = 40;
                label.Height = 13;
                label.Caption = std::string(kAllDigits).substr(static_cast<std::size_t>(3 * k), 3);
                label.Visible = false;
            }
        }
    }
}

// Reads BoardState into the cells and starts a game on it.
void frmTessuma::ShowBoardState() {
    SuppressChange = true;
    bool hintedSeen = false;
    for (int i = 0; i <= 80; ++i) {
        const unsigned char code = StateChar(BoardState, i);
        const CellKind kind = KindOfCode(code);
        TextField& cell = txtCell[static_cast<std::size_t>(i)];
        if (kind == CellKind::Empty) {
            SetCellText(i, "");
            cell.Visible = false;
            cell.Locked = false;
            cell.ForeColor = vb::kColorEntered;
            cell.TabStop = true;
        } else {
            SetCellText(i, std::string(1, DigitOfCode(code)));
            cell.Visible = true;
            cell.Locked = kind != CellKind::Entered;
            cell.ForeColor = ColorOfKind(kind);
            cell.TabStop = kind != CellKind::Given;
            if (kind == CellKind::Hinted) hintedSeen = true;
        }
        for (int k = 0; k <= 2; ++k) {
            Label& label = lblViewPos[static_cast<std::size_t>(3 * i + k)];
            label.Caption = kNeutralMarks;
            label.Visible = true;
        }
    }
    RecalcPossible();
    SuppressChange = false;
    mnuFillRandomSquare.Enabled = true;
    mnuClearSolvedSquares.Enabled = hintedSeen;

    // The game starts: clock, sound, word and labels.
    ClockSeconds = 0;
    lblTimer.Caption = "0:00";
    PlayEffect(SoundPuzzleStart);
    tmrClock.Enabled = true;
    PerfectGame = true;
    lblTimer.Visible = true;
    lblScore.Visible = true;
    lblOption[1].ForeColor = vb::kColorLive;
    lblOption[1].MousePointer = vb::kPointerCustom;
    lblOption[8].Caption = "pause";
    lblOption[8].Visible = true;
    lblUnderscore[4].Visible = true;
    if (ports.window) ports.window->Repaint();
    PuzzleDirty = true;
}

// Writes the board as a state: the cell's colour tells its kind; an empty
// cell keeps the character it had in BoardState, so the solution survives.
std::string frmTessuma::BuildBoardState() const {
    std::string state;
    state.reserve(81);
    for (int i = 0; i <= 80; ++i) {
        const TextField& cell = txtCell[static_cast<std::size_t>(i)];
        if (!cell.Text.empty()) {
            const auto code = static_cast<unsigned char>(cell.Text[0]);
            if (cell.ForeColor == vb::kColorHinted)
                state += static_cast<char>(code + 34);
            else if (cell.ForeColor == vb::kColorEntered)
                state += static_cast<char>(code + 25);
            else if (cell.ForeColor == vb::kColorGiven)
                state += static_cast<char>(code + 16);
            // Any other colour writes nothing for the cell.
        } else if (!BoardState.empty()) {
            state += static_cast<char>(StateChar(BoardState, i));
        } else {
            state += ' ';
        }
    }
    return state;
}

std::string frmTessuma::GetViewPosText() const {
    std::string text;
    text.reserve(729);
    for (const Label& label : lblViewPos) text += label.Caption;
    return text;
}

void frmTessuma::SetViewPosText(const std::string& text) {
    if (text.size() != 729) return;
    for (std::size_t i = 0; i < lblViewPos.size(); ++i) lblViewPos[i].Caption = text.substr(3 * i, 3);
}

// Rebuilds the table of possible digits in full: an empty cell keeps the
// digits that no cell of its row, column or box shows.
void frmTessuma::RecalcPossible() {
    for (int row = 0; row <= 8; ++row)
        for (int col = 0; col <= 8; ++col)
            Possible[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] =
                txtCell[static_cast<std::size_t>(CellIndex(row, col))].Text.empty() ? kAllDigits : "";

    auto cellText = [this](int row, int col) -> const std::string& {
        return txtCell[static_cast<std::size_t>(CellIndex(row, col))].Text;
    };
    for (RecalcRow = 0; RecalcRow <= 8; ++RecalcRow) {
        for (RecalcCol = 0; RecalcCol <= 8; ++RecalcCol) {
            std::string& open = Possible[static_cast<std::size_t>(RecalcRow)][static_cast<std::size_t>(RecalcCol)];
            if (open.empty()) continue;
            for (int c = 0; c <= 8; ++c) open = vb::Remove(open, cellText(RecalcRow, c));
            for (int r = 0; r <= 8; ++r) open = vb::Remove(open, cellText(r, RecalcCol));
            const int top = 3 * (RecalcRow / 3), left = 3 * (RecalcCol / 3);
            for (int r = top; r <= top + 2; ++r)
                for (int c = left; c <= left + 2; ++c) open = vb::Remove(open, cellText(r, c));
        }
    }
}
