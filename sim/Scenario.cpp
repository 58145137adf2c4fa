// Checking a scenario and running its commands.
#include "sim/Scenario.h"

#include <cctype>
#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/vb.h"
#include "forms/frmTessuma.h"
#include "forms/modGetSet.h"
#include "sim/Calls.h"
#include "sim/Lexer.h"
#include "sim/Paths.h"
#include "sim/Runtime.h"
#include "sim/Values.h"

namespace scenario {

namespace {

// A failure of the run itself (a sandbox file that can't be written); it
// ends the run with an error line.
struct RunError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Output {
    std::ostream& out;
    int failures = 0;
};

using StepFn = std::function<void(Runtime&, Output&)>;

struct Step {
    int line = 0;
    StepFn run;
};

// A scenario line that can't run; the message is the reason.
struct Malformed {
    std::string reason;
};

[[noreturn]] void Bad(const std::string& reason) { throw Malformed{reason}; }

// The access keys of the hidden command buttons.
constexpr const char* kAltKeys = "CFLSPOGHEMRKN-=UDA,.";

struct MenuName {
    const char* name;
    int lo, hi;  // indices; -1 when not an array
};
constexpr MenuName kMenuEntries[] = {
    {"mnuDifficulty", 0, 3},         {"mnuEnterPuzzle", -1, -1},        {"mnuCancelNewPuzzle", -1, -1},
    {"mnuFillRandomSquare", -1, -1}, {"mnuClearSolvedSquares", -1, -1}, {"mnuSolvePuzzle", -1, -1},
    {"mnuDeleteFile", -1, -1},
};

long long IntArg(const Token& t, long long lo, long long hi, const std::string& what) {
    long long v = 0;
    if (!ParseInt(t.text, v)) Bad(what + " must be a whole number, not \"" + EscapeText(t.text) + "\"");
    if (v < lo || v > hi)
        Bad(what + " must be " + std::to_string(lo) + " to " + std::to_string(hi) + ", not " + std::to_string(v));
    return v;
}

void ArgCount(const std::vector<Token>& w, std::size_t lo, std::size_t hi, const std::string& usage) {
    const std::size_t n = w.size() - 1;
    if (n < lo || n > hi) Bad("usage: " + usage);
}

void Deliver(Runtime& rt) {
    if (rt.FormLoaded()) rt.Form().DeliverQueuedKeys();
}

bool TimersAlive(Runtime& rt) { return rt.FormLoaded() && rt.program->Running; }

void WriteSandboxFile(Runtime& rt, const std::string& rel, const std::string& text) {
    if (rt.world.files.IsFolder(rel)) throw RunError("cannot write the file " + rel + ": it is a folder");
    rt.world.files.Put(rel, text);
}

// Checks that an expected value can ever equal what a typed path prints.
void CheckWanted(const Path& path, const std::string& want) {
    std::string printed;
    switch (path.kind) {
        case ValueKind::Text: return;
        case ValueKind::Bool:
            if (want == "True" || want == "False") return;
            Bad(path.text + " is a Boolean and prints as True or False, not \"" + EscapeText(want) + "\"");
        case ValueKind::Int: {
            long long v = 0;
            if (ParseInt(want, v) && std::to_string(v) == want) return;
            Bad(path.text + " is a number and prints in decimal, not as \"" + EscapeText(want) + "\"");
        }
        case ValueKind::Colour: {
            std::int32_t c = 0;
            if (ParseColour(want, c) && FormatColour(c) == want) return;
            Bad(path.text + " is a colour and prints as &H and six upper-case hex digits (&H2600C0), not \"" +
                EscapeText(want) + "\"");
        }
        case ValueKind::Float: {
            double d = 0;
            if (ParseDecimal(want, d) && FormatFloat(static_cast<float>(d)) == want) return;
            Bad(path.text + " is a number and prints in its shortest decimal form (75, 37.5), not \"" +
                EscapeText(want) + "\"");
        }
    }
}

class Checker {
public:
    std::vector<Step> steps;

