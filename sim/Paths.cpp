// The scenario language's paths: controls, values and observations of the world.
#include "sim/Paths.h"

#include <array>
#include <cctype>
#include <climits>
#include <cstdint>
#include <map>
#include <sstream>
#include <type_traits>

#include "core/Ini.h"
#include "core/vb.h"
#include "forms/modGetSet.h"
#include "sim/Lexer.h"

namespace scenario {

std::string Path::Read(Runtime& rt) const {
    std::string v = FormatValue(kind, get(rt));
    if (kind == ValueKind::Text) v = ShowSandbox(v, rt.world.sandbox);
    return v;
}

namespace {

// --------------------------------------------------------------------------
// Properties of a kind of object (a control, a form, the program), made from
// member pointers.

template <class C>
struct Prop {
    std::string name;
    ValueKind kind = ValueKind::Text;
    long long lo = 0, hi = 0;
    std::function<Value(const C&)> get;
    std::function<void(C&, const Value&)> set;
};

Value ToValue(bool b) { return Value{b, 0, 0, {}}; }
Value ToValue(long long i) { return Value{false, i, 0, {}}; }
Value ToValue(float f) { return Value{false, 0, f, {}}; }
Value ToValue(const std::string& s) { return Value{false, 0, 0, s}; }
void FromValue(const Value& v, bool& out) { out = v.b; }
void FromValue(const Value& v, int& out) { out = static_cast<int>(v.i); }
void FromValue(const Value& v, std::int16_t& out) { out = static_cast<std::int16_t>(v.i); }
void FromValue(const Value& v, float& out) { out = v.f; }
void FromValue(const Value& v, std::string& out) { out = v.s; }

// A property held in member `m`, read and written as a value of `kind`.
template <class C, class T>
Prop<C> MakeProp(const char* name, T C::*m, ValueKind kind, long long lo, long long hi) {
    return {name,
            kind,
            lo,
            hi,
            [m](const C& c) {
                if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>)
                    return ToValue(static_cast<long long>(c.*m));
                else
                    return ToValue(c.*m);
            },
            [m](C& c, const Value& v) { FromValue(v, c.*m); }};
}

// The kind of a value by its type, for the form values.
template <class C, class T>
Prop<C> ValueProp(const char* name, T C::*m, long long lo, long long hi) {
    ValueKind kind = ValueKind::Int;
    if constexpr (std::is_same_v<T, bool>) kind = ValueKind::Bool;
    if constexpr (std::is_same_v<T, float>) kind = ValueKind::Float;
    if constexpr (std::is_same_v<T, std::string>) kind = ValueKind::Text;
    return MakeProp<C>(name, m, kind, lo, hi);
}

// The properties of each kind of control, from its declaration.
template <class C>
const std::vector<Prop<C>>& PropsOf();

#define TESSUMA_PROP(Type, name, init, kind, lo, hi) MakeProp<C>(#name, &C::name, ValueKind::kind, lo, hi),
#define TESSUMA_PROPS_OF(Kind, PROPS)                                    \
    template <>                                                          \
    const std::vector<Prop<Kind>>& PropsOf<Kind>() {                     \
        using C = Kind;                                                  \
        static const std::vector<Prop<C>> props = {PROPS(TESSUMA_PROP)}; \
        return props;                                                    \
    }
CONTROL_KINDS(TESSUMA_PROPS_OF)
#undef TESSUMA_PROPS_OF
#undef TESSUMA_PROP

template <class C>
std::string PropNames() {
    std::string r;
    for (const auto& p : PropsOf<C>()) r += (r.empty() ? "" : ", ") + p.name;
    return r;
}

// --------------------------------------------------------------------------
// How a path reaches its form.

template <class F>
struct FormAccess {
    std::function<const F&(Runtime&)> read;
    std::function<F&(Runtime&)> write;
    Needs needs = Needs::Form;
};

const FormAccess<frmTessuma>& MainAccess() {
    static const FormAccess<frmTessuma> a{[](Runtime& rt) -> const frmTessuma& { return rt.Form(); },
                                          [](Runtime& rt) -> frmTessuma& { return rt.Form(); }, Needs::Form};
    return a;
}

const FormAccess<frmUpdate>& UpdateAccess() {
    static const FormAccess<frmUpdate> a{[](Runtime& rt) -> const frmUpdate& { return rt.UpdateForReading(); },
                                         [](Runtime& rt) -> frmUpdate& { return rt.UpdateForWriting(); },
                                         Needs::Program};
    return a;
}

const FormAccess<Program>& ProgramAccess() {
    static const FormAccess<Program> a{[](Runtime& rt) -> const Program& { return *rt.program; },
                                       [](Runtime& rt) -> Program& { return *rt.program; }, Needs::Program};
    return a;
}

// Binds property `p` of the object that `pick` (reading) and `pickW`
// (writing) find in the form.
template <class F, class C>
void BindThrough(const FormAccess<F>& fa, const Prop<C>& p, std::function<const C&(const F&)> pick,
                 std::function<C&(F&)> pickW, Path& out) {
    out.kind = p.kind;
    out.lo = p.lo;
    out.hi = p.hi;
    out.needs = fa.needs;
    auto get = p.get;
    auto set = p.set;
    auto read = fa.read;
    auto write = fa.write;
    out.get = [read, pick, get](Runtime& rt) { return get(pick(read(rt))); };
    out.set = [write, pickW, set](Runtime& rt, const Value& v) { set(pickW(write(rt)), v); };
}

// A property of the object itself (a form value, a module value).
template <class F>
void BindValue(const FormAccess<F>& fa, const Prop<F>& p, Path& out) {
    BindThrough<F, F>(
        fa, p, [](const F& f) -> const F& { return f; }, [](F& f) -> F& { return f; }, out);
}

// --------------------------------------------------------------------------
// The controls of a form by name.

struct ControlEntry {
    std::string name;
    bool array = false;
    int lo = 0, hi = 0;  // indices that exist
    std::string propNames;
    std::string firstProp;
    // Binds property `prop` of the control at `index`; false when the kind of
    // control has no such property.
    std::function<bool(int index, const std::string& prop, Path& out)> bind;
};

template <class F, class C>
bool BindControlProp(const FormAccess<F>& fa, std::function<const C&(const F&)> pick, std::function<C&(F&)> pickW,
                     const std::string& prop, Path& out) {
    for (const auto& p : PropsOf<C>()) {
        if (p.name != prop) continue;
        BindThrough<F, C>(fa, p, pick, pickW, out);
        return true;
    }
    return false;
}

template <class F, class C, std::size_t N>
ControlEntry ArrayControl(const FormAccess<F>& fa, const char* name, std::array<C, N> F::*m, int lo, int hi) {
    ControlEntry e;
    e.name = name;
    e.array = true;
    e.lo = lo;
    e.hi = hi;
    e.propNames = PropNames<C>();
    e.firstProp = PropsOf<C>().front().name;
    e.bind = [fa, m](int index, const std::string& prop, Path& out) {
        const auto i = static_cast<std::size_t>(index);
        std::function<const C&(const F&)> pick = [m, i](const F& f) -> const C& { return (f.*m)[i]; };
        std::function<C&(F&)> pickW = [m, i](F& f) -> C& { return (f.*m)[i]; };
        return BindControlProp<F, C>(fa, pick, pickW, prop, out);
    };
    return e;
}

template <class F, class C>
ControlEntry SingleControl(const FormAccess<F>& fa, const char* name, C F::*m) {
    ControlEntry e;
    e.name = name;
    e.propNames = PropNames<C>();
    e.firstProp = PropsOf<C>().front().name;
    e.bind = [fa, m](int, const std::string& prop, Path& out) {
        std::function<const C&(const F&)> pick = [m](const F& f) -> const C& { return f.*m; };
        std::function<C&(F&)> pickW = [m](F& f) -> C& { return f.*m; };
        return BindControlProp<F, C>(fa, pick, pickW, prop, out);
    };
    return e;
}

using F = frmTessuma;

const std::vector<ControlEntry>& MainControls() {
    static const std::vector<ControlEntry> controls = [] {
        const auto& a = MainAccess();
        std::vector<ControlEntry> c;
#define CONTROL(Type, name) c.push_back(SingleControl(a, #name, &F::name));
#define CONTROLS(Type, name, size, lo, hi) c.push_back(ArrayControl(a, #name, &F::name, lo, hi));
#include "forms/frmTessuma.def"
        return c;
    }();
    return controls;
}

const std::vector<ControlEntry>& UpdateControls() {
    static const std::vector<ControlEntry> controls = [] {
        const auto& a = UpdateAccess();
        std::vector<ControlEntry> c;
        c.push_back(SingleControl(a, "Label2", &frmUpdate::Label2));
        c.push_back(SingleControl(a, "lblStatus", &frmUpdate::lblStatus));
        c.push_back(SingleControl(a, "Label1", &frmUpdate::Label1));
        c.push_back(SingleControl(a, "lblDownload", &frmUpdate::lblDownload));
        return c;
    }();
    return controls;
}

// Form-level values of the main form, by their bare names.
const std::vector<Prop<F>>& MainValues() {
    static const std::vector<Prop<F>> values = {
#define VALUE(Type, name, init, lo, hi) ValueProp<F>(#name, &F::name, lo, hi),
#include "forms/frmTessuma.def"
    };
    return values;
}

// The main form's own properties, always written with "frmTessuma.".
const std::vector<Prop<F>>& MainOwn() {
    static const std::vector<Prop<F>> values = {
        ValueProp<F>("Left", &F::Left, INT32_MIN, INT32_MAX),
        ValueProp<F>("Top", &F::Top, INT32_MIN, INT32_MAX),
        ValueProp<F>("Width", &F::Width, INT32_MIN, INT32_MAX),
        ValueProp<F>("Height", &F::Height, INT32_MIN, INT32_MAX),
        ValueProp<F>("Visible", &F::Visible, 0, 0),
        ValueProp<F>("WindowState", &F::WindowState, 0, 2),
        ValueProp<F>("MousePointer", &F::MousePointer, 0, 99),
        ValueProp<F>("Picture", &F::Picture, INT32_MIN, INT32_MAX),
    };
    return values;
}

const std::vector<Prop<frmUpdate>>& UpdateOwn() {
    using U = frmUpdate;
    static const std::vector<Prop<U>> values = {
        ValueProp<U>("Caption", &U::Caption, 0, 0),
        ValueProp<U>("Visible", &U::Visible, 0, 0),
        ValueProp<U>("Loaded", &U::Loaded, 0, 0),
        ValueProp<U>("DownloadStarted", &U::DownloadStarted, 0, 0),
    };
    return values;
}

const std::vector<Prop<Program>>& ProgramValues() {
    static const std::vector<Prop<Program>> values = {
        ValueProp<Program>("MessageResult", &Program::MessageResult, 0, 0),
        ValueProp<Program>("UpdateUrl", &Program::UpdateUrl, 0, 0),
    };
    return values;
}

// --------------------------------------------------------------------------
// Observations of the world.

struct WorldEntry {
    const char* name;
    ValueKind kind;
    Needs needs;
    std::function<Value(Runtime&)> get;
};

Value Int(long long i) {
    Value v;
    v.i = i;
    return v;
}

Value Text(std::string s) {
    Value v;
    v.s = std::move(s);
    return v;
}

Value Bool(bool b) {
    Value v;
    v.b = b;
    return v;
}

template <class T>
std::string JoinBlank(const std::vector<T>& items) {
    std::ostringstream os;
    bool first = true;
    for (const auto& x : items) {
        if (!first) os << ' ';
        os << x;
        first = false;
    }
    return os.str();
}

const std::vector<WorldEntry>& WorldEntries() {
    static const std::vector<WorldEntry> entries = {
        {"Running", ValueKind::Bool, Needs::World, [](Runtime& rt) { return Bool(rt.program && rt.program->Running); }},
        {"Focus", ValueKind::Text, Needs::Form,
         [](Runtime& rt) { return Text(rt.Form().FocusedControl().ToString()); }},
        {"KeyQueue", ValueKind::Text, Needs::Form,
         [](Runtime& rt) {
             const auto& q = rt.Form().KeyQueue;
             return Text(JoinBlank(std::vector<std::string>(q.begin(), q.end())));
         }},
        {"Messages", ValueKind::Int, Needs::World, [](Runtime& rt) { return Int(rt.world.messages.count); }},
        {"LastMessage", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(rt.world.messages.lastText); }},
        {"LastMessageKind", ValueKind::Text, Needs::World,
         [](Runtime& rt) { return Text(rt.world.messages.lastKind); }},
        {"Effects", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(JoinBlank(rt.world.sounds.played)); }},
        {"Popups", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(JoinBlank(rt.world.popups.opened)); }},
        {"Dialogs", ValueKind::Int, Needs::World, [](Runtime& rt) { return Int(rt.world.dialogs.count); }},
        {"LastDialogTitle", ValueKind::Text, Needs::World,
         [](Runtime& rt) { return Text(rt.world.dialogs.lastTitle); }},
        {"LastDialogDir", ValueKind::Text, Needs::World,
         [](Runtime& rt) { return Text(rt.world.dialogs.lastInitialDir); }},
        {"SysBoxes", ValueKind::Int, Needs::World, [](Runtime& rt) { return Int(rt.world.sysbox.count); }},
        {"LastSysBox", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(rt.world.sysbox.lastText); }},
        {"LastSysBoxTitle", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(rt.world.sysbox.lastTitle); }},
        {"Shell", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(JoinBlank(rt.world.shell.targets)); }},
        {"Prints", ValueKind::Int, Needs::World, [](Runtime& rt) { return Int(rt.world.printer.count); }},
        {"Downloads", ValueKind::Int, Needs::World, [](Runtime& rt) { return Int(rt.world.download.count); }},
        {"LastDownloadUrl", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(rt.world.download.lastUrl); }},
        {"DisplayMode", ValueKind::Text, Needs::World,
         [](Runtime& rt) {
             return Text(std::to_string(rt.world.screen.width) + "x" + std::to_string(rt.world.screen.height));
         }},
        {"Song", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(rt.world.music.SongPlaying()); }},
        {"Volume", ValueKind::Text, Needs::World,
         [](Runtime& rt) {
             const auto& v = rt.world.music.lastVolume;
             return Text(v ? std::to_string(*v) : std::string());
         }},
        {"Owners", ValueKind::Text, Needs::World,
         [](Runtime& rt) { return Text(JoinBlank(rt.world.window.ownerSets)); }},
        {"CallResult", ValueKind::Text, Needs::World, [](Runtime& rt) { return Text(rt.callResult); }},
    };
    return entries;
}

