#include "tape/TZXTape.h"

#include "tape/Decoders.h"
#include "tape/Layout.h"
#include "tape/Prompt.h"
#include "tape/SafeWrite.h"
#include "tape/TZXFunct.h"

#include <algorithm>
#include <vector>

namespace cintal {

std::string ReadStatus::Cause() const {
    switch (stop) {
    case ReadStop::None:
        return {};
    case ReadStop::Missing:
        return "el archivo no existe";
    case ReadStop::Unreadable:
        return "no se puede leer el archivo";
    case ReadStop::TooShort:
        return "el archivo tiene menos de 8 bytes";
    case ReadStop::NoSignature:
        return "no empieza por ZXTape!";
    case ReadStop::ShortHeader:
        return "cabecera incompleta";
    case ReadStop::UnknownBlock:
        return "bloque desconocido " + Hex2(id);
    case ReadStop::CutFields:
        return "el archivo termina dentro del bloque " + Hex2(id);
    case ReadStop::OnlyData:
        return "leído sólo con los bloques de datos";
    }
    return {};
}

BlockList& TZXTape::Blocks() {
    return *BlocksRef();
}

std::shared_ptr<BlockList> TZXTape::BlocksRef() {
    if (!blocks) blocks = std::make_shared<BlockList>();
    return blocks;
}

ArchiveRecord& TZXTape::ArchiveInfo() {
    return *ArchiveInfoRef();
}

std::shared_ptr<ArchiveRecord> TZXTape::ArchiveInfoRef() {
    if (!archive) archive = std::make_shared<ArchiveRecord>();
    return archive;
}

Trainer& TZXTape::Pokes() {
    if (!pokes) pokes = std::make_shared<Trainer>();
    return *pokes;
}

void TZXTape::ReadTape() {
    Read(false);
}

void TZXTape::ReadOnlyData() {
    Read(true);
}

void TZXTape::Reset() {
    blocks.reset();
    archive.reset();
    status = {};
    cutOrdinal = cutPosition = 0;
}

void TZXTape::Read(bool onlyData) {
    Reset();
    detail::FileOps& ops = detail::CurrentFileOps();
    if (!ops.Exists(FileName)) {
        status.stop = ReadStop::Missing;
        Ask("no existe el archivo!!!!!");
        return;
    }
    std::shared_ptr<const void> keep;
    std::string_view image;
    if (!ops.Load(FileName, keep, image)) {
        status.stop = ReadStop::Unreadable;
        Ask("No se puede leer el archivo " + FileName);
        return;
    }
    if (image.size() < 8) {
        status.stop = ReadStop::TooShort;
        return;
    }
    ReadBlocks(std::move(keep), image, onlyData);
}

void TZXTape::ReadImage(std::string_view image, bool onlyData) {
    ReadImage(std::make_shared<const Bytes>(image), onlyData);
}

void TZXTape::ReadImage(std::shared_ptr<const Bytes> image, bool onlyData) {
    Reset();
    if (image->size() < 8) {
        status.stop = ReadStop::TooShort;
        return;
    }
    const std::string_view bytes = *image;
    ReadBlocks(std::move(image), bytes, onlyData);
}

void TZXTape::ReadBlocks(std::shared_ptr<const void> owner, std::string_view image, bool onlyData) {
    if (image.substr(0, 7) != "ZXTape!") {
        status.stop = ReadStop::NoSignature;
        return;
    }
    if (image.size() < 10) {
        status.stop = ReadStop::ShortHeader;
        return;
    }
    FileVersion = static_cast<std::uint8_t>(image[8]);
    FileRevision = static_cast<std::uint8_t>(image[9]);
    if (!quietVersion && NewerThanSupported(FileVersion, FileRevision))
        Ask("El archivo TZX indica una versión " + std::to_string(FileVersion) + "." +
                std::to_string(FileRevision) + ". Esta aplicación soporta hasta la revisión 1." +
                std::to_string(kSupportedRevision) +
                " del formato TZX, por lo que el archivo puede no ser compatible",
            "Versión incompatible", Icon::Critical);

    BlockList& list = Blocks();
    cintal::ArchiveInfo* texts = onlyData ? nullptr : &ArchiveInfo();
    detail::DecodeState st;
    // The blocks are made in runs that grow with the tape, each one piece of
    // memory that its blocks keep alive: not one allocation per block.
    std::shared_ptr<std::vector<Block>> run;
    std::size_t used = 0;
    const auto size = static_cast<std::int64_t>(image.size());
    std::int64_t pos = 10; // from 0 here; messages count from 1
    while (pos < size) {
        const std::int64_t start = pos;
        ++st.ordinal;
        const int id = static_cast<std::uint8_t>(image[static_cast<std::size_t>(start)]);
        detail::Decoded d = detail::DecodeBlock(image, static_cast<std::size_t>(start), st, texts);
        if (d.result != detail::Decode::Ok) {
            status.stop =
                d.result == detail::Decode::Unknown ? ReadStop::UnknownBlock : ReadStop::CutFields;
            status.ordinal = st.ordinal;
            status.position = start + 1;
            status.id = id;
            if (d.result == detail::Decode::Unknown)
                Ask("Bloque desconocido: " + std::to_string(id) + " en  byte " +
                    std::to_string(start + 1) + " , bloque " + std::to_string(st.ordinal));
            return;
        }
        pos = start + d.size;
        const bool keep = !onlyData || detail::SignalOrFlow(id);
        if (!keep) continue;
        // Never more than the image holds, whatever the block declares.
        const std::int64_t have = std::min(d.size, size - start);
        if (!run || used == run->size()) {
            run = std::make_shared<std::vector<Block>>(
                std::clamp<std::size_t>(static_cast<std::size_t>(list.Count()), 16, 4096));
            used = 0;
        }
        BlockRef b(run, &(*run)[used++]);
        b->IdTipoBloque = id;
        b->TipoBloque = BlockList::BlockKindName(id);
        b->Descr = std::move(d.descr);
        b->LenghtTot = d.size;
        b->SetView(owner,
                   image.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(have)));
        list.Append(b);
        if (have < d.size) {
            b->CutShort = true;
            cutOrdinal = st.ordinal;
            cutPosition = start + 1;
        }
    }
    if (onlyData) status.stop = ReadStop::OnlyData;
}

std::string TZXTape::HexToDec(std::string_view text) {
    static constexpr std::string_view digits = "0123456789ABCDEF";
    std::uint64_t value = 0, weight = 1;
    for (std::size_t i = text.size(); i-- > 0;) {
        char c = text[i];
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        std::size_t d = digits.find(c);
        if (d == std::string_view::npos) return "0";
        value += d * weight;
        weight *= 16;
    }
    return std::to_string(value);
}

bool TZXTape::SafeToSave(std::int64_t* ordinal, std::int64_t* position) const {
    std::int64_t o = 0, p = 0;
    bool safe = status.Whole();
    if (!safe) {
        o = status.ordinal;
        p = status.position;
    } else if (blocks) {
        // A block cut by the end of the file may only stay last: anything
        // written after it would be read back as part of it.
        std::int64_t n = blocks->Count(), i = 0;
        for (const BlockRef& b : *blocks) {
            ++i;
            if (b->CutShort && i != n) {
                safe = false;
                o = cutOrdinal;
                p = cutPosition;
                break;
            }
        }
    }
    if (ordinal) *ordinal = o;
    if (position) *position = p;
    return safe;
}

} // namespace cintal
