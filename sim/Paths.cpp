// The scenario language's paths: one table of heads (the names a path may
// start with), made from the forms' declarations and the list of
// observations, and one reader that checks a path against its head.
#include "sim/Paths.h"

#include <climits>
#include <cstdint>
#include <sstream>
#include <type_traits>
#include <utility>

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

// A property of objects of type C: its name, how `set` reads it, and access.
template <class C>
struct Prop {
    std::string name;
    ValueKind kind = ValueKind::Text;
    long long lo = 0, hi = 0;  // the range of an Int that `set` may write
    std::function<Value(const C&)> get{};
    std::function<void(C&, const Value&)> set{};
};

// The property that `at(object)` reaches.
template <class C, class At>
Prop<C> MakeProp(const char* name, ValueKind kind, long long lo, long long hi, At at) {
    Prop<C> p{name, kind, lo, hi};
    p.get = [at](const C& c) { return ToValue(at(c)); };
    p.set = [at](C& c, const Value& v) { FromValue(v, at(c)); };
    return p;
}

// The properties of each kind of control, from its declaration; none for a
// plain value.
template <class C>
const std::vector<Prop<C>>& PropsOf() {
    static const std::vector<Prop<C>> none;
    return none;
}
#define TESSUMA_PROP(Type, name, init, kind, lo, hi) \
    MakeProp<C>(                                     \
        #name, ValueKind::kind, lo, hi, [](auto& c) -> auto& { return c.name; }),
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

// The object that holds a path's value: the main form, frmUpdate (read as it
// stands, loaded by writing), the program, or the whole run for observations.
template <class F, bool kWriting>
decltype(auto) Holder(Runtime& rt) {
    if constexpr (std::is_same_v<F, frmUpdate>) {
        if constexpr (kWriting) return rt.UpdateForWriting();
        if constexpr (!kWriting) return rt.UpdateForReading();
    } else if constexpr (std::is_same_v<F, frmTessuma>) {
        return rt.Form();
    } else if constexpr (std::is_same_v<F, Program>) {
        return *rt.program;
    } else {
        return (rt);
    }
}

struct Head {
    std::string form{};    // "frmTessuma", "frmUpdate", "frmMessage"; "" for the program and the world
    bool bare = true;      // may be written without "form."
    std::string name{};    // as written after the form
    int lo = 0, hi = -1;   // the range of each index; no index when hi < lo
    int indices = 1;       // how many (Possible(R,C) has two: index R * 9 + C)
    std::string sample{};  // a free argument as errors show one ("Clickring"); "" for none
    bool file = false;     // the free argument is a sandbox file path
    Needs needs = Needs::World;
    std::vector<std::string> props{};  // the properties of a control; none for a plain value
    // Binds the value at `index` (with argument `arg`, property `prop`).
    std::function<void(int index, const std::string& arg, const std::string& prop, Path& out)> bind{};
};

// Binds head `h` to what `at(object, index, argument)` finds in an F: a
// control with the properties of its kind, or a plain value (an Int within
// lo..hi for `set`). A value that `at` returns by value is read-only.
template <class F, class At>
Head Bind(Head h, At at, long long lo = 0, long long hi = 0) {
    using R = decltype(at(Holder<F, true>(std::declval<Runtime&>()), 0, std::string()));
    using C = std::remove_cvref_t<R>;
    if constexpr (!std::is_same_v<F, Runtime>) h.needs = std::is_same_v<F, frmTessuma> ? Needs::Form : Needs::Program;
    std::vector<Prop<C>> props = PropsOf<C>();
    for (const auto& p : props) h.props.push_back(p.name);
    if constexpr (requires(C c, Value v) { FromValue(v, c); })
        props.push_back(MakeProp<C>(
            "", KindOf<C>(), lo, hi, [](auto& c) -> auto& { return c; }));
    h.bind = [at, props, h](int index, const std::string& arg, const std::string& prop, Path& out) {
        for (const auto& p : props) {
            if (p.name != prop) continue;
            out.kind = p.kind;
            out.lo = p.lo;
            out.hi = p.hi;
            out.needs = h.needs;
            out.get = [get = p.get, at, index, arg](Runtime& rt) { return get(at(Holder<F, false>(rt), index, arg)); };
            if constexpr (std::is_lvalue_reference_v<R>)
                out.set = [set = p.set, at, index, arg](Runtime& rt, const Value& v) {
                    set(at(Holder<F, true>(rt), index, arg), v);
                };
            else
                out.readOnlyWhy = h.name == "Focus" ? "move the focus with focus CONTROL"
                                                    : h.name + " is an observation of the world";
        }
    };
    return h;
}

std::string Join(const auto& items) {
    std::ostringstream os;
    for (const auto& x : items) os << (os.tellp() > 0 ? " " : "") << x;
    return os.str();
}

// A key of the settings store, routed as the program routes it: its section or its own name.
std::string Routed(std::string key, bool section) {
    std::string s;
    modGetSet::RouteKey(s, key);
    return section ? s : key;
}

#define TESSUMA_AT(expr) \
    [](auto& f, [[maybe_unused]] int i, const std::string&) -> auto& { return expr; }

const std::vector<Head>& Heads() {
    using F = frmTessuma;
    static const std::vector<Head> heads = [] {
        std::vector<Head> h;
#define FORM(Type, N, init, lo, hi) \
    h.push_back(Bind<F>({.form = "frmTessuma", .bare = false, .name = #N}, TESSUMA_AT(f.N), lo, hi));
#define CONTROL(Type, N) h.push_back(Bind<F>({.form = "frmTessuma", .name = #N}, TESSUMA_AT(f.N)));
#define CONTROLS(Type, N, size, first, last) \
    h.push_back(Bind<F>({.form = "frmTessuma", .name = #N, .lo = first, .hi = last}, TESSUMA_AT(f.N[i])));
#define VALUE(Type, N, init, lo, hi) h.push_back(Bind<F>({.form = "frmTessuma", .name = #N}, TESSUMA_AT(f.N), lo, hi));
#include "forms/frmTessuma.def"
        h.push_back(Bind<F>({.form = "frmTessuma", .name = "Possible", .hi = 8, .indices = 2},
                            TESSUMA_AT(f.Possible[i / 9][i % 9])));
        h.push_back(Bind<F>({.form = "frmTessuma", .name = "HighEntries", .hi = 13}, TESSUMA_AT(f.HighEntries[i])));
#define TESSUMA_UPDATE_FIELD(Type, N, ...) \
    h.push_back(Bind<frmUpdate>({.form = "frmUpdate", .bare = false, .name = #N}, TESSUMA_AT(f.N)));
        FRMUPDATE_FIELDS(TESSUMA_UPDATE_FIELD, TESSUMA_UPDATE_FIELD)
        h.push_back(Bind<Program>({.name = "MessageResult"}, TESSUMA_AT(f.MessageResult)));
        h.push_back(Bind<Program>({.name = "UpdateUrl"}, TESSUMA_AT(f.UpdateUrl)));
#define OBSERVE(Form, Name, Needs_, Sample, expr)                       \
    h.push_back(Bind<Runtime>({.form = #Form,                           \
                               .bare = std::string_view(#Form).empty(), \
                               .name = #Name,                           \
                               .sample = Sample,                        \
                               .needs = Needs::Needs_},                 \
                              [](Runtime& rt, int, [[maybe_unused]] const std::string& arg) { return expr; }));
#define FILE_OBSERVE(Name, expr)                                                   \
    h.push_back(Bind<Runtime>({.name = #Name, .sample = "game.tsm", .file = true}, \
                              [](Runtime& rt, int, const std::string& arg) { return expr; }));
#include "sim/Observations.def"
        return h;
    }();
    return heads;
}
#undef TESSUMA_UPDATE_FIELD
#undef TESSUMA_AT

// A path split and checked against its head; `index` counts as the head's
// `at` takes it.
struct Parts : PathPieces {
    const Head* head = nullptr;
    std::string shown;  // the path up to its argument
    int index = 0;
};

bool Parse(const std::string& text, Parts& p, std::string& error) {
    const bool split = SplitPath(text, p);
    for (const auto& h : Heads())
        if (h.name == p.name && (h.form == p.form || (p.form.empty() && h.bare))) p.head = &h;
    error = "unknown path \"" + text + "\"";
    if (!split) return false;
    if (!p.head) {
        for (const auto& h : Heads())
            if (vb::LCase(h.name) == vb::LCase(p.name) && h.name != p.name)
                return error += ": names are case-sensitive, did you mean " + h.name + "?", false;
        if (p.name.rfind("frm", 0) == 0) error += ": write a property of the form, as " + p.name + ".Visible";
        return false;
    }
    error.clear();
    const Head& h = *p.head;
    const std::string& name = p.name;
    p.shown = (p.form.empty() ? "" : p.form + ".") + name;
    if (h.hi >= h.lo) {
        int n = 0;
        for (std::size_t start = 0; p.hasArg && start <= p.arg.size(); ++n) {
            const std::size_t end = std::min(p.arg.find(',', start), p.arg.size());
            const std::string one = vb::TrimBlanks(p.arg.substr(start, end - start));
            long long v = 0;
            if (!ParseInt(one, v))
                return error = "the index of " + name + " must be a whole number, not \"" + one + "\"", false;
            if (v < h.lo || v > h.hi)
                return error = name + " has indices " + std::to_string(h.lo) + " to " + std::to_string(h.hi) +
                               ", not " + std::to_string(v),
                       false;
            p.index = p.index * (h.hi + 1) + static_cast<int>(v);
            start = end + 1;
        }
        if (n != h.indices)
            return error = p.shown + (h.indices == 2 ? " takes a row and a column, as " : " takes an index, as ") +
                           p.shown + (h.indices == 2 ? "(0,0)" : "(" + std::to_string(h.lo) + ")"),
                   false;
    } else if (!h.sample.empty()) {
        if (p.arg.empty()) return error = name + " needs an argument, as " + name + "(" + h.sample + ")", false;
        if (h.file && !CheckSandboxPath(p.arg, error)) return error = name + "(" + p.arg + "): " + error, false;
    } else if (p.hasArg) {
        return error = p.shown + " takes no index", false;
    }
    return true;
}

}  // namespace

bool ResolvePath(const std::string& text, Path& out, std::string& error) {
    out = Path{};
    Parts p;
    if (!Parse(text, p, error)) return false;
    const Head& h = *p.head;
    h.bind(p.index, p.arg, p.prop, out);
    out.text = text;
    const std::string props = " (" + Join(h.props) + ")";
    if (!out.get)
        return error = p.shown + (h.props.empty() ? " takes no property"
                                  : p.hasProp     ? " has no property " + p.prop + props
                                                  : " needs a property" + props),
               false;
    if (h.name == "BoardState")
        out.check = [](const Value& val, std::string& err) {
            if (val.s.empty() || val.s.size() == 81) return true;
            err = "a BoardState is empty or 81 characters long, not " + std::to_string(val.s.size());
            return false;
        };
    return true;
}

bool ResolveControl(const std::string& text, ControlRef& out, std::string& error) {
    out = ControlRef{};
    if (text.empty() || text == "none") return true;
    Parts p;
    if (!Parse(text, p, error)) return false;
    if (p.head->form != "frmTessuma" || p.head->props.empty() || p.hasProp)
        return error = "\"" + text + "\" is not a control, as txtCell(5) or chkSkin", false;
    out = ControlRef{p.head->name, p.head->hi >= p.head->lo ? p.index : -1};
    return true;
}

}  // namespace scenario
