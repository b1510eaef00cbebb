#include "tape/Decoders.h"

#include <utility>
#include <vector>

namespace cintal::detail {

namespace {

// A window on one block. Fixed fields are read only after Has() says they are
// there; data bytes past the end of the image read as 0.
class View {
public:
    View(std::string_view image, std::size_t start) : rest(image.substr(start)) {}

    bool Has(std::int64_t n) const { return static_cast<std::int64_t>(rest.size()) >= n; }
    std::uint32_t U8(std::int64_t off) const {
        return off >= 0 && off < static_cast<std::int64_t>(rest.size())
                   ? static_cast<std::uint8_t>(rest[static_cast<std::size_t>(off)])
                   : 0u;
    }
    std::uint32_t U16(std::int64_t off) const { return U8(off) | U8(off + 1) << 8; }
    std::uint32_t U24(std::int64_t off) const { return U16(off) | U8(off + 2) << 16; }
    std::uint32_t U32(std::int64_t off) const { return U24(off) | U8(off + 3) << 24; }
    // The bytes from off, at most n, that the image holds.
    std::string_view Bytes(std::int64_t off, std::int64_t n) const {
        if (off < 0 || n <= 0 || off >= static_cast<std::int64_t>(rest.size())) return {};
        return rest.substr(static_cast<std::size_t>(off), static_cast<std::size_t>(n));
    }

private:
    std::string_view rest;
};

const std::string kLineEnd = "      ................... ";

std::string Num(std::int64_t n) {
    return std::to_string(n);
}

void StandardText(const View& v, std::int64_t len, DecodeState& st, std::string& out) {
    if (len == 0) return;
    // A flag byte the file doesn't hold reads as data: a header has to say so.
    std::uint32_t flag = v.Has(6) ? v.U8(5) : 0xFF;
    std::uint32_t type = v.U8(6); // with len 1, the byte after the block: only looked at
    std::string name;
    if (len - 2 >= 10) {
        name.resize(10);
        for (int i = 0; i < 10; ++i) {
            std::uint32_t c = v.U8(7 + i);
            name[i] = (c >= 0x20 && c <= 0x7D) ? static_cast<char>(c) : '?';
        }
    }
    if (flag == 0) {
        if (type == 0) {
            out = "BASIC: " + name + "      ";
            st.pendingHeader = true;
        } else if (type == 3) {
            out = "CODE:  " + name;
            st.pendingHeader = true;
        } else {
            out = "Num/Char array - " + Num(len - 2) + " bytes";
        }
        return;
    }
    std::string count = len <= 1 ? "0" : Num(len - 2);
    if (st.pendingHeader) {
        out = "      Datos - " + count + " bytes";
        st.pendingHeader = false;
    } else {
        out = "Datos - " + count + " bytes";
    }
}

void CustomText(const View& v, std::int64_t len, std::string& out) {
    std::string_view id = v.Bytes(1, 16);
    // The data as far as both the block and the image go; missing bytes read 0.
    View data(v.Bytes(21, len), 0);
    switch (CustomIdOf(id)) {
    case CustomId::Pokes:
        out = "Pokes";
        break;
    case CustomId::Text:
        out = "Instrucciones";
        break;
    case CustomId::ZxEdit:
        out = "ZX-EDIT Doc";
        break;
    case CustomId::Screen: {
        std::uint32_t n = data.U8(0);
        out = "Archivo scr:  ";
        out += n == 0 ? std::string_view("Pantalla de carga") : data.Bytes(1, n);
        break;
    }
    case CustomId::Picture: {
        out = data.U8(0) == 0 ? "Imagen Gif: " : "Imagen Jpeg: ";
        std::uint32_t n = data.U8(1);
        out += n == 0 ? std::string_view("Car\xE1tula de la cinta") : data.Bytes(2, n);
        break;
    }
    case CustomId::Other:
        out = id;
        break;
    }
}

} // namespace

CustomId CustomIdOf(std::string_view id) {
    while (!id.empty() && (id.back() == ' ' || id.back() == '\0'))
        id.remove_suffix(1);
    if (id == "Spectrum Screen") return CustomId::Screen;
    if (id == "Picture") return CustomId::Picture;
    if (id == "Instructions") return CustomId::Text;
    if (id == "ZX-Edit document") return CustomId::ZxEdit;
    if (id == "POKEs") return CustomId::Pokes;
    return CustomId::Other;
}

Decoded DecodeBlock(std::string_view image, std::size_t start, DecodeState& st,
                    ArchiveInfo* archive) {
    View v(image, start);
    Decoded d;
    auto fixed = [&](std::int64_t n) {
        if (v.Has(n)) return true;
        d.result = Decode::CutFields;
        return false;
    };
    switch (v.U8(0)) {
    case 0x10: {
        if (!fixed(5)) break;
        std::int64_t len = v.U16(3);
        d.size = 5 + len;
        StandardText(v, len, st, d.descr);
        break;
    }
    case 0x11: {
        if (!fixed(19)) break;
        std::int64_t len = v.U24(16);
        d.size = 19 + len;
        d.descr = "Turbo block - " + Num(len - 2) + " bytes";
        break;
    }
    case 0x12:
        if (!fixed(5)) break;
        d.size = 5;
        d.descr = " Pure tone";
        break;
    case 0x13:
        if (!fixed(2)) break;
        d.size = 2 + 2 * static_cast<std::int64_t>(v.U8(1));
        d.descr = " Seq. of pulses";
        break;
    case 0x14: {
        if (!fixed(11)) break;
        std::int64_t len = v.U24(8);
        d.size = 11 + len;
        d.descr = " Pure Data block - " + Num(len) + " bytes";
        break;
    }
    case 0x15: {
        if (!fixed(9)) break;
        std::int64_t len = v.U24(6);
        d.size = 9 + len;
        d.descr = "Direct recording: " + Num(len);
        break;
    }
    case 0x20: {
        if (!fixed(3)) break;
        d.size = 3;
        std::uint32_t pause = v.U16(1);
        d.descr = pause == 0 ? "Detener la cinta" : "Pausa de " + Num(pause) + " mseg.";
        break;
    }
    case 0x21:
        if (!fixed(2)) break;
        d.size = 2 + v.U8(1);
        d.descr = v.Bytes(2, v.U8(1));
        break;
    case 0x22:
    case 0x25:
        d.size = 1;
        d.descr = kLineEnd;
        break;
    case 0x23: {
        if (!fixed(3)) break;
        d.size = 3;
        // A signed jump counted from the jump block itself; rows count from 1.
        std::int64_t target = st.ordinal + static_cast<std::int16_t>(v.U16(1));
        d.descr = target < 1 ? "**SALTO A BLOQUE ERRONEO**" : "Bloque:" + Num(target);
        break;
    }
    case 0x24:
        if (!fixed(3)) break;
        d.size = 3;
        d.descr = Num(v.U16(1)) + " repeticiones";
        break;
    case 0x26:
        if (!fixed(3)) break;
        d.size = 3 + 2 * static_cast<std::int64_t>(v.U16(1));
        d.descr = "-->>";
        break;
    case 0x27:
        d.size = 1;
        d.descr = "RETURN";
        break;
    case 0x28:
        if (!fixed(3)) break;
        d.size = 3 + static_cast<std::int64_t>(v.U16(1));
        d.descr = "-->>";
        break;
    case 0x2A:
        if (!fixed(5)) break;
        d.size = 5;
        d.descr = "-- STOP --";
        break;
    case 0x30:
        if (!fixed(2)) break;
        d.size = 2 + v.U8(1);
        d.descr = v.Bytes(2, v.U8(1));
        break;
    case 0x31:
        if (!fixed(3)) break;
        d.size = 3 + v.U8(2);
        d.descr = v.Bytes(3, v.U8(2));
        break;
    case 0x32: {
        // Every entry is a fixed field: a cut entry ends the walk and the
        // texts before it are not kept either.
        if (!fixed(4)) break;
        std::uint32_t count = v.U8(3);
        std::int64_t off = 4;
        std::vector<std::pair<int, std::string_view>> texts;
        texts.reserve(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            if (!fixed(off + 2)) break;
            std::uint32_t len = v.U8(off + 1);
            if (!fixed(off + 2 + len)) break;
            texts.emplace_back(static_cast<int>(v.U8(off)), v.Bytes(off + 2, len));
            off += 2 + len;
        }
        if (d.result != Decode::Ok) break;
        d.size = off;
        for (const auto& [id, text] : texts) {
            if (id == 0) d.descr = text;
            if (archive)
                if (std::string* field = ArchiveTextFor(*archive, id)) *field = text;
        }
        break;
    }
    case 0x33:
        if (!fixed(2)) break;
        d.size = 2 + 3 * static_cast<std::int64_t>(v.U8(1));
        break;
    case 0x34:
        if (!fixed(9)) break;
        d.size = 9;
        break;
    case 0x35: {
        if (!fixed(21)) break;
        std::int64_t len = v.U32(17);
        d.size = 21 + len;
        CustomText(v, len, d.descr);
        break;
    }
    case 0x40:
        if (!fixed(5)) break;
        d.size = 5 + static_cast<std::int64_t>(v.U24(2));
        d.descr = "SNAPSHOT";
        break;
    case 0x5A:
        if (!fixed(10)) break;
        d.size = 10;
        d.descr = "XXXXXXXXXXXXXX";
        break;
    default:
        d.result = Decode::Unknown;
        break;
    }
    return d;
}

} // namespace cintal::detail
