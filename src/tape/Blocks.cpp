#include "tape/Blocks.h"

#include "tape/Layout.h"
#include "tape/Prompt.h"
#include "tape/TZXFunct.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <optional>

namespace cintal {

namespace {

// A list position given as a number, as an index into the vector.
std::optional<std::size_t> IndexOf(double position, std::size_t count) {
    if (!(position >= 1) || position > static_cast<double>(count)) return std::nullopt;
    return static_cast<std::size_t>(std::llround(position)) - 1;
}

void AppendLe32(Bytes& out, std::uint32_t v) {
    for (int i = 0; i < 4; ++i)
        out += static_cast<char>((v >> (8 * i)) & 0xFF);
}

std::string Lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

constexpr const char* kSpecialNote = "comprobar si es especial";

} // namespace

std::string Blocks::BlockKindName(std::int32_t kind) {
    const char* name =
        kind >= 0 ? detail::LayoutOf(static_cast<std::uint32_t>(kind)).name : nullptr;
    if (name) return name;
    Ask("otro");
    return {};
}

BlockRef Blocks::Add(std::int32_t sIdTipoBloque, std::string sDescr, Bytes sBlockData,
                     double sLenghtTot, const std::string&, double sPosition) {
    auto b = std::make_shared<Block>();
    b->IdTipoBloque = sIdTipoBloque;
    b->SetData(std::move(sBlockData));
    b->Descr = std::move(sDescr);
    b->LenghtTot = static_cast<std::int64_t>(sLenghtTot);
    b->TipoBloque = BlockKindName(sIdTipoBloque);
    auto at = IndexOf(sPosition, list.size());
    if (sPosition > 0 && at)
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(*at), b);
    else
        list.push_back(b);
    return b;
}

void Blocks::Append(BlockRef block) {
    list.push_back(std::move(block));
}

BlockRef Blocks::Item(double vntIndexKey) const {
    auto at = IndexOf(vntIndexKey, list.size());
    return at ? list[*at] : nullptr;
}

void Blocks::WarnRemoval(std::int32_t kind) {
    switch (kind) {
    case 0x21:
        Ask("va a eliminar un bloque de tipo \"Inicio de grupo\". Debe eliminar también el "
            "correspondiente bloque \"Final de grupo\"");
        break;
    case 0x22:
        Ask("va a eliminar un bloque de tipo \"Final de grupo\". Debe eliminar también el "
            "correspondiente bloque \"Inicio de grupo\"");
        break;
    case 0x24:
    case 0x25:
    case 0x26:
    case 0x27:
        Ask(kSpecialNote);
        break;
    default:
        break;
    }
}

void Blocks::Remove(double vntIndexKey) {
    auto at = IndexOf(vntIndexKey, list.size());
    if (!at) return;
    WarnRemoval(list[*at]->IdTipoBloque);
    RemoveAt(*at);
}

void Blocks::RemoveMarked(const std::vector<bool>& marked) {
    std::size_t kept = 0;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (!marked[i]) list[kept++] = std::move(list[i]);
    list.resize(kept);
}

BlockRef Blocks::Move(double BlockNumber, bool Up) {
    if (BlockNumber == 0) return nullptr;
    if (Up && BlockNumber < 2) return nullptr;
    if (!Up && BlockNumber == static_cast<double>(list.size())) return nullptr;
    auto at = IndexOf(BlockNumber, list.size());
    if (!at) return nullptr;

    // The moved block is a new object: a reference held from before no longer
    // points into the list.
    auto moved = std::make_shared<Block>(*list[*at]);
    RemoveAt(*at);
    std::size_t dest = Up ? *at - 1 : *at + 1;
    list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(dest, list.size())), moved);
    Ask(kSpecialNote);
    return moved;
}

// Both clean-ups walk from the last block to the first, as one Remove after
// another would, and warn in that order; the blocks then go in one pass, so
// that a tape of thousands of merges is not shifted once per block.
std::int64_t Blocks::DelBlockDupe(double chkTipoBloque) {
    std::vector<bool> marked(list.size());
    std::int64_t seen = 0, removed = 0;
    for (std::size_t i = list.size(); i-- > 0;) {
        if (list[i]->IdTipoBloque != chkTipoBloque) continue;
        if (seen++ == 0) continue; // the one nearest the end stays
        WarnRemoval(list[i]->IdTipoBloque);
        marked[i] = true;
        ++removed;
    }
    if (removed) RemoveMarked(marked);
    return removed;
}

