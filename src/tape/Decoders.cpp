#include "tape/Decoders.h"

#include "tape/Layout.h"
#include "tape/PulseBlocks.h"

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
    std::uint32_t U8(std::int64_t off) const { return detail::U8(rest, At(off)); }
    std::uint32_t U16(std::int64_t off) const { return detail::U16(rest, At(off)); }
    // The bytes from off, at most n, that the image holds.
    std::string_view Bytes(std::int64_t off, std::int64_t n) const {
        return n <= 0 ? std::string_view() : Sub(rest, At(off), static_cast<std::size_t>(n));
    }
    std::string_view All() const { return rest; }

private:
    static std::size_t At(std::int64_t off) {
        return off < 0 ? static_cast<std::size_t>(-1) : static_cast<std::size_t>(off);
    }

    std::string_view rest;
};

const std::string kLineEnd = "      ................... ";

std::string Num(std::int64_t n) {
    return std::to_string(n);
}

// "1 pulso", "2 pulsos".
std::string Count(std::int64_t n, const std::string& noun) {
    return Num(n) + " " + noun + (n == 1 ? "" : "s");
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

// Said of a block whose fields promise more than it holds, or hold what no
// tape can: it is kept as it stands and read only as far as it goes. (\361
// is an ñ in Windows-1252: a hex escape would swallow the "a".)
const std::string kDamaged = " (da\361ado)";

std::string CswText(std::string_view block) {
    const CswBlock c = ParseCsw(block);
    std::string out = "CSW " + Num(c.sampleRate) + " Hz, ";
    switch (c.compression) {
    case static_cast<std::uint32_t>(CswCompression::Rle):
        out += "RLE";
        break;
    case static_cast<std::uint32_t>(CswCompression::ZRle):
        out += "Z-RLE";
        break;
    default:
        out += "compresi\xF3n " + Num(c.compression);
        break;
    }
    out += ", " + Count(c.pulses, "pulso");
    return c.damaged ? out + kDamaged : out;
}

std::string GeneralizedText(std::string_view block) {
    const GeneralizedBlock g = ParseGeneralized(block);
    // The data first: a list too narrow for the whole text still tells
    // blocks apart.
    std::string out = "Datos: " + Count(g.data.count, "s\xEDmbolo") +
                      ", piloto/sinc.: " + Num(g.pilot.count) + ", pausa de " + Num(g.pauseMs) +
                      " mseg.";
    return g.damaged ? out + kDamaged : out;
}

std::string LevelText(std::string_view block) {
    const LevelBlock l = ParseLevel(block);
    if (!l.damaged) return l.high ? "Nivel alto" : "Nivel bajo";
    return "Nivel " + Num(l.level) + kDamaged;
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
    const std::uint32_t id = v.U8(0);
    const BlockLayout& layout = LayoutOf(id);
    if (!layout.Read()) {
        d.result = Decode::Unknown;
        return d;
    }
    if (!fixed(layout.fixed)) return d;
    const std::int64_t len = layout.Length(v.All());
    d.size = layout.Size(v.All());
    switch (id) {
    case 0x10:
        StandardText(v, len, st, d.descr);
        break;
    case 0x11:
        d.descr = "Turbo block - " + Num(len - 2) + " bytes";
        break;
    case 0x12:
        d.descr = " Pure tone";
        break;
    case 0x13:
        d.descr = " Seq. of pulses";
        break;
    case 0x14:
        d.descr = " Pure Data block - " + Num(len) + " bytes";
        break;
    case 0x15:
        d.descr = "Direct recording: " + Num(len);
        break;
    case kCswRecording:
        d.descr = CswText(v.Bytes(0, d.size));
        break;
    case kGeneralized:
        d.descr = GeneralizedText(v.Bytes(0, d.size));
        break;
    case kSignalLevel:
        d.descr = LevelText(v.Bytes(0, d.size));
        break;
    case 0x20: {
        std::uint32_t pause = v.U16(1);
        d.descr = pause == 0 ? "Detener la cinta" : "Pausa de " + Num(pause) + " mseg.";
        break;
    }
    case 0x21:
    case 0x30:
    case 0x31:
        d.descr = v.Bytes(layout.fixed, len);
        break;
    case 0x22:
    case 0x25:
        d.descr = kLineEnd;
        break;
    case 0x23: {
        // A signed jump counted from the jump block itself; rows count from 1.
        std::int64_t target = st.ordinal + static_cast<std::int16_t>(v.U16(1));
        d.descr = target < 1 ? "**SALTO A BLOQUE ERRONEO**" : "Bloque:" + Num(target);
        break;
    }
    case 0x24:
        d.descr = Num(v.U16(1)) + " repeticiones";
        break;
    case 0x26:
    case 0x28:
        d.descr = "-->>";
        break;
    case 0x27:
        d.descr = "RETURN";
        break;
    case 0x2A:
        d.descr = "-- STOP --";
        break;
    case 0x32: {
        // Every entry is a fixed field: a cut entry ends the walk and the
        // texts before it are not kept either.
        std::uint32_t count = v.U8(3);
        std::int64_t off = layout.fixed;
        std::vector<std::pair<int, std::string_view>> texts;
        texts.reserve(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            if (!fixed(off + 2)) break;
            std::uint32_t textLen = v.U8(off + 1);
            if (!fixed(off + 2 + textLen)) break;
            texts.emplace_back(static_cast<int>(v.U8(off)), v.Bytes(off + 2, textLen));
            off += 2 + textLen;
        }
        if (d.result != Decode::Ok) {
            d.size = 0;
            break;
        }
        d.size = off;
        for (const auto& [kind, text] : texts) {
            if (kind == 0) d.descr = text;
            if (archive)
                if (std::string* field = ArchiveTextFor(*archive, kind)) *field = text;
        }
        break;
    }
    case kCustomInfo:
        CustomText(v, len, d.descr);
        break;
    case kSnapshot:
        d.descr = "SNAPSHOT";
        break;
    case 0x5A:
        d.descr = "XXXXXXXXXXXXXX";
        break;
    default:
        break;
    }
    return d;
}

} // namespace cintal::detail
