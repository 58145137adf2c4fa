// The scenario language's `call` table, made from the form's declaration.
#include "sim/Calls.h"

#include <cctype>
#include <climits>
#include <cstdint>
#include <limits>
#include <map>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "sim/Paths.h"

namespace scenario {

namespace {

using Args = std::vector<Value>;

// How an argument of a handler is read, beyond what its type says: a range
// for a whole number, or a text that is a file path in the sandbox.
struct ArgReading {
    enum How { Default, Range, File, Any } how = Default;
    long long lo = 0, hi = 0;
    ArgReading() = default;
    ArgReading(long long l, long long h) : how(Range), lo(l), hi(h) {}
    explicit ArgReading(How h) : how(h) {}
};
const ArgReading kFileArg{ArgReading::File};
const ArgReading kAnyArg{ArgReading::Any};

// The parameter names of a declaration's "(int Index, int KeyCode)".
std::vector<std::string> ParamNames(std::string_view params) {
    std::vector<std::string> names;
    std::string_view rest = params.substr(1, params.size() - 2);
    while (!rest.empty()) {
        const std::size_t comma = rest.find(',');
        std::string_view one = rest.substr(0, comma);
        std::size_t end = one.find_last_not_of(' ') + 1, start = end;
        while (start > 0 && (std::isalnum(static_cast<unsigned char>(one[start - 1])) || one[start - 1] == '_'))
            --start;
        if (end > start) names.emplace_back(one.substr(start, end - start));
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    }
    return names;
}

// What a parameter's type makes of a scenario's value, and back.
template <class T>
struct Param;
// A whole number, within its type's range unless the handler's list says less.
template <class T>
struct IntParam {
    using Hold = T;
    static constexpr ArgKind kind = ArgKind::Int;
    static constexpr long long lo = std::numeric_limits<T>::min(), hi = std::numeric_limits<T>::max();
    static Hold From(const Value& v) { return static_cast<T>(v.i); }
};
template <>
struct Param<int> : IntParam<int> {};
template <>
struct Param<std::int16_t> : IntParam<std::int16_t> {};
template <>
struct Param<std::int16_t&> : Param<std::int16_t> {
    static std::string Out(Hold h) { return std::to_string(h); }
};
template <>
struct Param<float> {
    using Hold = float;
    static constexpr ArgKind kind = ArgKind::Float;
    static constexpr long long lo = 0, hi = 0;
    static Hold From(const Value& v) { return v.f; }
};
template <>
struct Param<bool> {
    using Hold = bool;
    static constexpr ArgKind kind = ArgKind::Bool;
    static constexpr long long lo = 0, hi = 0;
    static Hold From(const Value& v) { return v.b; }
};
template <>
struct Param<bool&> : Param<bool> {
    static std::string Out(Hold h) { return FormatBool(h); }
};
template <>
struct Param<char> {
    using Hold = char;
    static constexpr ArgKind kind = ArgKind::Char;
    static constexpr long long lo = 0, hi = 0;
    static Hold From(const Value& v) { return v.s.empty() ? '\0' : v.s[0]; }
};
template <>
struct Param<const std::string&> {
    using Hold = std::string;
    static constexpr ArgKind kind = ArgKind::Text;
    static constexpr long long lo = 0, hi = 0;
    static Hold From(const Value& v) { return v.s; }
};
template <>
struct Param<const ControlRef&> {
    using Hold = ControlRef;
    static constexpr ArgKind kind = ArgKind::Control;
    static constexpr long long lo = 0, hi = 0;
    static Hold From(const Value& v) { return ControlRef{v.s, static_cast<int>(v.i)}; }
};

template <class T>
concept ByRef = requires(typename Param<T>::Hold h) {
    Param<T>::Out(h);
};

template <class T>
ArgInfo Describe(const std::string& name, const ArgReading& reading) {
    ArgInfo a{name, Param<T>::kind, Param<T>::lo, Param<T>::hi, ByRef<T>};
    if (reading.how == ArgReading::Range) {
        a.lo = reading.lo;
        a.hi = reading.hi;
    } else if (reading.how == ArgReading::File) {
        a.kind = ArgKind::File;
    } else if (a.kind == ArgKind::Int && name == "KeyCode") {
        a.lo = 0;
        a.hi = 255;
    } else if (a.kind == ArgKind::Int && (name == "Shift" || name == "Button")) {
        a.lo = 0;
        a.hi = 7;
    }
    return a;
}

// What CallResult shows: the value returned, else the final value of a
// by-reference argument, else "".
std::string Shown(bool b) { return FormatBool(b); }
std::string Shown(int i) { return std::to_string(i); }
std::string Shown(std::string s) { return s; }
std::string Shown(const ControlRef& c) { return c.ToString(); }

template <class F, class M, class R, class... A, std::size_t... I>
std::string Invoke(F& f, M m, const Args& a, std::index_sequence<I...>) {
    std::tuple<typename Param<A>::Hold...> held{Param<A>::From(a[I])...};
    if constexpr (std::is_void_v<R>) {
        (f.*m)(std::get<I>(held)...);
        std::string out;
        (
            [&] {
                if constexpr (ByRef<A>) out = Param<A>::Out(std::get<I>(held));
            }(),
            ...);
        return out;
    } else {
        return Shown((f.*m)(std::get<I>(held)...));
    }
}

template <class R, class M, class... A>
CallEntry Bind(const char* name, M m, std::string_view params, std::vector<ArgReading> readings) {
    const std::vector<std::string> names = ParamNames(params);
    readings.resize(sizeof...(A));
    CallEntry e{name, {}, Needs::Form, {}};
    std::size_t i = 0;
    ((e.args.push_back(Describe<A>(names.at(i), readings[i])), ++i), ...);
    e.run = [m](Runtime& rt, const Args& a) {
        return Invoke<frmTessuma, M, R, A...>(rt.Form(), m, a, std::index_sequence_for<A...>{});
    };
    return e;
}

template <class R, class... A>
CallEntry Handler(const char* name, R (frmTessuma::*m)(A...), std::string_view params,
                  std::vector<ArgReading> readings) {
    return Bind<R, decltype(m), A...>(name, m, params, std::move(readings));
}

template <class R, class... A>
CallEntry Handler(const char* name, R (frmTessuma::*m)(A...) const, std::string_view params,
                  std::vector<ArgReading> readings) {
    return Bind<R, decltype(m), A...>(name, m, params, std::move(readings));
}

CallEntry UpdateHandler(const char* name, void (frmUpdate::*m)()) {
    return CallEntry{name, {}, Needs::Program, [m](Runtime& rt, const Args&) {
                         (rt.UpdateForWriting().*m)();
                         return std::string();
                     }};
}

std::vector<CallEntry> BuildTable() {
    std::vector<CallEntry> t;
#define HANDLER(Ret, name, params, ...) t.push_back(Handler(#name, &frmTessuma::name, #params, __VA_ARGS__));
#define QUERY(Ret, name, params, ...) t.push_back(Handler(#name, &frmTessuma::name, #params, __VA_ARGS__));
#include "forms/frmTessuma.def"
    t.push_back(CallEntry{"CellIndex",
                          {ArgInfo{"Row", ArgKind::Int, 0, 8, false}, ArgInfo{"Col", ArgKind::Int, 0, 8, false}},
                          Needs::Form,
                          [](Runtime&, const Args& a) {
                              return std::to_string(
                                  frmTessuma::CellIndex(static_cast<int>(a[0].i), static_cast<int>(a[1].i)));
                          }});
    // The update window.
    t.push_back(UpdateHandler("frmUpdate.Form_Load", &frmUpdate::Form_Load));
    t.push_back(UpdateHandler("frmUpdate.Show", &frmUpdate::Show));
    t.push_back(UpdateHandler("frmUpdate.lblDownload_Click", &frmUpdate::lblDownload_Click));
    t.push_back(UpdateHandler("frmUpdate.CloseBySystem", &frmUpdate::CloseBySystem));
    t.push_back(UpdateHandler("frmUpdate.Form_Unload", &frmUpdate::Form_Unload));
    return t;
}

}  // namespace

const std::vector<CallEntry>& AllCalls() {
    static const std::vector<CallEntry> table = BuildTable();
    return table;
}

const CallEntry* FindCall(const std::string& name) {
    static const std::map<std::string, const CallEntry*> index = [] {
        std::map<std::string, const CallEntry*> m;
        for (const auto& c : AllCalls()) m[c.name] = &c;
        return m;
    }();
    const auto it = index.find(name);
    return it == index.end() ? nullptr : it->second;
}

std::string Signature(const CallEntry& entry) {
    std::string s = entry.name;
    for (const auto& a : entry.args) s += " " + a.name;
    return s;
}

bool ParseCallArgs(const CallEntry& entry, const std::vector<Token>& words, std::vector<Value>& args,
                   std::string& error) {
    args.clear();
    if (words.size() != entry.args.size()) {
        const auto n = entry.args.size();
        error = entry.name + " takes " +
                (n == 0 ? std::string("no arguments") : std::to_string(n) + (n == 1 ? " argument" : " arguments")) +
                (n == 0 ? "" : " (" + Signature(entry) + ")") + ", not " + std::to_string(words.size());
        return false;
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
        const ArgInfo& a = entry.args[i];
        const std::string& w = words[i].text;
        Value v;
        std::string why;
        bool ok = true;
        switch (a.kind) {
            case ArgKind::Int: ok = ParseValue(ValueKind::Int, a.lo, a.hi, w, v, why); break;
            case ArgKind::Float: ok = ParseValue(ValueKind::Float, 0, 0, w, v, why); break;
            case ArgKind::Bool: ok = ParseValue(ValueKind::Bool, 0, 0, w, v, why); break;
            case ArgKind::Text: v.s = w; break;
            case ArgKind::Char:
                ok = w.size() == 1;
                if (!ok) why = "\"" + EscapeText(w) + "\" is not a single character";
                v.s = w;
                break;
            case ArgKind::File:
                ok = CheckSandboxPath(w, why);
                v.s = w;
                break;
            case ArgKind::Control: {
                ControlRef ref;
                ok = ResolveControl(w, ref, why);
                v.s = ref.name;
                v.i = ref.index;
                break;
            }
        }
        if (!ok) {
            error = "argument " + std::to_string(i + 1) + " (" + a.name + ") of " + entry.name + ": " + why;
            return false;
        }
        args.push_back(std::move(v));
    }
    return true;
}

}  // namespace scenario
