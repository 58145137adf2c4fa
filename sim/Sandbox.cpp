// File paths of a scenario and the "<sandbox>" token.
#include "sim/Sandbox.h"

namespace scenario {

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

namespace {

const std::string kToken = "<sandbox>";

// `text` with every `from` in it replaced by `to`; `from` is not empty.
std::string ReplaceAll(const std::string& text, const std::string& from, const std::string& to) {
    std::string r;
    std::size_t pos = 0;
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, pos)) {
        r.append(text, pos, at - pos);
        r += to;
        pos = at + from.size();
    }
    r.append(text, pos, std::string::npos);
    return r;
}

}  // namespace

std::string ShowSandbox(const std::string& text, const std::string& sandbox) {
    return sandbox.empty() ? text : ReplaceAll(text, sandbox, kToken);
}

std::string ExpandSandbox(const std::string& text, const std::string& sandbox) {
    return ReplaceAll(text, kToken, sandbox);
}

}  // namespace scenario
