#pragma once

#include <cstdint>
#include <string>

namespace cintal {

// Byte strings: one char per file byte, every value 0..255, zero bytes allowed.
using Bytes = std::string;

// One block of a tape, kept as its exact raw bytes plus a display text.
// Texts (TipoBloque, Descr) are Windows-1252 bytes, decoded where shown.
struct Block {
    std::string Key; // reserved, never assigned
    std::int32_t IdTipoBloque = 0;
    std::string TipoBloque; // kind name, empty for kinds without one
    std::string Descr;
    double Inicio = 0; // reserved
    double Fin = 0;    // reserved
    Bytes BlockData;   // the whole block, id byte included
    std::int64_t LenghtTot = 0;

    // Set by the reader when the file ended inside this block's data: the
    // block holds fewer bytes than LenghtTot says. Such a tape can only be
    // saved while this block stays last, so that no byte is lost or moved.
    bool CutShort = false;
};

} // namespace cintal
