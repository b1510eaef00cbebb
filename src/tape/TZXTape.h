#pragma once

#include "tape/ArchiveInfo.h"
#include "tape/Blocks.h"
#include "tape/Pokes.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace cintal {

// Aliases so that the accessors can carry the names of the classes they return.
using BlockList = Blocks;
using ArchiveRecord = ArchiveInfo;
using Trainer = Pokes;

// The newest revision of the TZX format (major version 1) that the engine
// reads and writes whole, and the one older tapes are raised to on saving.
inline constexpr int kSupportedRevision = 20;
inline constexpr int kRaisedRevision = 13;

// A version the engine may not read whole: 1.21 and up, 2.x and up.
inline bool NewerThanSupported(int version, int revision) {
    return version > 1 || (version == 1 && revision > kSupportedRevision);
}
// A version that saving raises to 1.13 when asked to.
inline bool OlderThanRaised(int version, int revision) {
    return version < 1 || (version == 1 && revision < kRaisedRevision);
}

// Why a read did not take the whole file.
enum class ReadStop {
    None,         // read whole
    Missing,      // the file does not exist
    Unreadable,   // it exists but could not be read
    TooShort,     // fewer than 8 bytes
    NoSignature,  // no "ZXTape!" at the start
    ShortHeader,  // 8 or 9 bytes: no version or revision
    UnknownBlock, // an id without a decoder
    CutFields,    // the file ended inside a block's fixed fields
    OnlyData,     // read with ReadOnlyData, which leaves blocks out
};

// Where and why a read ended. ordinal and position (from 1, the id byte) are 0
// when the walk never reached a block.
struct ReadStatus {
    ReadStop stop = ReadStop::None;
    std::int64_t ordinal = 0;
    std::int64_t position = 0;
    int id = 0;

    bool Whole() const { return stop == ReadStop::None; }
    // The cause in Spanish, for listings and messages.
    std::string Cause() const;
};

// One TZX tape image in memory.
class TZXTape {
public:
    TZXTape() = default;
    TZXTape(const TZXTape&) = delete;
    TZXTape& operator=(const TZXTape&) = delete;

    std::string FileName; // full path; set before ReadTape
    std::string FileTitle;
    std::string TapFile;
    std::int16_t FileVersion = 0;
    std::int16_t FileRevision = 0;

    // Created empty the first time they are read while absent.
    BlockList& Blocks();
    ArchiveRecord& ArchiveInfo();
    Trainer& Pokes();
    std::shared_ptr<BlockList> BlocksRef();
    std::shared_ptr<ArchiveRecord> ArchiveInfoRef();
    void SetBlocks(std::shared_ptr<BlockList> b) { blocks = std::move(b); }
    void SetArchiveInfo(std::shared_ptr<ArchiveRecord> a) { archive = std::move(a); }
    void SetPokes(std::shared_ptr<Trainer> p) { pokes = std::move(p); }

    // Read FileName: every block and the archive information.
    void ReadTape();
    // Read FileName keeping only the blocks of the tape's signal and flow.
    void ReadOnlyData();
    // The same reads from an image already in memory, for tests, benchmarks
    // and the fuzzer: the first keeps a copy of it, the second shares it.
    void ReadImage(std::string_view image, bool onlyData = false);
    void ReadImage(std::shared_ptr<const Bytes> image, bool onlyData = false);

    // Writes the tape over sFileName, keeping the old file as a ".tmp"
    // backup beside it. Returns whether the file was written.
    bool Save(const std::string& sFileName, bool UpdateVersion);

    // The file image as Save writes it, with the given header version.
    Bytes Image(std::int16_t version, std::int16_t revision) const;

    // One archive info block (0x32) built from ArchiveInfo, or nothing.
    Bytes BloqueInfo();

    const ReadStatus& Status() const { return status; }
    // Whether Save would lose or move bytes; fills why when it would.
    bool SafeToSave(std::int64_t* ordinal = nullptr, std::int64_t* position = nullptr) const;

    static std::string HexToDec(std::string_view text);

private:
    void Reset();
    void Read(bool onlyData);
    void ReadBlocks(std::shared_ptr<const void> owner, std::string_view image, bool onlyData);

    std::shared_ptr<BlockList> blocks;
    std::shared_ptr<ArchiveRecord> archive;
    std::shared_ptr<Trainer> pokes;
    ReadStatus status;
    // Set while Save reads the file back after the user refused to save a
    // newer version: the version was just asked about.
    bool quietVersion = false;
    // Where the cut last block stood when it was read, for the refusal text.
    std::int64_t cutOrdinal = 0;
    std::int64_t cutPosition = 0;
};

} // namespace cintal
