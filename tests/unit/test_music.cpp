// The music commands over a device that answers as told, and the songs and
// the slider of the main form over the simulated device.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "audio/modMusic.h"
#include "fakes/World.h"
#include "forms/frmTessuma.h"
#include "forms/modMain.h"

namespace {

// Records every call and answers with prepared codes and numbers.
class ScriptedDevice : public IMusicDevice {
public:
    int code = 0;
    long length = 5000, position = 0;
    int lengthCalls = 0;
    std::vector<std::string> calls;

    int Open(const std::string& alias, const std::string& path) override {
        calls.push_back("open " + alias + " " + path);
        return code;
    }
    int Play(const std::string& alias, long from, long to) override {
        calls.push_back("play " + alias + " " + std::to_string(from) + " " + std::to_string(to));
        return code;
    }
    int Stop(const std::string& alias) override {
        calls.push_back("stop " + alias);
        return code;
    }
    int Close(const std::string& alias) override {
        calls.push_back("close " + alias);
        return code;
    }
    long Length(const std::string&) override {
        ++lengthCalls;
        return length;
    }
    long Position(const std::string&) override { return position; }
    int SetVolume(const std::string& alias, const std::string& side, int volume) override {
        calls.push_back("volume " + alias + " " + side + " " + std::to_string(volume));
        return code;
    }
    std::string ErrorText(int c) override { return "error " + std::to_string(c); }
};

TEST(modMusic, ResultsAreSuccessOrTheDevicesWords) {
    ScriptedDevice d;
    EXPECT_EQ(modMusic::MusicOpen(d, "MusicFile", "/m/tess0.mp3", "MPEGVideo"), "Success");
    EXPECT_EQ(modMusic::MusicStop(d, "MusicFile"), "Success");
    d.code = 263;
    EXPECT_EQ(modMusic::MusicClose(d, "MusicFile"), "error 263");
    EXPECT_EQ(modMusic::MusicPlay(d, "MusicFile", "1", "2"), "error 263");
    EXPECT_EQ(modMusic::MusicSetVolume(d, "MusicFile", "all", 50), "error 263");
    EXPECT_EQ(d.calls, (std::vector<std::string>{"open MusicFile /m/tess0.mp3", "stop MusicFile", "close MusicFile",
                                                 "play MusicFile 1 2", "volume MusicFile all 500"}));
}

TEST(modMusic, PlayFillsEmptyEndsFromTheStartAndTheLength) {
    ScriptedDevice d;
    d.length = 4321;
    modMusic::MusicPlay(d, "MusicFile", "", "");
    modMusic::MusicPlay(d, "MusicFile", "100", "");
    modMusic::MusicPlay(d, "MusicFile", "", "200");
    // No length to be had: the end is -1, and the device refuses it itself.
    d.length = -1;
    modMusic::MusicPlay(d, "MusicFile", "", "");
    EXPECT_EQ(d.calls, (std::vector<std::string>{"play MusicFile 0 4321", "play MusicFile 100 4321",
                                                 "play MusicFile 0 200", "play MusicFile 0 -1"}));
}

TEST(modMusic, VolumeOutsideItsRangeSendsNothing) {
    ScriptedDevice d;
    EXPECT_EQ(modMusic::MusicSetVolume(d, "MusicFile", "all", 101), "out of volume");
    EXPECT_EQ(modMusic::MusicSetVolume(d, "MusicFile", "all", -1), "out of volume");
    EXPECT_TRUE(d.calls.empty());
    EXPECT_EQ(modMusic::MusicSetVolume(d, "MusicFile", "all", 100), "Success");
    EXPECT_EQ(modMusic::MusicSetVolume(d, "MusicFile", "all", 0), "Success");
    EXPECT_EQ(d.calls, (std::vector<std::string>{"volume MusicFile all 1000", "volume MusicFile all 0"}));
}

TEST(modMusic, ASideInAnyCaseGoesAsSpelledAnyOtherMeansBoth) {
    ScriptedDevice d;
    for (const char* side : {"left", "LEFT", "Right", "all", "centre", ""})
        modMusic::MusicSetVolume(d, "MusicFile", side, 7);
    EXPECT_EQ(d.calls, (std::vector<std::string>{"volume MusicFile left 70", "volume MusicFile LEFT 70",
                                                 "volume MusicFile Right 70", "volume MusicFile all 70",
                                                 "volume MusicFile all 70", "volume MusicFile all 70"}));
}

TEST(modMusic, LengthAndPositionAreMinusOneOnFailure) {
    ScriptedDevice d;
    d.length = -7;
    d.position = -2;
    EXPECT_EQ(modMusic::MusicLength(d, "MusicFile"), -1);
    EXPECT_EQ(modMusic::MusicPosition(d, "MusicFile"), -1);
    d.length = 180000;
    d.position = 90000;
    EXPECT_EQ(modMusic::MusicLength(d, "MusicFile"), 180000);
    EXPECT_EQ(modMusic::MusicPosition(d, "MusicFile"), 90000);
}

TEST(modMusic, AtEndFetchesALengthOfZeroAndHandsItBack) {
    ScriptedDevice d;
    d.length = 1000;
    std::int32_t length = 0;
    d.position = 999;
    EXPECT_FALSE(modMusic::MusicAtEnd(d, "MusicFile", length));
    EXPECT_EQ(length, 1000);
    EXPECT_EQ(d.lengthCalls, 1);
    // A length given is used as it stands.
    d.position = 1000;
    EXPECT_TRUE(modMusic::MusicAtEnd(d, "MusicFile", length));
    EXPECT_EQ(d.lengthCalls, 1);
    d.position = 1200;
    EXPECT_TRUE(modMusic::MusicAtEnd(d, "MusicFile", length));
    // Either number unknown: never the end.
    d.position = -1;
    EXPECT_FALSE(modMusic::MusicAtEnd(d, "MusicFile", length));
    d.position = 5;
    d.length = -1;
    std::int32_t none = 0;
    EXPECT_FALSE(modMusic::MusicAtEnd(d, "MusicFile", none));
    EXPECT_EQ(none, -1);
}

// ---------------------------------------------------------------------------

struct MusicFormTest : ::testing::Test {
    World w;
    std::unique_ptr<Program> p;
    frmTessuma* f = nullptr;

