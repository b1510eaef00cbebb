#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace cintal {

// Byte strings: one char per file byte, every value 0..255, zero bytes allowed.
using Bytes = std::string;

// One block of a tape, its exact raw bytes plus a display text.
// Texts (TipoBloque, Descr) are Windows-1252 bytes, decoded where shown.
//
// A block read from a file is a view into the file's image, which all the
// blocks of that read share; a block made or given bytes later owns them.
// Either way the bytes never change once set: an edit replaces them.
struct Block {
    std::string Key; // reserved, never assigned
    std::int32_t IdTipoBloque = 0;
    std::string TipoBloque; // kind name, empty for kinds without one
    std::string Descr;
    double Inicio = 0; // reserved
    double Fin = 0;    // reserved
    std::int64_t LenghtTot = 0;

    // Set by the reader when the file ended inside this block's data: the
    // block holds fewer bytes than LenghtTot says. Such a tape can only be
    // saved while this block stays last, so that no byte is lost or moved.
    bool CutShort = false;

    // The whole block, id byte included.
    std::string_view Data() const { return data; }
    // The block owns these bytes from now on.
    void SetData(Bytes bytes) {
        auto owned = std::make_shared<const Bytes>(std::move(bytes));
        data = *owned;
        holder = std::move(owned);
    }
    // The block is bytes of an image that others may share, kept alive by keep.
    void SetView(std::shared_ptr<const void> keep, std::string_view bytes) {
        data = bytes;
        holder = std::move(keep);
    }

private:
    std::shared_ptr<const void> holder; // keeps data alive
    std::string_view data;
};

} // namespace cintal
