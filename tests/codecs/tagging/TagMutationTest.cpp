// Tagged files with bytes changed at random: a save of a new title keeps every other field byte by byte, or
// leaves the file alone. SONMIRA_ROUNDS says how many files of each kind.
#include "TagKeepingTest.h"
#include "platform/Failure.h"
#include "support/Sanitized.h"

#include <iostream>
#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Bytes that a save of the title has no business with.
struct Region {
    qsizetype At;
    qsizetype Size;
};

struct Sample {
    QByteArray Name;
    QByteArray Content;
    QList<Region> Fields;
    Region Sound{0, 0};
    qint16 Kind = 2;

    // The bytes of that text, and `before` of them in front of it and `behind` of them after it.
    void AddField(const QByteArray& text, qsizetype before, qsizetype behind = 0) {
        const qsizetype at = Content.indexOf(text);
        ASSERT_GE(at, before) << Name.constData() << ' ' << text.constData();
        Fields.append({at - before, before + text.size() + behind});
    }
};

class TagMutation : public TagKeeping, public ::testing::WithParamInterface<const char*> {
protected:
    static constexpr const char* Artist = "Artist of the sample";
    static constexpr const char* Album = "Album of the sample";
    static constexpr const char* Mood = "Mood of the sample";
    static const QList<QByteArray>& Options() {
        static const QList<QByteArray> options{"-metadata", "title=Old title",
                                               "-metadata", QByteArray("artist=") + Artist,
                                               "-metadata", QByteArray("album=") + Album,
                                               "-metadata", QByteArray("MOOD=") + Mood};
        return options;
    }
    static QByteArray Picture() {
        QByteArray picture("\0image/png\0\3\0", 13);
        for (int n = 0; n < 300; ++n) picture += static_cast<char>(n * 7);
        return picture;
    }
    static QByteArray Wide(const QByteArray& text) {
        QByteArray wide;
        for (const char c : text) wide += QByteArray(1, c) + '\0';
        return wide;
    }

    Sample MakeId3v2(int version) {
        Make("plain.mp3", {"-map_metadata", "-1", "-write_id3v2", "0", "-id3v2_version", "0"});
        const QByteArray latin(1, '\0');
        const std::pair<QByteArray, QByteArray> frames[] = {
            {"TIT2", latin + "Old title"},
            {"TPE1", latin + Artist},
            {"TALB", QByteArray("\1\xFF\xFE", 3) + Wide(Album)},
            {"APIC", Picture()},
            {"COMM", latin + "eng" + '\0' + "A comment"},
            {"TXXX", latin + "MOOD" + '\0' + Mood}};
        QByteArray body;
        QList<Region> regions;
        for (const auto& [id, content] : frames) {
            QByteArray frame = Frame(id, content);
            if (version == 4) frame.replace(4, 4, Sevens(content.size()));
            if (id != "TIT2") regions.append({10 + body.size(), frame.size()});
            body += frame;
        }
        body += QByteArray(64, '\0');
        QByteArray head("ID3\0\0\0", 6);
        head[3] = static_cast<char>(version);
        Sample sample{"a.mp3", head + Sevens(body.size()) + body + Content("plain.mp3"), regions};
        sample.Sound = {sample.Content.size() - 3000, 3000};
        return sample;
    }
    Sample MakeId3v1() {
        Make("plain.mp3", {"-map_metadata", "-1", "-write_id3v2", "0", "-id3v2_version", "0"});
        QByteArray tag = Id3v1("Old title", Artist, 17);
        tag.replace(97, 9, "A comment");
        Sample sample{"a.mp3", Content("plain.mp3") + tag, {}};
        sample.Fields.append({sample.Content.size() - 95, 95});
        sample.Sound = {sample.Content.size() - 3128, 3000};
        sample.Kind = 1;
        return sample;
    }
    Sample MakeComments(const QByteArray& name) {
        Make(name, Options());
        Sample sample{name, Content(name), {}};
        sample.AddField(Artist, 7);
        sample.AddField(Album, 6);
        sample.AddField(Mood, 5);
        if (name == "a.flac") sample.Sound = {sample.Content.size() - 3000, 3000};
        return sample;
    }
    Sample MakeApe(const QByteArray& name) {
        Make(name);
        const qsizetype sound = Content(name).size();
        QByteArray items;
        const QByteArray binary = "Cover Art (front)" + QByteArray(1, '\0') + Picture();
        for (const QByteArray& item :
             {QByteArray("Title\0Old title", 15), "Artist" + ('\0' + QByteArray(Artist)),
              "Album" + ('\0' + QByteArray(Album)), binary, "Mood" + ('\0' + QByteArray(Mood))}) {
            const qsizetype key = item.indexOf('\0') + 1;
            items += LittleEndian(static_cast<quint32>(item.size() - key)) +
                     LittleEndian(item == binary ? 2 : 0) + item;
        }
        const auto block = [&](quint32 flags) {
            return "APETAGEX" + LittleEndian(2000) + LittleEndian(static_cast<quint32>(items.size()) + 32) +
                   LittleEndian(5) + LittleEndian(flags) + QByteArray(8, '\0');
        };
        Append(name, block(0xA0000000U) + items + block(0x80000000U));
        Sample sample{name, Content(name), {}};
        sample.AddField(Artist, 11);
        sample.AddField(Album, 10);
        sample.AddField(Mood, 9);
        sample.AddField(binary, 4);
        sample.Sound = {sound - 1500, 1500};
        return sample;
    }
    Sample MakeM4a() {
        QList<QByteArray> options = Options() + QList<QByteArray>{"-movflags", "+faststart"};
        Make("a.m4a", options);
        Sample sample{"a.m4a", Content("a.m4a"), {}};
        sample.AddField(Artist, 24);
        sample.AddField(Album, 24);
        sample.Sound = {sample.Content.size() - 3000, 3000};
        return sample;
    }
    Sample MakeWma() {
        Make("a.wma", Options());
        Sample sample{"a.wma", Content("a.wma"), {}};
        sample.AddField(Wide(Artist), 0);
        sample.AddField(Wide(Album), 4 + 2 * 14);
        sample.AddField(Wide(Mood), 4 + 2 * 5);
        sample.Sound = {sample.Content.size() - 3000, 3000};
        return sample;
    }
    Sample MakeWav() {
        MakeListedWav({{"INAM", "Old title"}, {"IART", Artist}, {"IPRD", Album}, {"IKEY", Mood}});
        Sample sample{"listed.wav", Content("listed.wav"), {}};
        sample.AddField(Artist, 8, 1);
        sample.AddField(Album, 8, 1);
        sample.AddField(Mood, 8, 1);
        sample.Sound = {2000, 3000};
        return sample;
    }
    static QByteArray Sevens(qsizetype number) {
        QByteArray bytes;
        for (int n = 3; n >= 0; --n) bytes += static_cast<char>(number >> (7 * n) & 0x7F);
        return bytes;
    }

