// How a save treats the file as a whole: who may read it, what is noted beside it, who is told.
#include "TagFiles.h"
#include "codecs/AudioInformation.h"
#include "platform/Failure.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class SaveAttributes : public TagFileTest {
protected:
    static void Save(const QString& path, const QString& title,
                     AudioInformation::Saving saving = AudioInformation::Saving::ThroughCopy) {
        AudioInformation tag;
        tag.SetTagKind(2);
        tag.LoadTag(path);
        tag.Title = title;
        tag.SaveTag(path, saving);
    }
    QByteArray Attribute(const QByteArray& name, const char* attribute) const {
        QByteArray value(1024, '\0');
        value.resize(
            std::max<ssize_t>(getxattr(Folder.Native(name).constData(), attribute, value.data(), 1024), 0));
        return value;
    }
    struct stat StatusOf(const QByteArray& name) const {
        struct stat status {};
        stat(Folder.Native(name).constData(), &status);
        return status;
    }
};

TEST_F(SaveAttributes, GroupAndExtendedAttributesStayAndTheTimeOfChangeIsNow) {
    const QString path = Make("a.flac");
    const QByteArray file = Folder.Native("a.flac");
    if (setxattr(file.constData(), "user.note", "mine", 4, 0) != 0)
        GTEST_SKIP() << "no extended attributes here";
    const bool isGiven = chown(file.constData(), uid_t(-1), 12) == 0;
    const timespec old[] = {{1000000000, 0}, {1000000000, 0}};
    utimensat(AT_FDCWD, file.constData(), old, 0);
    Save(path, u"New"_s);
    EXPECT_EQ(Attribute("a.flac", "user.note"), "mine");
    if (isGiven) {
        EXPECT_EQ(StatusOf("a.flac").st_gid, 12U);
    }
    EXPECT_GT(StatusOf("a.flac").st_mtim.tv_sec, 1600000000);
}

TEST_F(SaveAttributes, WhatAFolderGivesToNewFilesIsNotGivenToAnOldOne) {
    const QString path = Make("a.flac");
    chmod(Folder.Native("a.flac").constData(), 0640);
    // Version 2; then kind, rights and id of each: owner, one named user, group, mask, others.
    const QByteArray everything = QByteArray::fromHex(
        "02000000"
        "01000700ffffffff"
        "0200070039300000"
        "04000500ffffffff"
        "10000700ffffffff"
        "20000000ffffffff");
    if (setxattr(Folder.Native().constData(), "system.posix_acl_default", everything.constData(),
                 static_cast<std::size_t>(everything.size()), 0) != 0) {
        GTEST_SKIP() << "no access lists here";
    }
    Save(path, u"New"_s);
    EXPECT_EQ(Attribute("a.flac", "system.posix_acl_access"), QByteArray());
    EXPECT_EQ(StatusOf("a.flac").st_mode & 0777, 0640U);
}

TEST_F(SaveAttributes, AFullDiskLeavesTheSoundOfAFileThatIsTaggedInPlace) {
    signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const QString path = Make("a.mp3", {"-write_id3v2", "0", "-id3v2_version", "0"});
    const QByteArray before = Content("a.mp3");
    const rlimit small{static_cast<rlim_t>(before.size() + 64), usual.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(Save(path, QString(300'000, u'x'), AudioInformation::Saving::InPlace), Failure);
    setrlimit(RLIMIT_FSIZE, &usual);
    EXPECT_EQ(Content("a.mp3"), before);
}

// Programs that keep folders in step look at every file that was open for writing.
TEST_F(SaveAttributes, ALoadDoesNotLookLikeAChange) {
    for (const char* name : Names) {
        const QString path = Make(name);
        const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
        ASSERT_GE(inotify_add_watch(watch, Folder.Native(name).constData(), IN_CLOSE_WRITE | IN_MODIFY), 0);
        for (const qint16 kind : {qint16{1}, qint16{2}}) {
            AudioInformation tag;
            tag.SetTagKind(kind);
            tag.LoadTag(path);
        }
        char events[1024];
        EXPECT_EQ(read(watch, events, sizeof events), -1) << name;
        close(watch);
    }
}

}  // namespace
}  // namespace Sonmira