// --------------------------------------------------------------------------
// --------------------------------------------------------------------------
// Pieces of a path: Name, Name(ARG), Name(ARG).Prop.

struct Parts {
    std::string name;
    bool hasArg = false;
    std::string arg;
    bool hasProp = false;
    std::string prop;
};

bool IsIdentChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

bool SplitParts(const std::string& s, Parts& p, std::string& error) {
    std::size_t i = 0;
    while (i < s.size() && IsIdentChar(s[i])) ++i;
    p.name = s.substr(0, i);
    if (p.name.empty()) {
        error = "a path starts with a name";
        return false;
    }
    if (i < s.size() && s[i] == '(') {
        const auto close = s.find(')', i);
        if (close == std::string::npos) {
            error = "a \"(\" without \")\"";
            return false;
        }
        p.hasArg = true;
        p.arg = s.substr(i + 1, close - i - 1);
        i = close + 1;
    }
    if (i < s.size() && s[i] == '.') {
        const std::size_t start = ++i;
        while (i < s.size() && IsIdentChar(s[i])) ++i;
        p.hasProp = true;
        p.prop = s.substr(start, i - start);
        if (p.prop.empty()) {
            error = "a name must follow the dot";
            return false;
        }
    }
    if (i != s.size()) {
        error = "unexpected \"" + s.substr(i) + "\"";
        return false;
    }
    return true;
}

