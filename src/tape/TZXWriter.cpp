#include "tape/Prompt.h"
#include "tape/SafeWrite.h"
#include "tape/TZXFunct.h"
#include "tape/TZXTape.h"

namespace cintal {

namespace {

// A length byte holds at most 255: longer texts are cut on writing only.
constexpr std::size_t kMaxText = 255;

Bytes BuildArchiveBlock(const ArchiveInfo& info) {
    Bytes body;
    int count = 0;
    for (const auto& f : kArchiveFields) {
        const std::string& text = info.*(f.field);
        if (text.empty() || text == " ") continue;
        std::size_t n = std::min(text.size(), kMaxText);
        body += static_cast<char>(f.id);
        body += static_cast<char>(n);
        body.append(text, 0, n);
        ++count;
    }
    if (count == 0) return {};
    // Eleven entries of at most 257 bytes each: the length always fits a WORD.
    std::size_t length = body.size() + 1;
    Bytes out;
    out.reserve(length + 3);
    out += '\x32';
    out += static_cast<char>(length & 0xFF);
    out += static_cast<char>(length >> 8);
    out += static_cast<char>(count);
    out += body;
    return out;
}

void SaveError(const std::string& path, const std::string& reason) {
    Ask("No se puede guardar " + path + ": " + reason, "Guardar", Icon::Critical);
}

} // namespace

Bytes TZXTape::BloqueInfo() {
    return BuildArchiveBlock(ArchiveInfo());
}

Bytes TZXTape::Image(std::int16_t version, std::int16_t revision) const {
    Bytes info = archive ? BuildArchiveBlock(*archive) : Bytes();
    std::size_t total = 10 + info.size();
    if (blocks)
        for (const BlockRef& b : *blocks)
            if (b->IdTipoBloque != 0x32) total += b->Data().size();
    Bytes image;
    image.reserve(total);
    image.append("ZXTape!\x1A", 8);
    image += static_cast<char>(version);
    image += static_cast<char>(revision);
    image += info;
    if (blocks)
        for (const BlockRef& b : *blocks)
            if (b->IdTipoBloque != 0x32) image += b->Data();
    return image;
}

bool TZXTape::Save(const std::string& sFileName, bool UpdateVersion) {
    std::int64_t ordinal = 0, position = 0;
    if (!SafeToSave(&ordinal, &position)) {
        Ask("No se puede guardar: el archivo no se leyó completo (bloque " +
                std::to_string(ordinal) + ", byte " + std::to_string(position) +
                "). Guardarlo perdería bloques; el archivo no se ha modificado.",
            "Guardar", Icon::Critical);
        return false;
    }
    detail::FileOps& ops = detail::CurrentFileOps();
    if (!ops.Exists(sFileName)) {
        SaveError(sFileName, "el archivo no existe");
        return false;
    }

    std::int16_t v = FileVersion, r = FileRevision;
    auto mark = [&](int revision) {
        v = 1;
        r = static_cast<std::int16_t>(revision);
        Ask("Formato de archivo actualizado a la versión 1." + std::to_string(revision), {},
            Icon::Exclamation);
    };
    if (UpdateVersion && OlderThanRaised(v, r)) mark(kRaisedRevision);
    if (NewerThanSupported(v, r)) {
        if (Ask("La versión del archivo es superior a la versión soportada. Si guarda los "
                "cambios puede perderse información. ¿Desea continuar?",
                {}, Icon::Critical, Buttons::YesNo) != Button::Yes) {
            quietVersion = true;
            ReadTape();
            quietVersion = false;
            return false;
        }
        mark(kSupportedRevision);
    }

    const Bytes image = Image(v, r);
    // Both names stand beside the tape, the root included, so that the
    // renames never leave its folder.
    const std::string dir = FolderOf(sFileName);
    std::string backup = JoinPath(dir, FileNameOf(sFileName) + ".tmp");
    // A tape named like its own backup ("juego.tmp") is backed up as
    // "juego.tmp.tmp": removing the old backup must never remove the tape.
    for (int n = 0; detail::SameNameIgnoringCase(backup, sFileName) || ops.Same(backup, sFileName);
         ++n) {
        if (n == 8) {
            SaveError(sFileName, "no hay nombre libre para la copia");
            return false;
        }
        backup += ".tmp";
    }
    std::string temp, reason, ignored;
    if (!detail::WriteTempFile(dir, image, backup, temp, reason)) {
        SaveError(sFileName, reason);
        return false;
    }
    // The old file is touched only now that the new one is whole on disk.
    if (ops.Exists(backup) && !detail::RemoveFile(backup, reason)) {
        detail::RemoveFile(temp, ignored);
        SaveError(sFileName, "no se puede borrar la copia " + backup);
        return false;
    }
    if (!detail::RenameFile(sFileName, backup, reason)) {
        detail::RemoveFile(temp, ignored);
        SaveError(sFileName, reason);
        return false;
    }
    if (!detail::RenameFile(temp, sFileName, reason)) {
        detail::RemoveFile(temp, ignored);
        if (!detail::RenameFile(backup, sFileName, ignored))
            reason += ". El archivo tal como estaba queda en " + backup;
        SaveError(sFileName, reason);
        return false;
    }
    FileVersion = v;
    FileRevision = r;
    return true;
}

} // namespace cintal
