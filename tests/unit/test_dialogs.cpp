// The common dialogs: properties and their defaults, the filter string, the
// failure codes and their report, the name buffer, multiple selection, the
// memory of the last folders and the profile file that keeps it.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "forms/clsDIALOGS.h"
#include "sim/World.h"

using namespace std::string_literals;

namespace {

struct DialogsTest : ::testing::Test {
    World w;
    std::string ini = w.Path("tessuma.ini");
    std::unique_ptr<clsDIALOGS> d;

    void SetUp() override { Make(); }
    void Make() {
        d.reset();
        d = std::make_unique<clsDIALOGS>(&w.dialogs, &w.sysbox, w.files, w.sandbox, ini);
    }
    const FileDialogRequest& LastRequest() const { return w.dialogs.requests.back(); }
};

TEST_F(DialogsTest, FilterBarsBecomeNulsEndedByTwo) {
    d->strFilter("Tessuma Saved Games (*.tsm)|*.tsm");
    EXPECT_EQ(d->strFilterRaw(), "Tessuma Saved Games (*.tsm)\0*.tsm\0\0"s);
    // Already ended by two NULs: taken as it stands.
    d->strFilter("A\0*.a\0\0"s);
    EXPECT_EQ(d->strFilterRaw(), "A\0*.a\0\0"s);
    d->strFilter("A|*.a||");
    EXPECT_EQ(d->strFilterRaw(), "A\0*.a\0\0"s);
    // One NUL at the end is not enough: two more follow.
    d->strFilter("A|*.a|");
    EXPECT_EQ(d->strFilterRaw(), "A\0*.a\0\0\0"s);
    d->strFilter("");
    EXPECT_EQ(d->strFilterRaw(), "\0\0"s);

    // The dialog gets the pairs up to the first empty part; a lone
    // description without a pattern is dropped.
    d->strFilter("Games (*.tsm)|*.tsm|Text|*.txt;*.text");
    d->strGetOpenFileName("");
    ASSERT_EQ(LastRequest().filters.size(), 2u);
    EXPECT_EQ(LastRequest().filters[1], std::make_pair("Text"s, "*.txt;*.text"s));
    EXPECT_EQ(clsDIALOGS::FilterPairs("A\0a\0\0B\0b\0\0"s).size(), 1u);
    EXPECT_EQ(clsDIALOGS::FilterPairs("A\0a\0B\0\0"s).size(), 1u);
}

}  // namespace
