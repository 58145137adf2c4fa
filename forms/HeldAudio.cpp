// Sound and music devices that wait for the audio to be brought up.
#include "forms/HeldAudio.h"

void HeldMusicDevice::Release() {
    if (released_) return;
    released_ = true;
    if (make_) real_ = make_();
    make_ = nullptr;
    std::vector<Call> calls;
    calls.swap(held_);
    if (!real_) return;
    for (const Call& call : calls) call(*real_);
}

int HeldMusicDevice::Hold(Call call) {
    held_.push_back(std::move(call));
    return 0;
}

int HeldMusicDevice::Open(const std::string& alias, const std::string& path) {
    if (released_) return real_ ? real_->Open(alias, path) : 0;
    return Hold([alias, path](IMusicDevice& d) { d.Open(alias, path); });
}

int HeldMusicDevice::Play(const std::string& alias, long from, long to) {
    if (released_) return real_ ? real_->Play(alias, from, to) : 0;
    return Hold([alias, from, to](IMusicDevice& d) { d.Play(alias, from, to); });
}

int HeldMusicDevice::Stop(const std::string& alias) {
    if (released_) return real_ ? real_->Stop(alias) : 0;
    return Hold([alias](IMusicDevice& d) { d.Stop(alias); });
}

int HeldMusicDevice::Close(const std::string& alias) {
    if (released_) return real_ ? real_->Close(alias) : 0;
    return Hold([alias](IMusicDevice& d) { d.Close(alias); });
}

long HeldMusicDevice::Length(const std::string& alias) { return real_ ? real_->Length(alias) : -1; }

long HeldMusicDevice::Position(const std::string& alias) { return real_ ? real_->Position(alias) : -1; }

int HeldMusicDevice::SetVolume(const std::string& alias, const std::string& side, int volume) {
    if (released_) return real_ ? real_->SetVolume(alias, side, volume) : 0;
    return Hold([alias, side, volume](IMusicDevice& d) { d.SetVolume(alias, side, volume); });
}

std::string HeldMusicDevice::ErrorText(int code) { return real_ ? real_->ErrorText(code) : std::string(); }

void HeldSoundEffects::Release() {
    if (released_) return;
    released_ = true;
    if (make_) real_ = make_();
    make_ = nullptr;
    if (real_ && pending_) real_->Play(pending_);
    pending_ = 0;
}

void HeldSoundEffects::Play(int effect) {
    if (!released_)
        pending_ = effect;
    else if (real_)
        real_->Play(effect);
}