    void Line(int lineNo, const std::vector<Token>& w) {
        line_ = lineNo;
        const Token& head = w[0];
        const std::string& cmd = head.text;
        if (head.quoted) Bad("a command is a plain word, not \"" + EscapeText(cmd) + "\"");

        if (cmd == "setting") return Setting(w);
        if (cmd == "screen") return Screen(w);
        if (cmd == "other-instance") return OtherInstance(w);
        if (cmd == "file") return File(w);
        if (cmd == "nofile") return NoFile(w);
        if (cmd == "cmdline") return Cmdline(w);
        if (cmd == "rnd") return Rnd(w);
        if (cmd == "answer") return Answer(w);
        if (cmd == "menu") return Menu(w);
        if (cmd == "dialog") return Dialog(w);
        if (cmd == "sysbox") return SysBox(w);
        if (cmd == "download") return Download(w);
        if (cmd == "song-end") return SongEnd(w);
        if (cmd == "close-during-search") return CloseDuringSearch(w);
        if (cmd == "start") return Start(w);
        if (cmd == "call") return Call(w);
        if (cmd == "type") return Type(w);
        if (cmd == "set") return Set(w);
        if (cmd == "alt") return Alt(w);
        if (cmd == "tick") return Tick(w);
        if (cmd == "focus") return Focus(w);
        if (cmd == "print") return Print(w);
        if (cmd == "expect") return Expect(w);
        Bad("unknown command \"" + EscapeText(cmd) + "\"");
    }

private:
    int line_ = 0;
    int startLine_ = 0;
    bool otherInstance_ = false;  // set before start: Main refuses to run

    void Add(StepFn fn) { steps.push_back(Step{line_, std::move(fn)}); }

    void Require(Needs needs, const std::string& what) {
        if (needs == Needs::World) return;
        if (!startLine_) Bad(what + " needs the program: it can only come after start");
        if (needs == Needs::Form && otherInstance_)
            Bad(what + " needs the main form, but start on line " + std::to_string(startLine_) +
                " ended the program (another instance was running)");
    }

    // ---- set-up -----------------------------------------------------------
    void Setting(const std::vector<Token>& w) {
        ArgCount(w, 2, 2, "setting KEY \"VALUE\"");
        const std::string key = w[1].text, value = w[2].text;
        if (key.empty()) Bad("a setting needs a key");
        Add([key, value](Runtime& rt, Output&) {
            modGetSet::SaveData(rt.world.settings, key, ExpandSandbox(value, rt.world.sandbox));
        });
    }

    void Screen(const std::vector<Token>& w) {
        ArgCount(w, 2, 2, "screen WIDTH HEIGHT");
        const int width = static_cast<int>(IntArg(w[1], 1, 32767, "the screen width"));
        const int height = static_cast<int>(IntArg(w[2], 1, 32767, "the screen height"));
        Add([width, height](Runtime& rt, Output&) {
            rt.world.screen.width = width;
            rt.world.screen.height = height;
        });
    }

    void OtherInstance(const std::vector<Token>& w) {
        ArgCount(w, 0, 0, "other-instance");
        if (!startLine_) otherInstance_ = true;
        Add([](Runtime& rt, Output&) { rt.world.instance.otherRunning = true; });
    }

    void File(const std::vector<Token>& w) {
        ArgCount(w, 2, 2, "file PATH \"TEXT\"");
        std::string why;
        if (!CheckSandboxPath(w[1].text, why)) Bad(why);
        const std::string path = w[1].text, text = w[2].text;
        Add([path, text](Runtime& rt, Output&) { WriteSandboxFile(rt, path, ExpandSandbox(text, rt.world.sandbox)); });
    }

    void NoFile(const std::vector<Token>& w) {
        ArgCount(w, 1, 1, "nofile PATH");
        std::string why;
        if (!CheckSandboxPath(w[1].text, why)) Bad(why);
        const std::string path = w[1].text;
        Add([path](Runtime& rt, Output&) { rt.world.files.RemoveFile(path); });
    }

    void Cmdline(const std::vector<Token>& w) {
        ArgCount(w, 1, 1, "cmdline \"TEXT\"");
        const std::string text = w[1].text;
        Add([text](Runtime& rt, Output&) { rt.world.commandLine = ExpandSandbox(text, rt.world.sandbox); });
    }

    void Rnd(const std::vector<Token>& w) {
        if (w.size() < 2) Bad("usage: rnd X... (each 0 <= X < 1)");
        std::vector<float> values;
        for (std::size_t i = 1; i < w.size(); ++i) {
            double d = 0;
            if (!ParseDecimal(w[i].text, d)) Bad("\"" + EscapeText(w[i].text) + "\" is not a decimal number");
            const float f = static_cast<float>(d);
            if (!(d >= 0 && d < 1 && f < 1.0f)) Bad("a random value is at least 0 and below 1, not " + w[i].text);
            values.push_back(f);
        }
        Add([values](Runtime& rt, Output&) {
            for (float f : values) rt.world.random.queued.push_back(f);
        });
    }

