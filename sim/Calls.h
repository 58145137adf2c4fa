#pragma once
// The `call` table: every handler and routine of the main form, and the
// handlers of frmUpdate, with the kinds of their arguments.

#include <functional>
#include <string>
#include <vector>

#include "sim/Lexer.h"
#include "sim/Runtime.h"
#include "sim/Values.h"

namespace scenario {

enum class ArgKind {
    Int,      // Index, KeyCode, Shift, Button and other whole numbers, within a range
    Float,    // X, Y
    Bool,     // True or False
    Text,     // any word
    Char,     // one character (an access key)
    File,     // a file path relative to the sandbox, handed over as a full path
    Control,  // a control of the main form, as txtCell(5), or none
};

struct ArgInfo {
    std::string name;
    ArgKind kind = ArgKind::Int;
    long long lo = 0, hi = 0;  // Int
    bool byRef = false;        // passed by reference: the call gets a temporary
};

struct CallEntry {
    std::string name;  // as written in a scenario: "txtCell_KeyDown", "frmUpdate.lblDownload_Click"
    std::vector<ArgInfo> args;
    Needs needs = Needs::Form;
    // Runs the routine; returns what CallResult shows afterwards: the value
    // returned, else the final values of by-reference arguments, else "".
    std::function<std::string(Runtime&, const std::vector<Value>&)> run;
};

const std::vector<CallEntry>& AllCalls();
const CallEntry* FindCall(const std::string& name);

// Reads the words after the name as the routine's arguments. False with a
// reason in `error` for a wrong count or a word of the wrong kind.
bool ParseCallArgs(const CallEntry& entry, const std::vector<Token>& words, std::vector<Value>& args,
                   std::string& error);

// The signature for messages and the documentation: "txtCell_KeyDown Index KeyCode Shift".
std::string Signature(const CallEntry& entry);

}  // namespace scenario
