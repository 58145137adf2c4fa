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

}  // namespace scenario