    void Answer(const std::vector<Token>& w) {
        const std::string usage = "answer yes|no|okay|close, answer name \"TEXT\" or answer keys CODE...";
        if (w.size() < 2) Bad("usage: " + usage);
        const std::string& how = w[1].text;
        MessageAnswer a;
        if (how == "yes" || how == "no" || how == "okay" || how == "close") {
            ArgCount(w, 1, 1, usage);
            a.kind = how == "yes"    ? MessageAnswer::Yes
                     : how == "no"   ? MessageAnswer::No
                     : how == "okay" ? MessageAnswer::Okay
                                     : MessageAnswer::Close;
        } else if (how == "name") {
            ArgCount(w, 2, 2, "answer name \"TEXT\"");
            a.kind = MessageAnswer::Name;
            a.text = w[2].text;
        } else if (how == "keys") {
            if (w.size() < 3) Bad("usage: answer keys CODE... (at least one key code)");
            a.kind = MessageAnswer::Keys;
            for (std::size_t i = 2; i < w.size(); ++i)
                a.keys.push_back(static_cast<int>(IntArg(w[i], 0, 255, "a key code")));
        } else {
            Bad("unknown answer \"" + EscapeText(how) + "\"; " + usage);
        }
        Add([a](Runtime& rt, Output&) { rt.world.messages.answers.push_back(a); });
    }

    void Menu(const std::vector<Token>& w) {
        const std::string usage = "menu ITEM [INDEX] or menu none";
        ArgCount(w, 1, 2, usage);
        MenuAnswer a;
        const std::string& item = w[1].text;
        if (item == "none") {
            ArgCount(w, 1, 1, usage);
            a.none = true;
        } else {
            const MenuName* found = nullptr;
            for (const auto& m : kMenuEntries)
                if (item == m.name) found = &m;
            if (!found) {
                std::string names;
                for (const auto& m : kMenuEntries) names += std::string(names.empty() ? "" : ", ") + m.name;
                Bad("unknown menu entry \"" + EscapeText(item) + "\" (entries: " + names + ")");
            }
            a.item = item;
            if (found->lo >= 0) {
                if (w.size() != 3)
                    Bad(item + " is an array of entries: give an index " + std::to_string(found->lo) + " to " +
                        std::to_string(found->hi));
                a.index = static_cast<int>(IntArg(w[2], found->lo, found->hi, "the index of " + item));
            } else if (w.size() == 3) {
                Bad(item + " is a single entry and takes no index");
            }
        }
        Add([a](Runtime& rt, Output&) { rt.world.popups.answers.push_back(a); });
    }

    void Dialog(const std::vector<Token>& w) {
        ArgCount(w, 1, 1, "dialog \"PATH\" or dialog cancel");
        const Token& t = w[1];
        if (!t.quoted && t.text == "cancel") {
            Add([](Runtime& rt, Output&) { rt.world.dialogs.answers.push_back(std::nullopt); });
            return;
        }
        std::string path = t.text;
        const std::string token = "<sandbox>/";
        const bool inSandbox = path.compare(0, token.size(), token) == 0;
        std::string why;
        if (!CheckSandboxPath(inSandbox ? path.substr(token.size()) : path, why)) Bad(why);
        Add([path](Runtime& rt, Output&) {
            rt.world.dialogs.answers.push_back(ExpandSandbox(path, rt.world.sandbox));
        });
    }

    void SysBox(const std::vector<Token>& w) {
        ArgCount(w, 1, 1, "sysbox yes|no|ok");
        const std::string& how = w[1].text;
        int answer = 0;
        if (how == "yes")
            answer = ISystemMessageBox::Yes;
        else if (how == "no")
            answer = ISystemMessageBox::No;
        else if (how == "ok")
            answer = ISystemMessageBox::Ok;
        else if (how == "cancel")
            answer = ISystemMessageBox::Cancel;
        else if (how == "abort")
            answer = ISystemMessageBox::Abort;
        else if (how == "retry")
            answer = ISystemMessageBox::Retry;
        else if (how == "ignore")
            answer = ISystemMessageBox::Ignore;
        else
            Bad("unknown system box answer \"" + EscapeText(how) + "\" (yes, no, ok, cancel, abort, retry, ignore)");
        Add([answer](Runtime& rt, Output&) { rt.world.sysbox.answers.push_back(answer); });
    }