bool ParseIndex(const std::string& text, int lo, int hi, const std::string& what, int& out, std::string& error) {
    long long v = 0;
    if (!ParseInt(text, v)) {
        error = "the index of " + what + " must be a whole number, not \"" + text + "\"";
        return false;
    }
    if (v < lo || v > hi) {
        error =
            what + " has indices " + std::to_string(lo) + " to " + std::to_string(hi) + ", not " + std::to_string(v);
        return false;
    }
    out = static_cast<int>(v);
    return true;
}

template <class C>
const C* FindByName(const std::vector<C>& list, const std::string& name) {
    for (const auto& e : list)
        if (e.name == name) return &e;
    return nullptr;
}

// A name that differs only in case, to point out a slip.
std::string CaseHint(const std::string& name) {
    const std::string low = vb::LCase(name);
    auto check = [&](const std::string& n) { return vb::LCase(n) == low && n != name; };
    for (const auto& e : MainControls())
        if (check(e.name)) return e.name;
    for (const auto& e : MainValues())
        if (check(e.name)) return e.name;
    for (const auto& e : WorldEntries())
        if (check(e.name)) return e.name;
    for (const auto& e : ProgramValues())
        if (check(e.name)) return e.name;
    for (const char* n : {"Possible", "HighEntries", "Setting", "HasSetting", "Ini", "File", "Exists", "frmTessuma",
                          "frmUpdate", "frmMessage"})
        if (check(n)) return n;
    return "";
}

