#include "platform/Paths.h"
#include "platform/ProfileFile.h"
#include "support/TestFolder.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class ProfileFile : public ::testing::Test {
protected:
    QString Read(const QByteArray& content, QStringView section, QStringView key) const {
        return ReadProfileValue(Folder.MakeFile("a.ini", content), section, key);
    }
    // What the file holds after "new" was written to section "S", key "k".
    QByteArray AfterWrite(const QByteArray& content, QStringView section = u"S", QStringView key = u"k",
                          QStringView value = u"new") const {
        EXPECT_TRUE(WriteProfileValue(Folder.MakeFile("a.ini", content), section, key, value));
        return ContentOf(Folder.Native("a.ini"));
    }

    TestFolder Folder;
};

TEST_F(ProfileFile, ReadsAValueOfItsSection) {
    const QByteArray content("[A]\nk=1\n[B]\nk=2\n");
    EXPECT_EQ(Read(content, u"B", u"k"), u"2"_s);
    EXPECT_EQ(Read(content, u"A", u"k"), u"1"_s);
}

TEST_F(ProfileFile, WhatIsMissingReadsAsTheEmptyText) {
    EXPECT_EQ(ReadProfileValue(Folder.Path("none.ini"), u"A", u"k"), QString());
    EXPECT_EQ(ReadProfileValue(QString(), u"A", u"k"), QString());
    EXPECT_EQ(Read("[A]\nk=1\n", u"B", u"k"), QString());
    EXPECT_EQ(Read("[A]\nk=1\n", u"A", u"l"), QString());
    EXPECT_EQ(Read("k=1\n[A]\n", u"A", u"k"), QString());
}

TEST_F(ProfileFile, NamesAreFoundInAnyCase) {
    EXPECT_EQ(Read("[LaunCH]\nVaLue=True\n", u"LAUNCH", u"value"), u"True"_s);
    EXPECT_EQ(Read("[\xC3\x89T\xC3\x89]\nk=1\n", u"\u00e9t\u00e9", u"K"), u"1"_s);
}

TEST_F(ProfileFile, TheFirstSectionAndTheFirstKeyWin) {
    const QByteArray content("[A]\nk=1\nk=2\n[A]\nk=3\nl=4\n");
    EXPECT_EQ(Read(content, u"A", u"k"), u"1"_s);
    EXPECT_EQ(Read(content, u"A", u"l"), QString());
}

TEST_F(ProfileFile, BlanksAroundNamesAndValueAreDropped) {
    EXPECT_EQ(Read(" [ A\t] \n \tk\t =\t 1 2 \t\n", u"A", u"k"), u"1 2"_s);
}

TEST_F(ProfileFile, AValueIsKeptRaw) {
    EXPECT_EQ(Read("[A]\nk=\"C:\\new\\t; a=b, #1\"\n", u"A", u"k"), u"\"C:\\new\\t; a=b, #1\""_s);
}

TEST_F(ProfileFile, ACommentIsNoKey) {
    EXPECT_EQ(Read("[A]\n;k=1\n ; k=2\nk=3\n", u"A", u"k"), u"3"_s);
    EXPECT_EQ(Read("[A]\n;k=1\n", u"A", u";k"), QString());
}

TEST_F(ProfileFile, ALineWithoutItsClosingBracketIsNoSection) {
    EXPECT_EQ(Read("[A]\n[B\nk=1\n", u"A", u"k"), u"1"_s);
}

TEST_F(ProfileFile, ReadsEveryKindOfLineEnd) {
    EXPECT_EQ(Read("[A]\r\nk=1\r\n[B]\r\nk=2", u"A", u"k"), u"1"_s);
    EXPECT_EQ(Read("[A]\r\nk=1\r\n[B]\r\nk=2", u"B", u"k"), u"2"_s);
    EXPECT_EQ(Read("[A]\nk=1\r", u"A", u"k"), u"1"_s);
}

TEST_F(ProfileFile, PassesAByteOrderMark) {
    EXPECT_EQ(Read("\xEF\xBB\xBF[A]\nk=1\n", u"A", u"k"), u"1"_s);
}

TEST_F(ProfileFile, KeepsBytesThatAreNoText) {
    const QString value = Read("[A]\nk=/M\xFCsik\n", u"A", u"k");
    EXPECT_EQ(ToNarrow(value), "/M\xFCsik");
    EXPECT_EQ(AfterWrite("", u"S", u"k", value), "[S]\nk=/M\xFCsik\n");
}

TEST_F(ProfileFile, AValueOf254CharactersIsWholeAndALongerOneIsCutThere) {
    // Letters of one, two and three bytes.
    for (const QChar letter : {u'x', u'\u00e4', u'\u65e5'}) {
        const QString whole(254, letter);
        EXPECT_EQ(Read("[A]\nk=" + whole.toUtf8() + "\n", u"A", u"k"), whole);
        EXPECT_EQ(Read("[A]\nk=" + whole.toUtf8() + "y\n", u"A", u"k"), whole);
    }
}

TEST_F(ProfileFile, TheCutIsNeverInsideAPair) {
    const QByteArray note("\xF0\x9F\x8E\xB5");  // one letter, two characters
    const QString parted = Read("[A]\nk=" + QByteArray(253, 'x') + note + "y\n", u"A", u"k");
    EXPECT_EQ(parted, QString(253, u'x'));
    const QString fits = Read("[A]\nk=" + QByteArray(252, 'x') + note + "y\n", u"A", u"k");
    EXPECT_EQ(fits, QString(252, u'x') + QString::fromUtf8(note));
    const QString notes = Read("[A]\nk=" + note.repeated(200) + "\n", u"A", u"k");
    EXPECT_EQ(notes, QString::fromUtf8(note.repeated(127)));
}

