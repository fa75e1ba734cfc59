#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/Run.h"
#include "engine/TagTransfer.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// What the tag object is given for an output. It tidies much of what it gets, so that the file cannot tell.
class TagWriting : public ::testing::Test {
protected:
    TagValues Given(qint16 genreIndex, const QString& genreText) {
        Run.Tag().GenreIndex = genreIndex;
        Run.Tag().GenreText = genreText;
        Codecs.TagsSaved.clear();
        WriteOutputTag(Run, Host, Codecs.Parts(), Folder.MakeFile("song.mp3"));
        return Codecs.TagsSaved.empty() ? TagValues() : Codecs.TagsSaved.front();
    }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
};

TEST_F(TagWriting, TakesTheBlanksFromTheTextOfTheGenre) {
    EXPECT_EQ(Given(12, u"  Sea Shanty "_s).GenreString, u"Sea Shanty"_s);
    EXPECT_EQ(Given(12, u"   "_s).GenreString, QString());
}

TEST_F(TagWriting, GivesAFreeTextThatNamesAGenreItsNumber) {
    for (const int index : {0, 8, 17, 147}) {
        EXPECT_EQ(Given(12, AudioInformation::GenreName(index)).Genre, index);
    }
    EXPECT_EQ(Given(12, u"Sea Shanty"_s).Genre, 12);
}

TEST_F(TagWriting, ComparesTheFreeTextExactly) {
    EXPECT_EQ(Given(12, u"jazz"_s).Genre, 12);
    EXPECT_EQ(Given(12, u" Jazz "_s).Genre, 12);
    EXPECT_EQ(Given(12, QString()).Genre, 12);
}

TEST_F(TagWriting, LeavesTheNumberOfAnyOtherGenre) {
    EXPECT_EQ(Given(9, u"Jazz"_s).Genre, 9);
    EXPECT_EQ(Given(0, u"Jazz"_s).Genre, 0);
}

}  // namespace
}  // namespace Sonmira
