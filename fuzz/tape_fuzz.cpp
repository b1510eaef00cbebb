// Feeds arbitrary bytes to the reader. Beyond not crashing, a tape read whole
// must survive the writer: written to memory and read again, it gives the same
// blocks (archive blocks aside, which the writer rebuilds) and the same archive
// texts, and writing that second tape gives the same image. The read that
// keeps only data blocks must keep exactly the data blocks of the full read.
//
// The same bytes go to the content reader: what it finds in each block must
// lie inside the block, a screen is 6912 bytes, a listing is plain text, the
// screen found in the file's bytes is the one found in the blocks read, and
// snapshots and TAP files of any shape give a screen or nothing.
//
// And the tape's sound is walked, jumps, loops, calls and compressed
// recordings included: lengths the blocks promise must never lead outside
// them, nor the walk round for ever.

#include "tape/ArchiveInfo.h"
#include "tape/Content.h"
#include "tape/Prompt.h"
#include "tape/Signal.h"
#include "tape/TZXTape.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

using namespace cintal;

namespace {

[[noreturn]] void Fail(const char* what) {
    std::fprintf(stderr, "tape_fuzz: %s\n", what);
    std::abort();
}

std::vector<const Block*> WithoutArchive(TZXTape& t) {
    std::vector<const Block*> out;
    for (const auto& b : t.Blocks())
        if (b->IdTipoBloque != 0x32) out.push_back(b.get());
    return out;
}

bool IsDataKind(int id) {
    return (id >= 0x10 && id <= 0x15) || id == 0x18 || id == 0x19 || (id >= 0x20 && id <= 0x27) ||
           id == 0x2B;
}

// What a text becomes after one trip through the writer.
std::string Written(const std::string& text) {
    if (text.empty() || text == " ") return {};
    return text.substr(0, 255);
}

void CheckRoundTrip(TZXTape& first) {
    const Bytes image = first.Image(first.FileVersion, first.FileRevision);
    TZXTape second;
    second.ReadImage(image);
    if (!second.Status().Whole()) Fail("a written tape does not read whole");
    if (second.FileVersion != first.FileVersion || second.FileRevision != first.FileRevision)
        Fail("version changed");

    auto a = WithoutArchive(first);
    auto b = WithoutArchive(second);
    if (a.size() != b.size()) Fail("block count changed");
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i]->Data() != b[i]->Data()) Fail("block bytes changed");
        if (b[i]->CutShort) Fail("a written block reads cut short");
    }

    for (const auto& f : kArchiveFields)
        if (Written(first.ArchiveInfo().*(f.field)) != second.ArchiveInfo().*(f.field))
            Fail("archive text changed");

    if (second.Image(second.FileVersion, second.FileRevision) != image)
        Fail("writing the tape read back gives another image");
}

void CheckOnlyData(TZXTape& full, std::string_view input) {
    TZXTape data;
    data.ReadImage(input, true);
    std::vector<const Block*> expected;
    for (const auto& b : full.Blocks())
        if (IsDataKind(b->IdTipoBloque)) expected.push_back(b.get());
    if (data.Blocks().Count() != static_cast<std::int64_t>(expected.size()))
        Fail("the data-only read kept other blocks");
    std::size_t i = 0;
    for (const auto& b : data.Blocks()) {
        if (b->Data() != expected[i]->Data() || b->Descr != expected[i]->Descr)
            Fail("the data-only read gave another block");
        ++i;
    }
    for (const auto& f : kArchiveFields)
        if (!(data.ArchiveInfo().*(f.field)).empty()) Fail("the data-only read kept archive texts");
}

bool PlainText(const std::string& listing) {
    for (char c : listing)
        if (c != '\n' && (c < 0x20 || c > 0x7E)) return false;
    return true;
}

void CheckContent(TZXTape& tape, std::string_view input) {
    const std::vector<BlockContent> contents = ContentOf(tape.Blocks());
    if (contents.size() != static_cast<std::size_t>(tape.Blocks().Count()))
        Fail("not one content for each block");
    std::size_t i = 0;
    for (const auto& b : tape.Blocks()) {
        const BlockContent& c = contents[i++];
        const std::size_t held = b->Data().size();
        if (c.offset > held || c.length > held - c.offset) Fail("content outside its block");
        if (c.kind == ContentKind::Screen && c.length != kScreenSize)
            Fail("a screen of another size");
        if (c.pair &&
            (c.pair < 1 || static_cast<std::size_t>(c.pair) > contents.size() ||
             contents[static_cast<std::size_t>(c.pair) - 1].pair != static_cast<std::int64_t>(i)))
            Fail("a header and its data don't point at each other");
        if (c.programLength > c.length) Fail("a program longer than its block");
        const auto file = Extract(*b, c);
        if (file.has_value() == (c.kind == ContentKind::None))
            Fail("extraction of the wrong blocks");
        if (c.kind == ContentKind::Program && !PlainText(file->bytes))
            Fail("a listing that is not plain text");
    }
    const auto first = FirstScreen(tape.Blocks());
    if (first && first->size() != kScreenSize) Fail("a first screen of another size");
    if (input.substr(0, 7) == "ZXTape!" && ScreenOfFile(input, "tzx") != first)
        Fail("the file's screen is not the first screen of its blocks");
    for (const char* ext : {"tap", "z80", "sna", "scr"}) {
        const auto screen = ScreenOfFile(input, ext);
        if (screen && (screen->size() != kScreenSize || ScreenPixels(*screen).size() != 256 * 192))
            Fail("a file's screen of another size");
    }
    if (!PlainText(BasicListing(input))) Fail("a listing that is not plain text");
}

// Enough of the walk to reach every kind of block of a fuzzed tape without
// spending the run on one long tone.
void CheckSignal(TZXTape& tape) {
    TapeSignal signal(tape.Blocks());
    BlockSignal block;
    std::size_t pulses = 0;
    for (int i = 0; i < 64 && pulses < 100'000 && signal.Next(block); ++i) {
        if (block.block >= static_cast<std::size_t>(tape.Blocks().Count()))
            Fail("sound from a block the tape doesn't have");
        pulses += block.pulses.size();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    ScriptedPrompt prompt; // the version warning and "otro" are kept here, not printed
    PromptScope scope(prompt);
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);

    TZXTape tape;
    tape.ReadImage(input);

    std::int64_t total = 0, ordinal = 0;
    bool cut = false;
    for (const auto& b : tape.Blocks()) {
        ++ordinal;
        const auto held = static_cast<std::int64_t>(b->Data().size());
        if (b->CutShort ? held >= b->LenghtTot : held != b->LenghtTot)
            Fail("a block's length does not match its bytes");
        if (b->CutShort && ordinal != tape.Blocks().Count()) Fail("a cut block is not the last");
        if (b->Data().empty() || static_cast<std::uint8_t>(b->Data()[0]) != b->IdTipoBloque)
            Fail("a block does not start with its id");
        total += held;
        cut = cut || b->CutShort;
    }
    if (total > static_cast<std::int64_t>(size)) Fail("blocks hold more bytes than the file");

    CheckOnlyData(tape, input);
    CheckContent(tape, input);
    if (tape.Status().Whole() && !cut) CheckRoundTrip(tape);
    CheckSignal(tape);
    return 0;
}
