#pragma once
// Where each kind of block keeps its fixed fields and its length, and the
// little-endian fields they are read with. Internal to the engine: the
// decoders, the content reader and the kind names all read from here.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace cintal::detail {

// Fields read from a block or a file: a byte past the end reads 0, so that a
// caller that checked the size first and one that didn't both stay inside.
inline std::uint32_t U8(std::string_view s, std::size_t off) {
    return off < s.size() ? static_cast<std::uint8_t>(s[off]) : 0u;
}
inline std::uint32_t U16(std::string_view s, std::size_t off) {
    return U8(s, off) | U8(s, off + 1) << 8;
}
inline std::uint32_t U24(std::string_view s, std::size_t off) {
    return U16(s, off) | U8(s, off + 2) << 16;
}
inline std::uint32_t U32(std::string_view s, std::size_t off) {
    return U24(s, off) | U8(s, off + 3) << 24;
}

// The bytes from off, at most n, that s holds.
inline std::string_view Sub(std::string_view s, std::size_t off, std::size_t n) {
    if (off >= s.size()) return {};
    return s.substr(off, std::min(n, s.size() - off));
}

// One kind of block. Its size is fixed + unit * the length field; a kind
// without a length field has fixed bytes only.
struct BlockLayout {
    const char* name = nullptr; // as Windows-1252 bytes; null for kinds without one
    std::uint8_t fixed = 0;     // the fixed fields, id included; 0 for kinds not read
    std::uint8_t lengthAt = 0;  // where the length field stands; 0 for none
    std::uint8_t lengthBytes = 0;
    std::uint8_t unit = 1;
    // The data after the fixed fields is a record as the ROM saves it: flag,
    // data, checksum.
    bool rom = false;

    bool Read() const { return fixed != 0; }
    // What the length field says; only once the fixed fields are there.
    std::int64_t Length(std::string_view block) const {
        switch (lengthBytes) {
        case 1:
            return U8(block, lengthAt);
        case 2:
            return U16(block, lengthAt);
        case 3:
            return U24(block, lengthAt);
        case 4:
            return U32(block, lengthAt);
        default:
            return 0;
        }
    }
    std::int64_t Size(std::string_view block) const { return fixed + unit * Length(block); }
};

inline constexpr std::uint8_t kCustomInfo = 0x35;
inline constexpr std::uint8_t kSnapshot = 0x40;
inline constexpr std::uint8_t kCswRecording = 0x18;
inline constexpr std::uint8_t kGeneralized = 0x19;
inline constexpr std::uint8_t kSignalLevel = 0x2B;

struct KindLayout {
    std::uint8_t id;
    BlockLayout layout;
};

// Kinds with a name but no layout (the C64 blocks, the end of the tape) are
// named in lists but never read. The group, loop and call blocks without a
// name are read all the same.
inline constexpr KindLayout kKinds[] = {
    {0x10, {"Bloque estandar", 5, 3, 2, 1, true}},
    {0x11, {"Bloque turbo", 19, 16, 3, 1, true}},
    {0x12, {"Tono puro", 5}},
    {0x13, {"Secuencia de pulsos", 2, 1, 1, 2}},
    {0x14, {"Datos puros", 11, 8, 3, 1, true}},
    {0x15, {"Grabaci\xF3n directa", 9, 6, 3}},
    {0x16, {"C64 Standard Block"}},
    {0x17, {"C64 Turbo Block"}},
    // The kinds since 1.10 put their length right after the id; what they
    // hold is checked by their own parse.
    {kCswRecording, {"Grabaci\xF3n CSW", 5, 1, 4}},
    {kGeneralized, {"Datos generalizados", 5, 1, 4}},
    {0x20, {"Pausa/detenci\xF3n", 3}},
    {0x21, {"Inicio de grupo", 2, 1, 1}},
    {0x22, {"Final de grupo", 1}},
    {0x23, {"Salto al bloque", 3}},
    {0x24, {"Inicio de bucle", 3}},
    {0x25, {"Final de bucle", 1}},
    {0x26, {nullptr, 3, 1, 2, 2}},
    {0x27, {nullptr, 1}},
    {0x28, {"Seleccionar bloque", 3, 1, 2}},
    {0x2A, {"Parar la cinta si 48K", 5}},
    {kSignalLevel, {"Nivel de la se\361al", 5, 1, 4}},
    {0x30, {"Texto: ", 2, 1, 1}},
    {0x31, {"Mensaje:", 3, 2, 1}},
    // Its entries are walked one by one rather than trusted to the length.
    {0x32, {"Info de archivo", 4}},
    {0x33, {"Tipo de Hardware", 2, 1, 1, 3}},
    {0x34, {"Info de Emulaci\xF3n", 9}},
    {kCustomInfo, {"Info personalizada", 21, 17, 4}},
    {kSnapshot, {"Snapshot", 5, 2, 3}},
    {0x5A, {"Block Merge Marker", 10}},
    {0xFE, {"Final de la cinta"}},
};

constexpr std::array<BlockLayout, 256> LayoutTable() {
    std::array<BlockLayout, 256> table{};
    for (const KindLayout& k : kKinds)
        table[k.id] = k.layout;
    return table;
}

inline constexpr std::array<BlockLayout, 256> kLayouts = LayoutTable();

// The kinds that make up a tape's signal and the flow of its playing: what a
// read of the data alone keeps.
inline bool SignalOrFlow(std::uint32_t id) {
    return (id >= 0x10 && id <= 0x15) || id == kCswRecording || id == kGeneralized ||
           (id >= 0x20 && id <= 0x27) || id == kSignalLevel;
}

// The layout of a block id; an empty one for ids of no known kind. Looked up
// for every block read, so it stays a table in reach of the inliner.
inline const BlockLayout& LayoutOf(std::uint32_t id) {
    static constexpr BlockLayout kNone;
    return id < kLayouts.size() ? kLayouts[id] : kNone;
}

} // namespace cintal::detail