bool BindControl(const ControlEntry& c, const Parts& p, const std::string& shown, Path& out, std::string& error) {
    int index = 0;
    if (c.array) {
        if (!p.hasArg) {
            error = c.name + " is a control array: give an index, as " + c.name + "(" + std::to_string(c.lo) + ")." +
                    c.firstProp;
            return false;
        }
        if (!ParseIndex(p.arg, c.lo, c.hi, c.name, index, error)) return false;
    } else if (p.hasArg) {
        error = c.name + " is not a control array and takes no index";
        return false;
    }
    if (!p.hasProp) {
        error = shown + " needs a property (" + c.propNames + ")";
        return false;
    }
    if (!c.bind(index, p.prop, out)) {
        error = c.name + " has no property " + p.prop + " (it has " + c.propNames + ")";
        return false;
    }
    return true;
}

template <class T>
bool BindOwn(const FormAccess<T>& fa, const std::vector<Prop<T>>& props, const std::string& name, Path& out) {
    for (const auto& p : props) {
        if (p.name != name) continue;
        BindValue(fa, p, out);
        return true;
    }
    return false;
}

bool ResolveMain(const Parts& p, bool prefixed, const std::string& shown, Path& out, std::string& error) {
    if (prefixed && !p.hasArg && !p.hasProp && BindOwn(MainAccess(), MainOwn(), p.name, out)) return true;

    if (p.name == "Possible") {
        const auto comma = p.arg.find(',');
        int r = 0, c = 0;
        if (!p.hasArg || comma == std::string::npos || p.hasProp) {
            error = "Possible takes a row and a column, as Possible(0,8)";
            return false;
        }
        if (!ParseIndex(vb::TrimBlanks(p.arg.substr(0, comma)), 0, 8, "the row of Possible", r, error) ||
            !ParseIndex(vb::TrimBlanks(p.arg.substr(comma + 1)), 0, 8, "the column of Possible", c, error))
            return false;
        out.kind = ValueKind::Text;
        out.needs = Needs::Form;
        const auto ri = static_cast<std::size_t>(r), ci = static_cast<std::size_t>(c);
        out.get = [ri, ci](Runtime& rt) { return Text(rt.Form().Possible[ri][ci]); };
        out.set = [ri, ci](Runtime& rt, const Value& v) { rt.Form().Possible[ri][ci] = v.s; };
        return true;
    }
    if (p.name == "HighEntries") {
        int i = 0;
        if (!p.hasArg || p.hasProp) {
            error = "HighEntries takes an index, as HighEntries(0)";
            return false;
        }
        if (!ParseIndex(vb::TrimBlanks(p.arg), 0, 13, "HighEntries", i, error)) return false;
        out.kind = ValueKind::Text;
        out.needs = Needs::Form;
        const auto ii = static_cast<std::size_t>(i);
        out.get = [ii](Runtime& rt) { return Text(rt.Form().HighEntries[ii]); };
        out.set = [ii](Runtime& rt, const Value& v) { rt.Form().HighEntries[ii] = v.s; };
        return true;
    }
    for (const auto& v : MainValues()) {
        if (v.name != p.name) continue;
        if (p.hasArg || p.hasProp) {
            error = p.name + " is a value of the form and takes no index or property";
            return false;
        }
        BindValue(MainAccess(), v, out);
        if (p.name == "BoardState")
            out.check = [](const Value& val, std::string& err) {
                if (val.s.empty() || val.s.size() == 81) return true;
                err = "a BoardState is empty or 81 characters long, not " + std::to_string(val.s.size());
                return false;
            };
        return true;
    }
    if (const ControlEntry* c = FindByName(MainControls(), p.name)) return BindControl(*c, p, shown, out, error);
    if (prefixed) {
        error = "frmTessuma has no control or value " + p.name;
        return false;
    }
    return false;  // not a name of the form; the caller goes on looking
}

