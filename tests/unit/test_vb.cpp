// Numbers read and written by the game are the same in every locale.

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "core/vb.h"

namespace {

// Runs the checks under a locale with a decimal comma, as a German desktop
// has after the application object set the locale from the environment.
class CommaLocale : public ::testing::Test {
protected:
    void SetUp() override {
        const char* old = std::setlocale(LC_ALL, nullptr);
        saved_ = old ? old : "C";
        if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) GTEST_SKIP() << "no de_DE.UTF-8 locale on this machine";
    }
    void TearDown() override { std::setlocale(LC_ALL, saved_.c_str()); }

private:
    std::string saved_;
};

}  // namespace

#include "core/WindowPlace.h"

// A stored window place is kept while 8 of its top 16 rows are on one screen
// over 64 columns, whichever screen that is.
TEST(WindowPlace, TheTopEdgeMustShowOnAScreen) {
    using place::GripOnScreen;
    const std::vector<place::PixelRect> one = {{0, 0, 1024, 768}};
    EXPECT_TRUE(GripOnScreen(192, 144, 640, one));
    EXPECT_TRUE(GripOnScreen(1024 - 64, 768 - 8, 640, one));
    EXPECT_FALSE(GripOnScreen(1024 - 63, 100, 640, one));
    EXPECT_FALSE(GripOnScreen(100, 768 - 7, 640, one));
    // Partly above the screen: kept while half the grip shows.
    EXPECT_TRUE(GripOnScreen(82, -3, 640, one));
    EXPECT_TRUE(GripOnScreen(82, -8, 640, one));
    EXPECT_FALSE(GripOnScreen(82, -9, 640, one));
    EXPECT_TRUE(GripOnScreen(-576, 0, 640, one));
    EXPECT_FALSE(GripOnScreen(-577, 0, 640, one));
    EXPECT_FALSE(GripOnScreen(-9000, -9000, 640, one));
    EXPECT_FALSE(GripOnScreen(2147483000, 2147483000, 640, one));
    // A second monitor to the left: its places count, the gap between does not.
    const std::vector<place::PixelRect> two = {{0, 0, 1024, 768}, {-1280, 0, 1280, 1024}};
    EXPECT_TRUE(GripOnScreen(-1000, 900, 640, two));
    EXPECT_FALSE(GripOnScreen(100, 900, 640, two));
}