TEST_F(ProfileFile, TheCutTakesBytesThatAreNoTextAsTheyCome) {
    EXPECT_EQ(ToNarrow(Read("[A]\nk=" + QByteArray(300, '\x80') + "\n", u"A", u"k")),
              QByteArray(254, '\x80'));
    // Each of them is a character of its own, also behind a pair that fills the room.
    const QByteArray note("\xF0\x9F\x8E\xB5");
    const QByteArray whole = QByteArray(252, 'x') + note;
    EXPECT_EQ(ToNarrow(Read("[A]\nk=" + whole + "\x80\n", u"A", u"k")), whole);
}

TEST_F(ProfileFile, ANewFileHasOneSectionAndOneKey) {
    const QString file = Folder.Path("new.ini");
    EXPECT_TRUE(WriteProfileValue(file, u"LAUNCH", u"VALUE", u"True"));
    EXPECT_EQ(ContentOf(Folder.Native("new.ini")), "[LAUNCH]\nVALUE=True\n");
}

TEST_F(ProfileFile, AWriteReplacesTheFirstValueInItsPlace) {
    EXPECT_EQ(AfterWrite("[s]\na=1\nK = old\nk=2\n[S]\nk=3\n"), "[s]\na=1\nK =new\nk=2\n[S]\nk=3\n");
}

TEST_F(ProfileFile, AWriteKeepsWhateverElseIsThere) {
    EXPECT_EQ(AfterWrite("; head\n\nnonsense\n[A]\n  x = 1 \n[S]\n# y\nk=1\n\n[B]\nbin=\xFF\x01\n; tail"),
              "; head\n\nnonsense\n[A]\n  x = 1 \n[S]\n# y\nk=new\n\n[B]\nbin=\xFF\x01\n; tail");
}

TEST_F(ProfileFile, AWriteKeepsTheByteOrderMark) {
    EXPECT_EQ(AfterWrite("\xEF\xBB\xBF[S]\nk=1\n"), "\xEF\xBB\xBF[S]\nk=new\n");
}

TEST_F(ProfileFile, AWriteKeepsTheLineEndsOfTheFile) {
    EXPECT_EQ(AfterWrite("[S]\r\nk=1\r\n[B]\r\n"), "[S]\r\nk=new\r\n[B]\r\n");
    EXPECT_EQ(AfterWrite("[S]\r\na=1\r\n[B]\r\n"), "[S]\r\na=1\r\nk=new\r\n[B]\r\n");
    EXPECT_EQ(AfterWrite("[B]\r\n"), "[B]\r\n[S]\r\nk=new\r\n");
}

TEST_F(ProfileFile, ANewKeyGoesToTheEndOfItsSectionBeforeBlankLines) {
    EXPECT_EQ(AfterWrite("[S]\na=1\n\n \n[B]\nk=2\n"), "[S]\na=1\nk=new\n\n \n[B]\nk=2\n");
    EXPECT_EQ(AfterWrite("[S]\n[B]\n"), "[S]\nk=new\n[B]\n");
}

TEST_F(ProfileFile, ALastLineWithoutAnEndGetsOneBeforeAnotherFollows) {
    EXPECT_EQ(AfterWrite("[S]\na=1"), "[S]\na=1\nk=new\n");
    EXPECT_EQ(AfterWrite("[B]\r\na=1"), "[B]\r\na=1\r\n[S]\r\nk=new\r\n");
    EXPECT_EQ(AfterWrite("[S]\nk=1"), "[S]\nk=new");
}

TEST_F(ProfileFile, LineBreaksInAValueBecomeBlanks) {
    EXPECT_EQ(AfterWrite("", u"S", u"k", u"a\nb\r\n[T]"), "[S]\nk=a b  [T]\n");
}

TEST_F(ProfileFile, ALeadingBlankIsWrittenAndDoesNotGrow) {
    EXPECT_EQ(AfterWrite("", u"S", u"k", u" 6"), "[S]\nk= 6\n");
    EXPECT_EQ(AfterWrite("[S]\nk= 6\n", u"S", u"k", u" 7"), "[S]\nk= 7\n");
    EXPECT_EQ(ReadProfileValue(Folder.Path("a.ini"), u"S", u"k"), u"7"_s);
}

TEST_F(ProfileFile, OddNamesAreFoundAgain) {
    const QString file = Folder.Path("odd.ini");
    const QStringList sections{u"a]b"_s, u"a;b=c"_s, u" padded "_s, u"\u65e5"_s};
    for (const QString& section : sections)
        EXPECT_TRUE(WriteProfileValue(file, section, u"k [x] y", section));
    for (const QString& section : sections) {
        EXPECT_EQ(ReadProfileValue(file, section, u"k [x] y"), section.trimmed());
    }
}

TEST_F(ProfileFile, NamesThatCouldNotBeFoundAgainAreRefused) {
    const QString file = Folder.MakeFile("a.ini", "[S]\nk=1\n");
    for (const QStringView key : {u"", u" ", u"a=b", u";k", u"[k]", u"a\nb"}) {
        EXPECT_FALSE(WriteProfileValue(file, u"S", key, u"new"));
    }
    EXPECT_FALSE(WriteProfileValue(file, u"S]\n[T", u"k", u"new"));
    EXPECT_FALSE(WriteProfileValue(file, u"S", u"[k", u"new]")) << "would be a section with that value";
    EXPECT_EQ(ContentOf(Folder.Native("a.ini")), "[S]\nk=1\n");
}

}  // namespace
}  // namespace Sonmira
