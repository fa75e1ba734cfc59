#ifdef TEST_WITH_WIDGETS
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include "support/TestFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    // Everything a test may write lies in a folder of its own: home, settings, temporary files.
    const Sonmira::TestFolder folder;
    for (const char* name : {"home", "config", "tmp", "runtime", "data"}) folder.MakeFolder(name);
    chmod(folder.Native("runtime").constData(), 0700);  // or the toolkit complains
    setenv("HOME", folder.Native("home").constData(), 1);
    setenv("XDG_CONFIG_HOME", folder.Native("config").constData(), 1);
    setenv("XDG_DATA_HOME", folder.Native("data").constData(), 1);
    setenv("XDG_RUNTIME_DIR", folder.Native("runtime").constData(), 1);
    setenv("TMPDIR", folder.Native("tmp").constData(), 1);
    setenv("LANG", "C.UTF-8", 1);
    const Application application(argc, argv);
    return RUN_ALL_TESTS();
}
