#pragma once
// The version file of the update check: its first field is ten times the
// newest version (21 for 2.1), its second the address of the download.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// The version file is one short line; anything larger is refused unread.
inline constexpr std::size_t kMaxVersionFileBytes = 64 * 1024;

struct VersionFile {
    std::string newest;
    std::string address;
};

// Fields are CSV-like: blanks before a field are skipped; a field in double
// quotes runs to its closing quote, any other ends at a comma or a line end.
// A byte-order mark in front is no part of the version. Nothing when the
// text is too large or holds fewer than two fields.
std::optional<VersionFile> ParseVersionFile(std::string_view text);

// Is the file's version newer than ours? Text that is no number reads as 0,
// which is never newer.
bool IsNewerVersion(const std::string& newest, int major, int minor);
