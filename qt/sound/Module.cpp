// The sound module's table of entry points.
#include "qt/ports/Extras.h"
#include "qt/sound/QtMusicDevice.h"
#include "qt/sound/QtSoundEffects.h"

extern "C" __attribute__((visibility("default"))) const SoundApi* tessuma_sound_api() {
    static const SoundApi api{
        [] { return std::unique_ptr<ISoundEffects>(std::make_unique<QtSoundEffects>()); },
        [] { return std::unique_ptr<IMusicDevice>(std::make_unique<QtMusicDevice>()); },
    };
    return &api;
}