bool ResolveUpdate(const Parts& p, const std::string& shown, Path& out, std::string& error) {
    if (!p.hasArg && !p.hasProp && BindOwn(UpdateAccess(), UpdateOwn(), p.name, out)) return true;
    if (const ControlEntry* c = FindByName(UpdateControls(), p.name)) return BindControl(*c, p, shown, out, error);
    error = "frmUpdate has no control or value " + p.name;
    return false;
}

// Function-like observations: Setting(KEY) and the like.
bool ResolveCall(const std::string& text, Path& out, std::string& error, bool& matched) {
    matched = false;
    const auto open = text.find('(');
    if (open == std::string::npos || text.back() != ')') return false;
    const std::string name = text.substr(0, open);
    const std::string arg = text.substr(open + 1, text.size() - open - 2);
    static const char* const names[] = {"Setting", "HasSetting", "Ini", "File", "Exists"};
    bool known = false;
    for (const char* n : names) known = known || name == n;
    if (!known) return false;
    matched = true;
    out.needs = Needs::World;
    out.readOnlyWhy = name + "(...) is an observation of the world";
    if (name == "Setting" || name == "HasSetting") {
        if (arg.empty()) {
            error = name + " needs a key, as " + name + "(Clickring)";
            return false;
        }
        std::string section, key = arg;
        modGetSet::RouteKey(section, key);
        if (name == "Setting") {
            out.kind = ValueKind::Text;
            out.get = [section, key](Runtime& rt) {
                return Text(rt.world.settings.Get(modGetSet::kApp, section, key));
            };
        } else {
            out.kind = ValueKind::Bool;
            out.get = [section, key](Runtime& rt) {
                return Bool(rt.world.settings.Has(modGetSet::kApp, section, key));
            };
        }
        return true;
    }
    if (name == "Ini") {
        if (arg.empty()) {
            error = "Ini needs a key, as Ini(LastOpenDir)";
            return false;
        }
        out.kind = ValueKind::Text;
        out.get = [arg](Runtime& rt) {
            return Text(IniText(rt.world.files.Get("tessuma.ini").value_or("")).Get("DIALOGS", arg).value_or(""));
        };
        return true;
    }
    if (!CheckSandboxPath(arg, error)) {
        error = name + "(" + arg + "): " + error;
        return false;
    }
    if (name == "File") {
        out.kind = ValueKind::Text;
        out.get = [arg](Runtime& rt) { return Text(rt.world.files.Get(arg).value_or("")); };
    } else {
        out.kind = ValueKind::Bool;
        out.get = [arg](Runtime& rt) { return Bool(rt.world.files.IsFile(arg)); };
    }
    return true;
}

}  // namespace

