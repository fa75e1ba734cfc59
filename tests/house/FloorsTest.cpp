// The rule that keeps the house readable: an include never points up, and the rooms that make sound know no
// widget.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

// The floor of each folder, from the ground up. A widgets half stands on the floor of its plain half and
// may use what other widgets halves below it offer.
const std::map<std::string, int> Floors = {
    {"platform", 0}, {"kit", 1},  {"codecs", 2}, {"shell", 3},   {"library", 4}, {"engine", 5},
    {"formats", 6},  {"tags", 6}, {"ui", 7},     {"compact", 7}, {"app", 8},
};

// Folders that never see a widget, those of which only the widgets half does, and those that are nothing but
// widgets.
const std::set<std::string> Plain = {"codecs", "engine"};
const std::set<std::string> HalfPlain = {"platform", "shell", "library"};
const std::set<std::string> Widgets = {"kit"};

const std::regex Include(R"re(^\s*#include\s+(["<])([^">]+)[">])re");

struct Seen {
    fs::path File;
    bool IsOwn;  // in quotes
    std::string Name;
};

std::vector<Seen> IncludesOf(const fs::path& folder) {
    std::vector<Seen> seen;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string ending = entry.path().extension().string();
        if (ending != ".h" && ending != ".cpp") continue;
        std::ifstream file(entry.path());
        for (std::string line; std::getline(file, line);) {
            std::smatch match;
            if (std::regex_search(line, match, Include))
                seen.push_back({entry.path(), match[1] == "\"", match[2]});
        }
    }
    return seen;
}

fs::path Source() {
    return fs::path(SONMIRA_SOURCE) / "src";
}

bool InWidgetsHalf(const fs::path& file) {
    return file.parent_path().filename() == "widgets";
}

std::string Place(const Seen& seen) {
    return fs::relative(seen.File, Source()).string() + " includes " + seen.Name;
}

TEST(Floors, EveryFolderOfTheHouseHasAFloor) {
    int folders = 0;
    for (const auto& entry : fs::directory_iterator(Source())) {
        if (!entry.is_directory()) continue;
        ++folders;
        EXPECT_TRUE(Floors.contains(entry.path().filename())) << entry.path();
    }
    EXPECT_GE(folders, 8);
}

TEST(Floors, NoIncludePointsUp) {
    for (const auto& [folder, floor] : Floors) {
        if (!fs::exists(Source() / folder)) continue;
        for (const Seen& seen : IncludesOf(Source() / folder)) {
            if (!seen.IsOwn) continue;
            const std::string target = seen.Name.substr(0, seen.Name.find('/'));
            ASSERT_TRUE(Floors.contains(target)) << Place(seen) << ": include by the folder's name";
            const int below = Floors.at(target);
            EXPECT_TRUE(target == folder || below < floor) << Place(seen);
            const bool widgetsTarget =
                Widgets.contains(target) || seen.Name.find("/widgets/") != std::string::npos;
            if (Plain.contains(folder) || (HalfPlain.contains(folder) && !InWidgetsHalf(seen.File))) {
                EXPECT_FALSE(widgetsTarget) << Place(seen);
            }
        }
    }
}

TEST(Floors, PlainRoomsKnowNoWidget) {
    // What the plain rooms use of the toolkit, all of it from its core. A name that is new here is looked up
    // before it is let in.
    const std::set<std::string> core = {"QByteArray",
                                        "QByteArrayView",
                                        "QCoreApplication",
                                        "QDate",
                                        "QDateTime",
                                        "QDir",
                                        "QEvent",
                                        "QEventLoop",
                                        "QFile",
                                        "QFileInfo",
                                        "QFlags",
                                        "QHash",
                                        "QList",
                                        "QMap",
                                        "QLocale",
                                        "QPointer",
                                        "QSet",
                                        "QStandardPaths",
                                        "QString",
                                        "QStringList",
                                        "QStringView",
                                        "QTimer",
                                        "QUrl",
                                        "QVarLengthArray",
                                        "QElapsedTimer",
                                        "QThread",
                                        "QProcess",
                                        "QScopeGuard",
                                        "QtEndian",
                                        "QtGlobal",
                                        "QChar",
                                        "QStringConverter",
                                        "QCryptographicHash"};
    for (const auto& [folder, floor] : Floors) {
        if (!Plain.contains(folder) && !HalfPlain.contains(folder)) continue;
        for (const Seen& seen : IncludesOf(Source() / folder)) {
            if (HalfPlain.contains(folder) && InWidgetsHalf(seen.File)) continue;
            if (seen.IsOwn || !seen.Name.starts_with('Q')) continue;
            EXPECT_TRUE(core.contains(seen.Name)) << Place(seen);
        }
    }
}

TEST(Floors, EveryFolderOpensWithWhatLivesThereAndWhatNeverDoes) {
    for (const auto& [folder, floor] : Floors) {
        if (!fs::exists(Source() / folder)) continue;
        std::ifstream file(Source() / folder / "CMakeLists.txt");
        std::vector<std::string> head;
        for (std::string line; std::getline(file, line) && line.starts_with("# ");) head.push_back(line);
        ASSERT_EQ(head.size(), 5U) << folder;
        EXPECT_TRUE(head.front().starts_with("# " + folder + ": ")) << head.front();
        EXPECT_TRUE(std::any_of(head.begin(), head.end(), [](const std::string& line) {
            return line.starts_with("# Never here: ");
        })) << folder;
    }
}

}  // namespace
