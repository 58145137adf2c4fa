#pragma once
// The player's files for real, named by the bytes the system knows them by:
// reads, and replacement through a temporary in the same folder that is
// renamed over the old file only when whole (AtomicFile.h).

#include "forms/Ports.h"

class QtFiles : public IFiles {
public:
    Read ReadFile(const std::string& path, std::size_t limit, std::string& text) override;
    bool WriteFileAtomically(const std::string& path, const std::string& text) override;
    bool IsFile(const std::string& path) override;
    void RemoveFile(const std::string& path) override;
};