// --------------------------------------------------------------------------

bool CheckSandboxPath(const std::string& path, std::string& error) {
    if (path.empty()) {
        error = "an empty file path";
        return false;
    }
    if (path[0] == '/') {
        error = "a file path is relative to the sandbox, not absolute";
        return false;
    }
    std::size_t start = 0;
    while (start <= path.size()) {
        std::size_t end = path.find('/', start);
        if (end == std::string::npos) end = path.size();
        if (path.compare(start, end - start, "..") == 0 && end - start == 2) {
            error = "a file path may not leave the sandbox (\"..\")";
            return false;
        }
        start = end + 1;
    }
    if (path.back() == '/') {
        error = "a file path names a file, not a folder";
        return false;
    }
    if (path.find('\0') != std::string::npos) {
        error = "a file path may not hold a NUL character";
        return false;
    }
    return true;
}

std::string ShowSandbox(const std::string& text, const std::string& sandbox) {
    if (sandbox.empty()) return text;
    std::string r;
    std::size_t pos = 0;
    while (true) {
        const auto at = text.find(sandbox, pos);
        if (at == std::string::npos) break;
        r.append(text, pos, at - pos);
        r += "<sandbox>";
        pos = at + sandbox.size();
    }
    r.append(text, pos, std::string::npos);
    return r;
}

