// The audio devices that wait for the window: what the game asks before the
// real devices exist reaches them afterwards, in order, and nothing is lost
// or doubled once they are there.

#include "forms/HeldAudio.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Recorder : IMusicDevice {
    std::vector<std::string>* log;
    explicit Recorder(std::vector<std::string>* l) : log(l) {}
    int Open(const std::string& a, const std::string& p) override { return Note("open " + a + " " + p); }
    int Play(const std::string& a, long f, long t) override {
        return Note("play " + a + " " + std::to_string(f) + " " + std::to_string(t));
    }
    int Stop(const std::string& a) override { return Note("stop " + a); }
    int Close(const std::string& a) override { return Note("close " + a); }
    long Length(const std::string&) override { return 90000; }
    long Position(const std::string&) override { return 1234; }
    int SetVolume(const std::string& a, const std::string& s, int v) override {
        return Note("volume " + a + " " + s + " " + std::to_string(v));
    }
    std::string ErrorText(int code) override { return "text " + std::to_string(code); }
    int Note(const std::string& what) {
        log->push_back(what);
        return 7;  // a result only the real device gives
    }
};

struct Effects : ISoundEffects {
    std::vector<int>* played;
    explicit Effects(std::vector<int>* p) : played(p) {}
    void Play(int effect) override { played->push_back(effect); }
};

}  // namespace

TEST(HeldMusicDevice, CallsWaitAndAreReplayedInOrderThenPassStraightThrough) {
    std::vector<std::string> log;
    int made = 0;
    HeldMusicDevice music([&] {
        ++made;
        return std::make_unique<Recorder>(&log);
    });

    // The start-up of the game: stop and close nothing, open, volume, play.
    EXPECT_EQ(music.Stop("MusicFile"), 0);
    EXPECT_EQ(music.Close("MusicFile"), 0);
    EXPECT_EQ(music.Open("MusicFile", "/songs/tess0.mp3"), 0);
    EXPECT_EQ(music.SetVolume("MusicFile", "all", 750), 0);
    EXPECT_EQ(music.Play("MusicFile", 0, -1), 0);
    // A song still loading: length and position not known yet.
    EXPECT_EQ(music.Length("MusicFile"), -1);
    EXPECT_EQ(music.Position("MusicFile"), -1);
    EXPECT_EQ(music.ErrorText(263), "");
    EXPECT_TRUE(music.Held());
    EXPECT_EQ(made, 0);
    EXPECT_TRUE(log.empty());

    music.Release();
    EXPECT_EQ(made, 1);
    EXPECT_FALSE(music.Held());
    const std::vector<std::string> replayed = {"stop MusicFile", "close MusicFile", "open MusicFile /songs/tess0.mp3",
                                               "volume MusicFile all 750", "play MusicFile 0 -1"};
    EXPECT_EQ(log, replayed);

    music.Release();  // a second release makes nothing and replays nothing
    EXPECT_EQ(made, 1);
    EXPECT_EQ(log.size(), replayed.size());

    EXPECT_EQ(music.Play("MusicFile", 500, 900), 7);
    EXPECT_EQ(music.Length("MusicFile"), 90000);
    EXPECT_EQ(music.Position("MusicFile"), 1234);
    EXPECT_EQ(music.ErrorText(282), "text 282");
    EXPECT_EQ(log.back(), "play MusicFile 500 900");
}

TEST(HeldSoundEffects, TheLastEffectBeforeTheWindowPlaysOnReleaseLaterOnesAtOnce) {
    std::vector<int> played;
    HeldSoundEffects sounds([&] { return std::make_unique<Effects>(&played); });
    // The start sound, then the deal of a game named on the command line:
    // the second would have replaced the first anyway.
    sounds.Play(101);
    sounds.Play(102);
    EXPECT_TRUE(sounds.Held());
    EXPECT_TRUE(played.empty());
    sounds.Release();
    EXPECT_EQ(played, (std::vector<int>{102}));
    sounds.Play(106);
    sounds.Play(103);
    EXPECT_EQ(played, (std::vector<int>{102, 106, 103}));
}
