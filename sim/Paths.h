#pragma once
// The paths of the scenario language: controls and values of the forms, the
// module-level values of the program and the observations of the world.
// A path is resolved once, when the scenario is checked, into a getter and
// (when it may be assigned with `set`) a setter.

#include <functional>
#include <string>
#include <vector>

#include "forms/Controls.h"
#include "sim/Runtime.h"
#include "sim/Sandbox.h"
#include "sim/Values.h"

namespace scenario {

struct Path {
    std::string text;
    ValueKind kind = ValueKind::Text;
    long long lo = 0, hi = 0;  // the range of an Int that `set` may write
    Needs needs = Needs::World;
    std::function<Value(Runtime&)> get;
    std::function<void(Runtime&, const Value&)> set;  // empty: read-only
    // A further check of a value for `set` (BoardState is empty or 81
    // characters); empty when any value of the kind will do.
    std::function<bool(const Value&, std::string&)> check;
    std::string readOnlyWhy;  // why `set` refuses it

    // The value as `print` shows it and `expect` compares it (unescaped).
    std::string Read(Runtime& rt) const;
};

// Resolves a path; false with a reason in `error` when it names nothing.
bool ResolvePath(const std::string& text, Path& out, std::string& error);

// Resolves the name of a control of the main form for the focus:
// "txtCell(5)", "picFrame(2)", "chkSkin"; "none" or "" for no control.
bool ResolveControl(const std::string& text, ControlRef& out, std::string& error);

}  // namespace scenario
