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

TEST_F(CommaLocale, NumbersKeepTheirPoint) {
    EXPECT_DOUBLE_EQ(vb::Val("37.5"), 37.5);
    EXPECT_DOUBLE_EQ(vb::Val(" -3.25xyz"), -3.25);
    EXPECT_EQ(vb::NumText(2887.5), "2887.5");
    EXPECT_EQ(vb::NumText(0.1), "0.1");
    EXPECT_EQ(vb::NumText(2880), "2880");
    std::int32_t v = 0;
    ASSERT_TRUE(vb::TryCLng("2887.5", v));
    EXPECT_EQ(v, 2888);
    // A written number reads back as itself.
    for (double x : {1.0 / 3, 4567.125, -0.0625}) EXPECT_EQ(vb::Val(vb::NumText(x)), x) << vb::NumText(x);
}

}  // namespace

// Digits too many for a double: a strict conversion refuses them, Val gives 0.
TEST(Numbers, RunsOfDigitsPastADouble) {
    const std::string huge(400, '9');
    std::int32_t v = 7;
    EXPECT_FALSE(vb::TryCLng(huge, v));
    EXPECT_EQ(vb::Val(huge), 0.0);
    EXPECT_EQ(vb::Val("0." + std::string(400, '0') + "1"), 0.0);
}

#include "core/WindowPlace.h"

// A stored window place is kept while 64 columns of its top 16 rows are on
// one screen, whichever screen that is.
TEST(WindowPlace, TheTopEdgeMustShowOnAScreen) {
    using place::GripOnScreen;
    const std::vector<place::PixelRect> one = {{0, 0, 1024, 768}};
    EXPECT_TRUE(GripOnScreen(192, 144, 640, one));
    EXPECT_TRUE(GripOnScreen(1024 - 64, 768 - 16, 640, one));
    EXPECT_FALSE(GripOnScreen(1024 - 63, 100, 640, one));
    EXPECT_FALSE(GripOnScreen(100, 768 - 15, 640, one));
    EXPECT_TRUE(GripOnScreen(-576, 0, 640, one));
    EXPECT_FALSE(GripOnScreen(-577, 0, 640, one));
    EXPECT_FALSE(GripOnScreen(-9000, -9000, 640, one));
    EXPECT_FALSE(GripOnScreen(2147483000, 2147483000, 640, one));
    // A second monitor to the left: its places count, the gap between does not.
    const std::vector<place::PixelRect> two = {{0, 0, 1024, 768}, {-1280, 0, 1280, 1024}};
    EXPECT_TRUE(GripOnScreen(-1000, 900, 640, two));
    EXPECT_FALSE(GripOnScreen(100, 900, 640, two));
}
