#pragma once
// A game started in the simulated world, as most form tests need it: the
// program's load has run and the keys it queued for itself are delivered.

#include <gtest/gtest.h>

#include "forms/frmTessuma.h"
#include "forms/modMain.h"
#include "sim/World.h"

struct StartedGame : ::testing::Test {
    World w;
    Program p{w.MakePorts()};
    frmTessuma* f = nullptr;

    void SetUp() override {
        p.Main();
        f = p.MainForm.get();
        f->DeliverQueuedKeys();
    }

    TextField& cell(int i) { return f->txtCell[static_cast<std::size_t>(i)]; }

    // Sounds on, and nothing heard yet.
    void Listen() {
        f->chkSounds.Value = 1;
        w.sounds.played.clear();
    }
};