std::int64_t Blocks::CheckRedundantBlocks() {
    std::vector<bool> marked(list.size());
    std::int64_t removed = 0;
    for (std::size_t i = list.size(); i-- > 0;) {
        if (list[i]->IdTipoBloque != 0x5A) continue;
        marked[i] = true;
        ++removed;
    }
    if (removed) RemoveMarked(marked);
    removed += DelBlockDupe(0x32);
    Ask("Eliminados " + std::to_string(removed) + " bloques sobrantes.", {}, Icon::Information);
    return removed;
}

void Blocks::MakeNewBlock(std::int32_t sIdTipoBloque, const std::string& sFileName, double& sBefore,
                          std::string& sDescr, std::int32_t, std::int32_t sAttType) {
    if (sBefore < 1) sBefore = 1;
    Bytes data;
    if (sIdTipoBloque == 0x35) {
        switch (sAttType) {
        case 1: {
            std::string ext = ExtensionOf(sFileName);
            if (ext == "gif")
                sDescr = "Imagen Gif:" + sDescr;
            else if (ext == "jpg")
                sDescr = "Imagen Jpeg: " + sDescr;
            data = CustomBlockData(sFileName, sDescr);
            break;
        }
        case 2:
        case 5:
            data = CustomBlockData(sFileName, sDescr);
            break;
        case 3:
            data = CustomBlockData(sFileName, {});
            break;
        default:
            break;
        }
    }
    Add(sIdTipoBloque, sDescr, data, static_cast<double>(data.size()), {}, sBefore);
}

Bytes Blocks::CustomBlockData(const std::string& sFileName, const std::string& sDescr) {
    if (!FileExists(sFileName)) return {};
    // Exact comparison on purpose: only lower-case extensions make blocks.
    std::string ext = ExtensionOf(sFileName);
    if (ext == "scr" || ext == "gif" || ext == "jpg" || ext == "jpeg" || ext == "zed")
        return MediaBlockData(sFileName, sDescr);
    if (ext == "txt") {
        Ask("comprobar que no hay otra info");
        return TextBlockData(sFileName);
    }
    if (ext == "pok") return PokBlockData(sFileName);
    return {};
}

Bytes Blocks::PokBlockData(const std::string&) {
    return {};
}

Bytes Blocks::MediaBlockData(const std::string& sFileName, const std::string& sDescr) {
    Bytes file;
    if (!ReadWholeFile(sFileName, file)) return {};
    std::string ext = Lower(ExtensionOf(sFileName));
    const char* id = nullptr;
    int lead = -1, trail = -1;
    if (ext == "gif") {
        id = "Picture         ";
        lead = 0;
    } else if (ext == "jpg" || ext == "jpeg") {
        id = "Picture         ";
        lead = 1;
    } else if (ext == "scr") {
        id = "Spectrum Screen ";
        trail = 0;
    } else if (ext == "zed") {
        id = "ZX-Edit document";
    } else {
        return {};
    }
    // The description's length has one byte: a longer text is cut to fit.
    std::string descr = sDescr.substr(0, 255);
    Bytes body;
    body.reserve(file.size() + descr.size() + 3);
    if (lead >= 0) body += static_cast<char>(lead);
    body += static_cast<char>(descr.size());
    body += descr;
    if (trail >= 0) body += static_cast<char>(trail);
    body += file;
    if (body.size() > 0xFFFFFFFFu) return {};
    Bytes out;
    out.reserve(body.size() + 21);
    out += '\x35';
    out.append(id, 16);
    AppendLe32(out, static_cast<std::uint32_t>(body.size()));
    out += body;
    return out;
}

Bytes Blocks::TextBlockData(const std::string& sFileName) {
    Bytes file;
    if (!ReadWholeFile(sFileName, file)) return {};
    Ask("esto falla!");
    if (file.size() > 0xFFFFFFFFu) return {};
    Bytes out;
    out.reserve(file.size() + 21);
    out += '\x35';
    out.append("Instructions    ", 16);
    AppendLe32(out, static_cast<std::uint32_t>(file.size()));
    out += file;
    return out;
}

} // namespace cintal
