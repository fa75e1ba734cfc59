#ifdef TEST_WITH_WIDGETS
#include <QApplication>
using Application = QApplication;
#else
#include <QCoreApplication>
using Application = QCoreApplication;
#endif

#include "platform/Clock.h"
#include "platform/TemporaryFolder.h"
#include "support/TestFolder.h"

#include <QLocale>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>

namespace {

// What a test changed around itself is put back behind it, so that a program's tests may also run in one
// process, in any order.
class Surroundings : public ::testing::EmptyTestEventListener {
public:
    void OnTestStart(const ::testing::TestInfo& /*test*/) override {
        Environment = CurrentEnvironment();
        Folder = std::filesystem::current_path();
        Locale = std::setlocale(LC_ALL, nullptr);
        Language = QLocale();
    }
    void OnTestEnd(const ::testing::TestInfo& /*test*/) override {
        if (CurrentEnvironment() != Environment) {
            clearenv();
            for (const std::string& variable : Environment) {
                const std::size_t end = variable.find('=');
                setenv(variable.substr(0, end).c_str(), variable.substr(end + 1).c_str(), 1);
            }
        }
        std::filesystem::current_path(Folder);
        std::setlocale(LC_ALL, Locale.c_str());
        QLocale::setDefault(Language);
        Sonmira::OverrideTemporaryFolder({});
        Sonmira::OverrideCurrentYear(0);
    }

private:
    static std::vector<std::string> CurrentEnvironment() {
        std::vector<std::string> variables;
        for (char** variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
            variables.emplace_back(*variable);
        }
        return variables;
    }

    std::vector<std::string> Environment;
    std::filesystem::path Folder;
    std::string Locale;
    QLocale Language;
};

}  // namespace

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
    ::testing::UnitTest::GetInstance()->listeners().Append(new Surroundings);
    return RUN_ALL_TESTS();
}