std::string ExpandSandbox(const std::string& text, const std::string& sandbox) {
    static const std::string token = "<sandbox>";
    std::string r;
    std::size_t pos = 0;
    while (true) {
        const auto at = text.find(token, pos);
        if (at == std::string::npos) break;
        r.append(text, pos, at - pos);
        r += sandbox;
        pos = at + token.size();
    }
    r.append(text, pos, std::string::npos);
    return r;
}

bool ResolvePath(const std::string& text, Path& out, std::string& error) {
    out = Path{};
    out.text = text;
    if (text.empty()) {
        error = "an empty path";
        return false;
    }
    bool matched = false;
    if (ResolveCall(text, out, error, matched) || matched) return matched && error.empty();

    std::string rest = text;
    enum { Bare, Main, Update, Message } scope = Bare;
    for (const auto& [prefix, s] : {std::pair<std::string, decltype(scope)>{"frmTessuma.", Main},
                                    {"frmUpdate.", Update},
                                    {"frmMessage.", Message}}) {
        if (rest.compare(0, prefix.size(), prefix) == 0) {
            scope = s;
            rest = rest.substr(prefix.size());
            break;
        }
    }

    Parts p;
    std::string why;
    if (!SplitParts(rest, p, why)) {
        error = "unknown path \"" + text + "\": " + why;
        return false;
    }

    switch (scope) {
        case Update: return ResolveUpdate(p, text, out, error);
        case Message:
            if (p.name == "Visible" && !p.hasArg && !p.hasProp) {
                out.kind = ValueKind::Bool;
                out.needs = Needs::World;
                out.get = [](Runtime& rt) { return Bool(rt.world.messages.open); };
                out.readOnlyWhy = "frmMessage is shown and closed by the program";
                return true;
            }
            error = "frmMessage lives only while it is shown: frmMessage.Visible is its one path";
            return false;
        case Main:
        case Bare:
            if (ResolveMain(p, scope == Main, text, out, error)) return true;
            if (!error.empty()) return false;
            break;
    }

    // Bare names beyond the main form: the program's values and the world.
    if (!p.hasArg && !p.hasProp) {
        if (BindOwn(ProgramAccess(), ProgramValues(), p.name, out)) return true;
        for (const auto& w : WorldEntries()) {
            if (w.name != p.name) continue;
            out.kind = w.kind;
            out.needs = w.needs;
            out.get = w.get;
            out.readOnlyWhy = p.name == "Focus" ? std::string("move the focus with focus CONTROL")
                                                : p.name + " is an observation of the world";
            return true;
        }
    }
    const std::string hint = CaseHint(p.name);
    if (p.name == "frmTessuma" || p.name == "frmUpdate" || p.name == "frmMessage")
        error = "unknown path \"" + text + "\": write a property of the form, as " + p.name + ".Visible";
    else if (!hint.empty())
        error = "unknown path \"" + text + "\": names are case-sensitive, did you mean " + hint + "?";
    else
        error = "unknown path \"" + text + "\"";
    return false;
}

