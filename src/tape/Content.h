#pragma once
// What the blocks of a tape hold: loading screens, BASIC programs, the
// checksums of ROM-style data, and each block's content as a file of its own;
// and the screen memory of Z80 and SNA snapshots.
//
// Nothing here trusts a length read from a file: every field is checked
// against the bytes that are there, and a block that claims more than it holds
// gives what it holds.

#include "tape/Block.h"
#include "tape/ByteSource.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cintal {

class Blocks;

// A ZX Spectrum screen: 6144 bytes of bitmap, then 768 of attributes.
inline constexpr std::size_t kScreenSize = 6912;
inline constexpr int kScreenWidth = 256;
inline constexpr int kScreenHeight = 192;

// How much of a file's head ReadScreen looks at unless told otherwise: a
// loading screen stands near the start of a tape, and a whole snapshot fits.
inline constexpr std::size_t kScreenReadLimit = 256 * 1024;

enum class ContentKind {
    None,     // nothing to show or extract: pauses, tones, groups, texts...
    Header,   // a ROM header: the 17 bytes that name and describe the next block
    Program,  // a BASIC program: the data block after a header of type 0
    Screen,   // 6912 bytes of screen memory
    Data,     // any other data: code, arrays, blocks without a header
    Picture,  // custom info "Picture": a GIF or JPEG file
    Text,     // custom info "Instructions"
    Custom,   // other custom info: "POKEs", "ZX-Edit document", ids of its own
    Snapshot, // a snapshot block (0x40): a Z80 or SNA file
};

// The XOR of flag, data and checksum of a ROM-style block (0x10, 0x11,
// 0x14): zero when the data is right. A block that the file cuts short is
// wrong. Blocks without a flag and a checksum have none.
enum class Checksum { None, Right, Wrong };

// What one block holds.
struct BlockContent {
    ContentKind kind = ContentKind::None;
    Checksum checksum = Checksum::None;
    // Where the content stands in the block's bytes (Data()): for ROM-style
    // blocks the bytes between flag and checksum; for a screen its 6912
    // bytes; for custom info the file it carries after its own fields.
    // Always within the bytes the block holds.
    std::size_t offset = 0;
    std::size_t length = 0;
    // A header's data block, or a data block's header: its number in the
    // list, from 1. 0 when there is none.
    std::int64_t pair = 0;
    // Program: the bytes of its lines, which the variables follow (the
    // header's word at offset 15, cut to what the block holds), and the line
    // it starts at by itself, or -1 when it doesn't.
    std::size_t programLength = 0;
    int autostart = -1;
    // The extension of the file that Extract makes: "scr", "bas", "bin",
    // "gif", "jpg", "txt", "zed", "pok", "z80" or "sna"; empty for None.
    std::string extension;
};

// One entry for each block of the list, in its order. A screen is a data
// block of 6912 bytes between flag and checksum after a CODE header that
// loads it at 16384, or after any header named like a screen (its name holds
// "scr", "pant" or "pict", in any case: "SCREEN$", "Pantalla", "picture"), or
// a custom info block "Spectrum Screen ". A data block belongs to the last
// header before it when no other data block stands between them.
std::vector<BlockContent> ContentOf(const Blocks& blocks);
// Only each block's checksum, as ContentOf finds it, without the rest.
std::vector<Checksum> ChecksumsOf(const Blocks& blocks);

// The content's bytes inside the block (see BlockContent::offset).
std::string_view ContentBytes(const Block& block, const BlockContent& content);

// The listing of a BASIC program's lines, in the text that zmakebas reads:
// one line a row, "10 PRINT ..." with keywords spaced as the Spectrum lists
// them, the hidden forms of numbers left out, and escapes for what is not
// plain ASCII: "\a".."\u" for the user-defined graphics, "\" with two of
// " ", "'", ".", ":" for the block graphics (the left column, then the right
// one), "`" for the pound sign, "\*" for the copyright sign, "\\" for a
// backslash and "\{n}" for any other code. Inside strings and REMs every byte
// stays the byte it is: keyword codes there are written as "\{n}". The
// listing stops where a line number above 16383 stands, as the Spectrum's.
std::string BasicListing(std::string_view program);
// The listing of a Program block; empty for other kinds.
std::string ListingOf(const Block& block, const BlockContent& content);

// A block's content as a file: the screen's 6912 bytes, a program's listing,
// the picture, text or document a custom info block carries (its whole body
// for ids that carry no file of a known kind), the snapshot, or the data
// between flag and checksum. Nothing for blocks of kind None.
struct ExtractedFile {
    Bytes bytes;
    std::string extension;
};
std::optional<ExtractedFile> Extract(const Block& block, const BlockContent& content);

// The tape's loading screen: the first screen on it.
std::optional<Bytes> FirstScreen(const Blocks& blocks);

// The first screen in a file's bytes. A TZX tape is known by its signature;
// otherwise the extension (in any case, with or without its dot) says what
// the file is: "tap", "z80" (versions 1 to 3, compressed or not: the memory
// at 16384), "sna" (the RAM after the 27-byte header) or "scr" (a file of
// exactly 6912 bytes). The bytes may be only the head of the file.
std::optional<Bytes> ScreenOfFile(std::string_view bytes, std::string_view extension);

// The same for a file on disk, reading no more than limit bytes of it.
// Never shows a box: nothing when the file can't be read or holds no screen.
std::optional<Bytes> ReadScreen(const std::string& path, std::size_t limit = kScreenReadLimit);

// The screen as 256x192 pixels, row after row, each 0xFFRRGGBB: the
// Spectrum's eight colours at normal and BRIGHT intensity, with ink and paper
// of FLASH cells swapped in the second flash phase. Empty unless the screen
// has 6912 bytes.
std::vector<std::uint32_t> ScreenPixels(std::string_view screen, bool secondFlashPhase = false);

// In Spanish, for the line under a preview: "Pantalla", "Programa BASIC"...
// Empty for None.
std::string ContentKindName(ContentKind kind);
// "correcta", "errónea", or empty.
std::string ChecksumText(Checksum checksum);

// The name proposed for a block's content: "<tape's name>-<number>.<extension>"
// in the tape's folder.
std::string ProposedName(const std::string& tapePath, std::int64_t number,
                         const std::string& extension);

// The entry of the folder whose name equals the path's ignoring case, as a
// path; empty when there is none.
std::string ExistingFile(const std::string& path);

// Writes a new file: beside it first, then renamed into place. Unless
// replace is true, a file of that name (in any case) is left alone and the
// write refused. On failure nothing is left behind and reason says why, in
// Spanish.
bool WriteContentFile(const std::string& path, std::string_view bytes, bool replace,
                      std::string& reason);
// The same with the bytes a piece at a time.
bool WriteContentFile(const std::string& path, const ByteSource& bytes, bool replace,
                      std::string& reason);

} // namespace cintal
