// The game's message box: its three faces, the answers by label, key and
// closing, and how the main form opens it.

#include <gtest/gtest.h>

#include <string>

#include "StartedGame.h"
#include "forms/frmMessage.h"
#include "forms/frmTessuma.h"
#include "forms/modGetSet.h"
#include "forms/modMain.h"
#include "sim/World.h"

namespace {

enum class Face { Notice, YesNo, Name };

// A box set up as the main form sets it up for one face.
struct Box {
    std::string result = "stale";
    frmMessage form{result};
    explicit Box(Face face, const std::string& name = "") {
        form.Form_Load();
        const bool yesNo = face == Face::YesNo;
        form.lblYes.Visible = yesNo;
        form.lblNo.Visible = yesNo;
        form.lblOkay.Visible = !yesNo;
        form.txtName.Visible = face == Face::Name;
        form.txtName.Text = name;
    }
};

// What a released key answers: the answer, or nothing when the box stays.
std::string Expected(Face face, int key) {
    constexpr int kEnter = 13, kSpace = 32, kY = 89, kN = 78, kO = 79;
    switch (face) {
        case Face::Name: return key == kEnter ? "typed" : "";
        case Face::Notice: return key == kEnter || key == kSpace || key == kO ? "okay" : "";
        case Face::YesNo:
            if (key == kEnter || key == kSpace || key == kY) return "yes";
            return key == kN ? "no" : "";
    }
    return "";
}

TEST(MessageBox, KeysAnswerByFaceForEveryKeyCode) {
    for (Face face : {Face::Notice, Face::YesNo, Face::Name}) {
        for (int key = 0; key <= 255; ++key) {
            Box box(face, "typed");
            box.form.Form_KeyUp(key, 0);
            const std::string want = Expected(face, key);
            SCOPED_TRACE("face " + std::to_string(static_cast<int>(face)) + " key " + std::to_string(key));
            EXPECT_EQ(box.form.Unloaded, !want.empty());
            if (!want.empty())
                EXPECT_EQ(box.result, want);
            else
                EXPECT_EQ(box.result, "");
            // Shift makes no difference.
            Box shifted(face, "typed");
            shifted.form.Form_KeyUp(key, 1);
            EXPECT_EQ(shifted.form.Unloaded, !want.empty());
        }
    }
}

}  // namespace