    void Download(const std::vector<Token>& w) {
        ArgCount(w, 1, 1, "download \"TEXT\" or download fail");
        const Token& t = w[1];
        if (!t.quoted && t.text == "fail") {
            Add([](Runtime& rt, Output&) { rt.world.download.answers.push_back(std::nullopt); });
            return;
        }
        const std::string text = t.text;
        Add([text](Runtime& rt, Output&) { rt.world.download.answers.push_back(text); });
    }

    void SongEnd(const std::vector<Token>& w) {
        ArgCount(w, 0, 0, "song-end");
        Add([](Runtime& rt, Output&) { rt.world.music.SongEnd(); });
    }

    void CloseDuringSearch(const std::vector<Token>& w) {
        ArgCount(w, 0, 0, "close-during-search");
        Add([](Runtime& rt, Output&) { rt.world.background.cutNext = true; });
    }

    // ---- actions ----------------------------------------------------------
    void Start(const std::vector<Token>& w) {
        ArgCount(w, 0, 0, "start");
        if (startLine_) Bad("the program was started already on line " + std::to_string(startLine_));
        startLine_ = line_;
        Add([](Runtime& rt, Output&) {
            rt.program = std::make_unique<Program>(rt.world.MakePorts());
            rt.program->Main();
        });
    }

    void Call(const std::vector<Token>& w) {
        if (w.size() < 2) Bad("usage: call NAME [ARG...]");
        const std::string& name = w[1].text;
        if (name.compare(0, 11, "frmMessage.") == 0)
            Bad("the message box is answered with answer, not called: " + name + " can't be called");
        const CallEntry* entry = FindCall(name);
        if (!entry) {
            std::string hint;
            for (const auto& c : AllCalls()) {
                if (c.name.size() != name.size()) continue;
                bool same = true;
                for (std::size_t i = 0; i < name.size() && same; ++i)
                    same = std::tolower(static_cast<unsigned char>(c.name[i])) ==
                           std::tolower(static_cast<unsigned char>(name[i]));
                if (same) hint = c.name;
            }
            Bad("unknown routine \"" + EscapeText(name) + "\"" +
                (hint.empty() ? "" : ": names are case-sensitive, did you mean " + hint + "?"));
        }
        std::vector<Value> args;
        std::string error;
        if (!ParseCallArgs(*entry, std::vector<Token>(w.begin() + 2, w.end()), args, error)) Bad(error);
        Require(entry->needs, "call " + name);
        Add([entry, args](Runtime& rt, Output&) {
            std::vector<Value> given = args;
            for (std::size_t i = 0; i < given.size(); ++i) {
                if (entry->args[i].kind == ArgKind::Text) given[i].s = ExpandSandbox(given[i].s, rt.world.sandbox);
                if (entry->args[i].kind == ArgKind::File) given[i].s = rt.SandboxPath(given[i].s);
            }
            rt.callResult = entry->run(rt, given);
        });
    }

    void Type(const std::vector<Token>& w) {
        ArgCount(w, 2, 2, "type CELL \"TEXT\"");
        const int cell = static_cast<int>(IntArg(w[1], 0, 80, "the cell"));
        Require(Needs::Form, "type");
        const std::string text = w[2].text;
        Add([cell, text](Runtime& rt, Output&) { rt.Form().PlayerTypes(cell, text); });
    }

    void Set(const std::vector<Token>& w) {
        ArgCount(w, 2, 2, "set PATH \"VALUE\"");
        Path path;
        std::string error;
        if (!ResolvePath(w[1].text, path, error)) Bad(error);
        if (!path.set) Bad(w[1].text + " can't be set: " + path.readOnlyWhy);
        Value v;
        if (!ParseValue(path.kind, path.lo, path.hi, w[2].text, v, error))
            Bad("a value for " + w[1].text + ": " + error);
        if (path.check && !path.check(v, error)) Bad(error);
        Require(path.needs, "set " + w[1].text);
        const bool text = path.kind == ValueKind::Text;
        Add([path, v, text](Runtime& rt, Output&) {
            Value given = v;
            if (text) given.s = ExpandSandbox(given.s, rt.world.sandbox);
            path.set(rt, given);
        });
    }

    void Alt(const std::vector<Token>& w) {
        ArgCount(w, 1, 1, "alt KEY");
        const std::string& k = w[1].text;
        char key = k.size() == 1 ? k[0] : '\0';
        if (key >= 'a' && key <= 'z') key = static_cast<char>(key - 'a' + 'A');
        if (key == '\0' || std::string(kAltKeys).find(key) == std::string::npos)
            Bad("no hidden button has the access key \"" + EscapeText(k) +
                "\" (keys: C F L S P O G H E M R K N - = U D A , .)");
        Require(Needs::Form, "alt");
        Add([key](Runtime& rt, Output&) { rt.Form().PressAltKey(key); });
    }

