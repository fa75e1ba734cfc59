#include "SplitterTest.h"
#include "kit/PropertyStore.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class SplitterStore : public SplitterTest {
protected:
    static QStringList Names(const PropertyStore& store) {
        QStringList names;
        for (const PropertyStore::Entry& entry : store.Entries) names += entry.Name;
        return names;
    }
    // The main window's splitter as its design has it.
    static PropertyStore Design() {
        return {{{u"SplitterColor"_s, 0x8000000FU},
                 {u"SplitterPos"_s, 5610},
                 {u"Child1"_s, u"Before"_s},
                 {u"Child2"_s, u"After"_s},
                 {u"MaxSize"_s, 6500},
                 {u"MinSize1"_s, 2000},
                 {u"MinSize2"_s, 6500}}};
    }
};

TEST_F(SplitterStore, OfASplitterWithDefaultsOnlyThePositionIsStored) {
    const Splitter fresh(&Window);
    PropertyStore store;
    fresh.WriteProperties(store);
    EXPECT_EQ(Names(store), QStringList{u"SplitterPos"_s});
}

TEST_F(SplitterStore, WhatDiffersIsStoredInOrderAndInItsType) {
    Control.SetLiveUpdate(false);
    Control.SetAllowResize(false);
    Control.SetMinSizeAux(7);
    Control.SetMinSize2(6);
    Control.SetMinSize1(5);
    Control.SetMaxSizeAppliesTo(1);
    Control.SetMaxSize(4000);
    Control.SetMaintain(0);
    Control.SetSplitterSize(90);
    Control.SetOrientation(1);
    Control.SetSplitterColor(0x8000000F);
    Control.SetSplitterBorder(0);
    Control.SetSplitterAppearance(0);
    Control.SetBorderStyle(1);
    Control.SetSplitterPos(1234);
    PropertyStore store;
    Control.WriteProperties(store);
    EXPECT_EQ(Names(store), (QStringList{u"BorderStyle"_s, u"SplitterAppearance"_s, u"SplitterBorder"_s,
                                         u"SplitterColor"_s, u"Orientation"_s, u"SplitterSize"_s,
                                         u"Maintain"_s, u"SplitterPos"_s, u"RatioFromTop"_s, u"Child1"_s,
                                         u"Child2"_s, u"MaxSize"_s, u"MaxSizeAppliesTo"_s, u"MinSize1"_s,
                                         u"MinSize2"_s, u"MinSizeAux"_s, u"AllowResize"_s, u"LiveUpdate"_s}));
    const auto type = [&](const QString& name) { return store.Read(name, {}).typeId(); };
    EXPECT_EQ(type(u"SplitterSize"_s), QMetaType::Short);
    EXPECT_EQ(type(u"SplitterPos"_s), QMetaType::Short);
    EXPECT_EQ(type(u"MaxSize"_s), QMetaType::Short);
    EXPECT_EQ(type(u"MinSize1"_s), QMetaType::Int);
    EXPECT_EQ(type(u"Orientation"_s), QMetaType::Int);
    EXPECT_EQ(type(u"RatioFromTop"_s), QMetaType::Float);
    EXPECT_EQ(type(u"AllowResize"_s), QMetaType::Bool);
}

TEST_F(SplitterStore, WhatWasWrittenIsReadBack) {
    Control.SetRatioFromTop(0.3F);
    Control.SetMinSize1(1000);
    Control.SetMaxSize(5000);
    Control.SetSplitterColor(0x123456);
    PropertyStore store;
    Control.WriteProperties(store);
    Splitter other(&Window);
    other.resize(Control.size());
    other.show();
    other.ReadProperties(store);
    EXPECT_EQ(other.RatioFromTop(), 0.3F);
    EXPECT_EQ(other.SplitterPos(), Control.SplitterPos());
    EXPECT_EQ(other.CurrSplitterPos(), Control.CurrSplitterPos());
    EXPECT_EQ(other.MinSize1(), 1000);
    EXPECT_EQ(other.MaxSize(), 5000);
    EXPECT_EQ(other.SplitterColor(), 0x123456U);
    EXPECT_EQ(other.Child1(), u"Before"_s);
}

TEST_F(SplitterStore, TheRatioIsReadLastAndStandsEvenWhereItIsTheDefault) {
    Control.ReadProperties(Design());
    EXPECT_EQ(Control.RatioFromTop(), 0.5F);
    EXPECT_EQ(Control.SplitterPos(), Length / 2 - 37);
    // The bar itself is where the limits leave it: 9000 - 6500 - 75.
    EXPECT_EQ(Control.CurrSplitterPos(), 2425);
}

TEST_F(SplitterStore, TheDesignHoldsBothChildrenAtTheirLeastSizes) {
    Control.ReadProperties(Design());
    ResizeTo(500, 400);  // less than both least sizes together
    EXPECT_EQ(Control.CurrSplitterPos(), 2000);
    EXPECT_EQ(First.geometry().width(), ToPixels(2000));
    EXPECT_EQ(Second.geometry().right() + 1, ToPixels(2075 + 6500));
    EXPECT_GT(Second.geometry().right(), Control.width());
}

TEST_F(SplitterStore, TheChildrenAreLaidOutOnceAndAtTheEnd) {
    Control.ReadProperties(Design());
    EXPECT_EQ(Layouts, 1);
}

TEST_F(SplitterStore, AnEmptyStoreGivesTheDefaults) {
    Control.SetMinSize1(1000);
    Control.SetLiveUpdate(false);
    Control.ReadProperties({});
    EXPECT_EQ(Control.MinSize1(), 255);
    EXPECT_TRUE(Control.LiveUpdate());
    EXPECT_EQ(Control.RatioFromTop(), 0.5F);
    EXPECT_EQ(Control.Child1(), QString());
}

TEST_F(SplitterStore, AStoredNumberOutOfRangeSaturates) {
    Control.ReadProperties({{{u"MinSize1"_s, 1'000'000}, {u"SplitterSize"_s, -5}}});
    EXPECT_EQ(Control.MinSize1(), 32'767);
    EXPECT_EQ(Control.SplitterSize(), 0);
}

}  // namespace
}  // namespace Sonmira
