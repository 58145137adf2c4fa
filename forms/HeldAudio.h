#pragma once
// Music and sound effects that wait for the window.
//
// Bringing up the system's audio (the media framework, its plugins, the
// sound server) takes longer than drawing the whole window, so the game's
// real devices are made only once its first frame is on the screen. Until
// Release() the held devices stand in for them:
//
//   HeldMusicDevice  takes every call, answers it as a device still loading
//                    its song would (Success; length and position -1, "not
//                    known yet"), and on Release() makes the real device and
//                    replays the calls on it in their order, so the song the
//                    game started is the song that plays.
//   HeldSoundEffects keeps the last effect asked for before Release() and
//                    plays it then (a later effect replaces an earlier one
//                    anyway), so the start sound comes a moment late, not never.
//
// After Release() both pass every call straight through.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "forms/Ports.h"

class HeldMusicDevice : public IMusicDevice {
public:
    using Maker = std::function<std::unique_ptr<IMusicDevice>()>;
    explicit HeldMusicDevice(Maker make) : make_(std::move(make)) {}

    bool Held() const { return !released_; }
    // Makes the real device and replays the held calls. A second call does nothing.
    void Release();
    // The real device, or nullptr while held (or when the maker made none).
    IMusicDevice* Real() const { return real_.get(); }

    int Open(const std::string& alias, const std::string& path) override;
    int Play(const std::string& alias, long from, long to) override;
    int Stop(const std::string& alias) override;
    int Close(const std::string& alias) override;
    long Length(const std::string& alias) override;
    long Position(const std::string& alias) override;
    int SetVolume(const std::string& alias, const std::string& side, int volume) override;
    std::string ErrorText(int code) override;

private:
    using Call = std::function<void(IMusicDevice&)>;
    int Hold(Call call);

    Maker make_;
    std::unique_ptr<IMusicDevice> real_;
    bool released_ = false;
    std::vector<Call> held_;
};

class HeldSoundEffects : public ISoundEffects {
public:
    using Maker = std::function<std::unique_ptr<ISoundEffects>()>;
    explicit HeldSoundEffects(Maker make) : make_(std::move(make)) {}

    bool Held() const { return !released_; }
    void Release();
    ISoundEffects* Real() const { return real_.get(); }

    void Play(int effect) override;

private:
    Maker make_;
    std::unique_ptr<ISoundEffects> real_;
    bool released_ = false;
    int pending_ = 0;  // the effect asked for while held, 0 for none
};
