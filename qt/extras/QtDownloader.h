#pragma once
// Fetches a file over HTTP or HTTPS into a local path, waiting for the answer
// (the game's check is synchronous) with a time limit of its own. A file
// larger than the size limit is refused as soon as that shows, from its
// announced length or from what has arrived, and nothing is written.

#include <QtGlobal>

#include "forms/Ports.h"

class QtDownloader : public IDownloader {
public:
    explicit QtDownloader(int timeoutMs = 15000, qint64 maxBytes = 64 * 1024)
        : timeoutMs_(timeoutMs), maxBytes_(maxBytes) {}
    bool Download(const std::string& url, const std::string& localPath) override;
    // True while a download waits for its answer. The window's input waits
    // with it; a close request from the desktop is delivered meanwhile, for
    // the window to act on once the check is over.
    static bool Active();

private:
    int timeoutMs_;
    qint64 maxBytes_;
};