bool ResolveControl(const std::string& text, ControlRef& out, std::string& error) {
    out = ControlRef{};
    if (text.empty() || text == "none") return true;
    Parts p;
    std::string why;
    if (!SplitParts(text, p, why) || p.hasProp) {
        error = "\"" + text + "\" is not a control, as txtCell(5) or chkSkin";
        return false;
    }
    const ControlEntry* c = FindByName(MainControls(), p.name);
    if (!c) {
        error = "unknown control \"" + p.name + "\"";
        return false;
    }
    int index = -1;
    if (c->array) {
        if (!p.hasArg) {
            error = c->name + " is a control array: give an index, as " + c->name + "(" + std::to_string(c->lo) + ")";
            return false;
        }
        if (!ParseIndex(p.arg, c->lo, c->hi, c->name, index, error)) return false;
    } else if (p.hasArg) {
        error = c->name + " is not a control array and takes no index";
        return false;
    }
    out = ControlRef{c->name, index};
    return true;
}

std::vector<std::string> ListPaths() {
    std::vector<std::string> r;
    auto controls = [&r](const std::vector<ControlEntry>& list, const std::string& prefix) {
        for (const auto& c : list) {
            std::string head = prefix + c.name + (c.array ? "(" + std::to_string(c.lo) + ")" : "");
            std::size_t start = 0;
            const std::string& names = c.propNames;
            while (start < names.size()) {
                auto end = names.find(", ", start);
                if (end == std::string::npos) end = names.size();
                r.push_back(head + "." + names.substr(start, end - start));
                start = end + 2;
            }
        }
    };
    controls(MainControls(), "");
    for (const auto& v : MainValues()) r.push_back(v.name);
    for (const auto& v : MainOwn()) r.push_back("frmTessuma." + v.name);
    r.push_back("Possible(0,0)");
    r.push_back("HighEntries(0)");
    for (const auto& v : UpdateOwn()) r.push_back("frmUpdate." + v.name);
    controls(UpdateControls(), "frmUpdate.");
    r.push_back("frmMessage.Visible");
    for (const auto& v : ProgramValues()) r.push_back(v.name);
    for (const auto& w : WorldEntries()) r.push_back(w.name);
    for (const char* f :
         {"Setting(Clickring)", "HasSetting(ScreenPos/Left)", "Ini(LastOpenDir)", "File(game.tsm)", "Exists(game.tsm)"})
        r.push_back(f);
    return r;
}

}  // namespace scenario