    void Song(int n) {
        w.files.Put("Music/tess" + std::to_string(n) + ".mp3", "song");
    }
    void Start() {
        p = std::make_unique<Program>(w.MakePorts());
        p->Main();
        f = p->MainForm.get();
    }
};

TEST_F(MusicFormTest, ASongStartsWithTheSlidersVolumeBeforeItPlays) {
    Song(0);
    w.settings.Save("Tessuma", "Options", "Volume", "50");
    Start();
    const std::string path = w.sandbox + "/Music/tess0.mp3";
    EXPECT_EQ(w.music.commands,
              (std::vector<std::string>{"stop MusicFile", "close MusicFile", "open " + path + " alias MusicFile",
                                        "setaudio MusicFile all volume to 660", "play MusicFile from 0 to 180000"}));
    EXPECT_EQ(f->SongPath, path);
}

// The keys from places off the grid that a drag leaves behind. Both roundings
// take halves to even, so from 17.5 the steps land off the grid.
TEST_F(MusicFormTest, TheKeysFromAnyPlaceOfTheThumb) {
    Start();
    const struct {
        float from, minus, plus;
    } keys[] = {{2, 0, 5}, {37.4f, 30, 40}, {37.6f, 30, 40}, {12.5f, 5, 15}, {17.5f, 9, 19}, {40, 35, 45}};
    for (const auto& k : keys) {
        f->imgVolume.Left = k.from;
        f->cmdHiddenMinus_Click();
        EXPECT_FLOAT_EQ(f->imgVolume.Left, k.minus) << k.from;
        f->imgVolume.Left = k.from;
        f->cmdHiddenPlus_Click();
        EXPECT_FLOAT_EQ(f->imgVolume.Left, k.plus) << k.from;
    }
}

TEST_F(MusicFormTest, TheThumbKeepsItsGrabPointAndItsEnds) {
    Start();
    f->imgVolume.Left = 20;
    f->imgVolume_MouseMove(0, 0, 52.5f, 0);  // 3.5 pixels into the thumb
    EXPECT_FLOAT_EQ(f->LastX, 3.5f);
    f->imgVolume_MouseMove(1, 0, 150, 0);    // 10 pixels: 6.5 further
    EXPECT_FLOAT_EQ(f->imgVolume.Left, 26.5f);
    EXPECT_EQ(w.music.lastVolume, 350);      // 35.245 rounds to 35
    // A second button with the left one is no drag.
    f->imgVolume_MouseMove(3, 0, 600, 0);
    EXPECT_FLOAT_EQ(f->imgVolume.Left, 26.5f);
    EXPECT_FLOAT_EQ(f->LastX, 40.0f);
    f->imgVolume.Left = 74.9f;
    f->imgVolume_MouseMove(0, 0, 0, 0);
    EXPECT_FLOAT_EQ(f->imgVolume.Left, 74.9f);
    f->imgVolume.Left = 75.2f;
    f->imgVolume_MouseMove(0, 0, 0, 0);
    EXPECT_FLOAT_EQ(f->imgVolume.Left, 75.0f);
}

TEST_F(MusicFormTest, AMissingSongEndsTheRotationUntilTheNextStart) {
    Song(0);
    Song(2);
    Start();
    w.music.SongEnd();
    f->tmrSongCheck_Timer();
    EXPECT_EQ(w.music.SongPlaying(), "");
    Song(1);
    // The close stops and closes through the music commands; every start
    // begins with the first song.
    w.music.commands.clear();
    f->cmdClose_Click();
    EXPECT_EQ(w.music.commands, (std::vector<std::string>{"stop MusicFile", "close MusicFile"}));
    Start();
    EXPECT_EQ(f->SongIndex, 0);
    EXPECT_EQ(w.music.SongPlaying(), "tess0.mp3");
}

TEST_F(MusicFormTest, NoDeviceAtAllIsSilence) {
    Song(0);
    Ports ports = w.MakePorts();
    ports.music = nullptr;
    Program q(ports);
    q.Main();
    frmTessuma& g = *q.MainForm;
    EXPECT_EQ(g.SongIndex, 0);
    g.tmrSongCheck_Timer();
    g.cmdHiddenPlus_Click();
    g.imgVolume_MouseMove(1, 0, 15, 0);
    g.Form_Unload();
    EXPECT_TRUE(w.music.commands.empty());
}

}  // namespace
