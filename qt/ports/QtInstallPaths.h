#pragma once
// Where the game finds the files that come with it (the songs in Music/).
// In a build tree they lie beside the program; an installed game keeps them
// under <prefix>/share/tessuma while the program sits in <prefix>/bin.

#include <string>

// The folder to use as the game's program folder for its data: the folder of
// the running program if it holds Music/, else ../share/tessuma beside that
// folder if that holds Music/, else the folder of the running program (the
// game then plays no music, as with any missing song).
std::string ProgramDataDir();

// The same rule for a given folder of the program.
std::string ProgramDataDir(const std::string& programDir);
