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

// The floor of each room, from the ground up. A widgets half stands on the floor of its plain half and
// may use what other widgets halves below it offer. Rooms of one floor do not see each other.
const std::map<std::string, int> Floors = {
    {"platform", 0},      {"kit", 10},
    {"codecs/sound", 20}, {"codecs/wav", 21},
    {"codecs/mp3", 21},   {"codecs/vorbis", 21},
    {"codecs/wma", 21},   {"codecs/flac", 21},
    {"codecs/mpc", 21},   {"codecs/lame", 22},
    {"codecs/read", 22},  {"codecs/write", 22},
    {"codecs/ape", 23},   {"codecs/tagging", 23},
    {"codecs", 24},       {"shell", 30},
    {"library", 40},      {"engine", 50},
    {"formats", 60},      {"tags", 60},
    {"ui", 70},           {"compact", 70},
    {"app", 80},
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

// The room that a file of that path below src lies in, such as "codecs/ape" or "shell".
std::string RoomOf(const std::string& path) {
    const auto first = path.find('/');
    const std::string inner = path.substr(0, path.find('/', first + 1));
    return Floors.contains(inner) ? inner : path.substr(0, first);
}

bool IsIn(const std::set<std::string>& folders, const std::string& room) {
    return folders.contains(room.substr(0, room.find('/')));
}

bool InWidgetsHalf(const fs::path& file) {
    return file.parent_path().filename() == "widgets";
}

std::string Place(const Seen& seen) {
    return fs::relative(seen.File, Source()).string() + " includes " + seen.Name;
}

TEST(Floors, EveryFolderOfTheHouseHasAFloor) {
    int folders = 0;
    for (const auto& entry : fs::recursive_directory_iterator(Source())) {
        if (!entry.is_directory() || entry.path().filename() == "widgets") continue;
        ++folders;
        EXPECT_TRUE(Floors.contains(fs::relative(entry.path(), Source()).string())) << entry.path();
    }
    EXPECT_EQ(folders, static_cast<int>(Floors.size()));
}

TEST(Floors, NoIncludePointsUp) {
    for (const Seen& seen : IncludesOf(Source())) {
        if (!seen.IsOwn) continue;
        const std::string room = RoomOf(fs::relative(seen.File, Source()).string());
        const std::string target = RoomOf(seen.Name);
        ASSERT_TRUE(Floors.contains(target)) << Place(seen) << ": include by the folder's name";
        EXPECT_TRUE(target == room || Floors.at(target) < Floors.at(room)) << Place(seen);
        const bool widgetsTarget =
            Widgets.contains(target) || seen.Name.find("/widgets/") != std::string::npos;
        if (IsIn(Plain, room) || (IsIn(HalfPlain, room) && !InWidgetsHalf(seen.File))) {
            EXPECT_FALSE(widgetsTarget) << Place(seen);
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
    for (const Seen& seen : IncludesOf(Source())) {
        const std::string room = RoomOf(fs::relative(seen.File, Source()).string());
        const bool isPlain = IsIn(Plain, room) || (IsIn(HalfPlain, room) && !InWidgetsHalf(seen.File));
        if (!isPlain || seen.IsOwn || !seen.Name.starts_with('Q')) continue;
        EXPECT_TRUE(core.contains(seen.Name)) << Place(seen);
    }
}

TEST(Floors, EveryFolderOpensWithWhatLivesThereAndWhatNeverDoes) {
    for (const auto& [folder, floor] : Floors) {
        std::ifstream file(Source() / folder / "CMakeLists.txt");
        std::vector<std::string> head;
        for (std::string line; std::getline(file, line) && line.starts_with("# ");) head.push_back(line);
        ASSERT_EQ(head.size(), 5U) << folder;
        const std::string name = fs::path(folder).filename().string();
        EXPECT_TRUE(head.front().starts_with("# " + name + ": ")) << head.front();
        EXPECT_TRUE(std::any_of(head.begin(), head.end(), [](const std::string& line) {
            return line.starts_with("# Never here: ");
        })) << folder;
    }
}

}  // namespace