    Sample MakeSample(const QByteArray& kind) {
        if (kind == "Id3v1") return MakeId3v1();
        if (kind == "Id3v23") return MakeId3v2(3);
        if (kind == "Id3v24") return MakeId3v2(4);
        if (kind == "Ape") return MakeApe("a.ape");
        if (kind == "Mpc") return MakeApe("a.mpc");
        if (kind == "M4a") return MakeM4a();
        if (kind == "Wma") return MakeWma();
        if (kind == "Wav") return MakeWav();
        return MakeComments(kind == "Flac" ? "a.flac" : "a.ogg");
    }

    // A few bytes of the tag, or now and then of the beginning of the file, become others.
    static Sample Mutated(Sample sample, std::mt19937& random) {
        const auto below = [&](qsizetype end) {
            return std::uniform_int_distribution<qsizetype>(0, end - 1)(random);
        };
        constexpr qsizetype Around = 80;
        qsizetype from = sample.Content.size();
        qsizetype to = 0;
        for (const Region& field : sample.Fields) {
            from = std::max<qsizetype>(std::min(from, field.At - Around), 0);
            to = std::min(std::max(to, field.At + field.Size + Around), sample.Content.size());
        }
        for (qsizetype count = 1 + below(3); count > 0; --count) {
            constexpr qsizetype Beginning = 200;
            const bool isInTag = below(4) > 0;
            const qsizetype at = isInTag ? from + below(to - from) : below(Beginning);
            char& byte = sample.Content.data()[at];
            const char values[] = {static_cast<char>(below(256)),
                                   static_cast<char>(byte ^ (1 << below(8))),
                                   '\0',
                                   '\xFF',
                                   static_cast<char>(byte + 1),
                                   static_cast<char>(byte - 1)};
            byte = values[below(std::ssize(values))];
        }
        return sample;
    }

    static int Rounds() {
        const int wanted = qEnvironmentVariableIntValue("SONMIRA_ROUNDS");
        return wanted > 0 ? wanted : UnderSanitizers ? 20 : 200;
    }
};

TEST_P(TagMutation, ASaveKeepsAllOtherFieldsOrLeavesTheFileAlone) {
    const Sample sample = MakeSample(GetParam());
    if (HasFatalFailure()) return;
    std::mt19937 random(16);
    int saved = 0;
    for (int round = 0; round < Rounds(); ++round) {
        const Sample mutated = Mutated(sample, random);
        const QString path = Folder.MakeFile(sample.Name, mutated.Content);
        try {
            Edit(
                path, [](AudioInformation& tag) { tag.Title = u"A new title"_s; }, sample.Kind);
        } catch (const Failure&) {
            ASSERT_EQ(Content(sample.Name), mutated.Content) << "round " << round;
            continue;
        }
        ++saved;
        const QByteArray after = Content(sample.Name);
        EXPECT_EQ(Load(path, sample.Kind).Title, u"A new title"_s) << "round " << round;
        QList<Region> regions = mutated.Fields;
        regions.append(mutated.Sound);
        for (const Region& region : regions) {
            const QByteArray bytes = mutated.Content.sliced(region.At, region.Size);
            EXPECT_TRUE(after.contains(bytes))
                << "round " << round << ": "
                << bytes.first(std::min<qsizetype>(bytes.size(), 40)).toHex(' ').constData();
        }
    }
    std::cout << GetParam() << ": " << saved << " of " << Rounds() << " saved, the others left alone\n";
    EXPECT_GT(saved, Rounds() / 10) << "else nothing was tried";
}

INSTANTIATE_TEST_SUITE_P(Of, TagMutation,
                         ::testing::Values("Id3v1", "Id3v23", "Id3v24", "Flac", "Ogg", "Ape", "Mpc", "M4a",
                                           "Wma", "Wav"),
                         [](const auto& one) { return std::string(one.param); });

}  // namespace
}  // namespace Sonmira
