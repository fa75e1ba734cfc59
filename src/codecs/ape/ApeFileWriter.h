#pragma once

#include "codecs/ape/ApeInput.h"
#include "platform/Files.h"

#include <QCryptographicHash>

#include <array>
#include <vector>

namespace Sonmira {

// Puts an APE file together: descriptor, header, seek table, the source's own header, the frames, and what
// followed the sound in the source. The descriptor and the tables are complete once Finish has run.
class ApeFileWriter {
public:
    // Creates the file and writes everything that comes before the frames.
    ApeFileWriter(QStringView path, const ApeLevel& level, ApeInput& input);

    // The next frame's bytes, and how many blocks it holds.
    void WriteFrame(std::span<const std::uint8_t> frame, std::size_t blocks);
    // Writes the rest and closes.
    void Finish();
    // Closes what is there.
    void Close() { File.Close(); }

private:
    void WriteWords(std::span<const std::uint8_t> bytes);
    void Sum(std::span<const std::byte> bytes);
    std::vector<std::byte> Descriptor() const;
    std::vector<std::byte> Header() const;
    std::vector<std::byte> SeekTable() const;

    const ApeLevel& Level;
    ApeInput& Input;
    bool KeepsHeader;
    OutputFile File;
    QCryptographicHash Md5{QCryptographicHash::Md5};
    QByteArray Digest;
    qint64 FrameBytes = 0;  // of all frames so far, without padding
    qint64 FrameDataBytes = 0;
    qint64 SeekEntries = 0;
    std::vector<std::uint32_t> Seeks;
    std::size_t LastFrameBlocks = 0;
    std::vector<std::byte> Word;  // up to three bytes that wait for the rest of their word
    std::vector<std::byte> Words;
};

}  // namespace Sonmira
