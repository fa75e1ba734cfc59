// The check that compares the parts of a tag before and after a save.
#include "codecs/tagging/TagValues.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

const RawField Title{"TIT2", "TITLE", "old"};
const RawField Artist{"TPE1", "ARTIST", "artist"};
const RawField Picture{"APIC", {}, "picture"};
const TagEdits OfTitle{{"TITLE", false}};

TEST(KeepingFields, WhatWasEditedMayChangeAndNewPartsMayCome) {
    const RawFields before{Title, Artist, Picture};
    const RawFields after{Picture, {"TIT2", "TITLE", "new"}, Artist, {"TYER", "DATE", "2004"}};
    EXPECT_TRUE(KeepsFields(before, after, OfTitle));
    EXPECT_TRUE(KeepsFields(before, {Picture, Artist}, {{"TITLE", true}}));
}

TEST(KeepingFields, AnyOtherPartHasToStayWithItsBytes) {
    const RawFields before{Title, Artist, Picture};
    const RawField other{"APIC", {}, "picturf"};
    EXPECT_FALSE(KeepsFields(before, {Title, Artist}, OfTitle)) << "one that has no name";
    EXPECT_FALSE(KeepsFields(before, {Title, Artist, other}, OfTitle)) << "of as many bytes";
    EXPECT_FALSE(KeepsFields(before, {Title, Picture}, OfTitle)) << "another field";
    EXPECT_FALSE(KeepsFields(before, {Title, Picture, {"TPE1", "ARTIST", "Artist"}}, OfTitle));
}

TEST(KeepingFields, TwoOfTheSameAreTwo) {
    EXPECT_FALSE(KeepsFields({Picture, Picture}, {Picture}, {}));
    EXPECT_TRUE(KeepsFields({Picture, Picture}, {Picture, Picture}, {}));
}

TEST(KeepingFields, OfSeveralPartsOfAFieldAnEditChangesOne) {
    const RawField second{"TIT2", "TITLE", "second"};
    const RawField fresh{"TIT2", "TITLE", "new"};
    EXPECT_TRUE(KeepsFields({Title, second}, {fresh, second}, OfTitle));
    EXPECT_FALSE(KeepsFields({Title, second}, {fresh}, OfTitle));
    EXPECT_TRUE(KeepsFields({Title, second}, {}, {{"TITLE", true}})) << "a field that goes goes altogether";
}

}  // namespace
}  // namespace Sonmira
