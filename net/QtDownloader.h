#pragma once
// Fetches a file over HTTP or HTTPS into a local path, waiting for the answer
// (the game's check is synchronous) with a time limit of its own.

#include "platform/Ports.h"

class QtDownloader : public IDownloader {
public:
    explicit QtDownloader(int timeoutMs = 15000) : timeoutMs_(timeoutMs) {}
    bool Download(const std::string& url, const std::string& localPath) override;

private:
    int timeoutMs_;
};