    void Tick(const std::vector<Token>& w) {
        ArgCount(w, 0, 1, "tick [SECONDS]");
        const long long seconds = w.size() == 2 ? IntArg(w[1], 0, 1000000, "the seconds") : 1;
        Require(Needs::Program, "tick");
        Add([seconds](Runtime& rt, Output&) {
            for (long long s = 0; s < seconds; ++s) {
                for (int quarter = 0; quarter < 4; ++quarter) {
                    if (!TimersAlive(rt)) return;
                    if (rt.Form().tmrSongCheck.Enabled) {
                        rt.Form().tmrSongCheck_Timer();
                        Deliver(rt);
                    }
                }
                if (!TimersAlive(rt)) return;
                if (rt.Form().tmrClock.Enabled) {
                    rt.Form().tmrClock_Timer();
                    Deliver(rt);
                }
            }
        });
    }

    void Focus(const std::vector<Token>& w) {
        ArgCount(w, 1, 1, "focus CONTROL (as txtCell(5)) or focus none");
        ControlRef ref;
        std::string error;
        if (!ResolveControl(w[1].text, ref, error)) Bad(error);
        Require(Needs::Form, "focus");
        Add([ref](Runtime& rt, Output&) { rt.Form().SetFocus(ref); });
    }

    // ---- queries ----------------------------------------------------------
    void Print(const std::vector<Token>& w) {
        ArgCount(w, 1, 1, "print PATH");
        Path path;
        std::string error;
        if (!ResolvePath(w[1].text, path, error)) Bad(error);
        Require(path.needs, "print " + w[1].text);
        Add([path](Runtime& rt, Output& o) { o.out << EscapeText(path.Read(rt)) << '\n'; });
    }

    void Expect(const std::vector<Token>& w) {
        ArgCount(w, 2, 2, "expect PATH \"VALUE\"");
        Path path;
        std::string error;
        if (!ResolvePath(w[1].text, path, error)) Bad(error);
        const std::string want = w[2].text;
        CheckWanted(path, want);
        Require(path.needs, "expect " + w[1].text);
        const int line = line_;
        Add([path, want, line](Runtime& rt, Output& o) {
            const std::string got = path.Read(rt);
            if (got == want) return;
            ++o.failures;
            o.out << "FAIL line " << line << ": " << path.text << " is \"" << EscapeText(got) << "\", expected \""
                  << EscapeText(want) << "\"\n";
        });
    }
};

// Checks every line; false after printing the error line of the first
// malformed one.
bool CheckAll(const std::string& text, Checker& checker, std::ostream& out) {
    const auto lines = vb::SplitLines(text);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const int lineNo = static_cast<int>(i + 1);
        std::vector<Token> words;
        std::string error;
        if (!Tokenize(lines[i], words, error)) {
            out << "error line " << lineNo << ": " << error << '\n';
            return false;
        }
        if (words.empty()) continue;
        try {
            checker.Line(lineNo, words);
        } catch (const Malformed& m) {
            out << "error line " << lineNo << ": " << m.reason << '\n';
            return false;
        }
    }
    return true;
}

}  // namespace

int Check(const std::string& text, std::ostream& out) {
    Checker checker;
    return CheckAll(text, checker, out) ? 0 : 2;
}

int Run(const std::string& text, std::ostream& out) { return Run(text, out, nullptr); }

int Run(const std::string& text, std::ostream& out, const std::function<void(Runtime&)>& inspect) {
    // Check every line before anything runs.
    Checker checker;
    if (!CheckAll(text, checker, out)) return 2;

    Runtime rt;
    if (rt.world.sandbox.empty()) {
        out << "error line 1: cannot make a sandbox folder\n";
        return 2;
    }
    Output o{out};
    for (const Step& s : checker.steps) {
        try {
            s.run(rt, o);
            Deliver(rt);
        } catch (const RunError& e) {
            out << "error line " << s.line << ": " << e.what() << '\n';
            return 2;
        } catch (const std::exception& e) {
            out << "error line " << s.line << ": the program stopped with an exception: " << e.what() << '\n';
            return 2;
        }
    }
    if (inspect) inspect(rt);
    return o.failures ? 1 : 0;
}

}  // namespace scenario
