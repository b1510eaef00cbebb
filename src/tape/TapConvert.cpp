#include "tape/TapConvert.h"

#include "tape/Content.h"
#include "tape/Prompt.h"
#include "tape/SafeWrite.h"
#include "tape/TZXFunct.h"

namespace cintal {

namespace {

void Refuse(const std::string& text) {
    Ask(text, "Convertir en TZX", Icon::Critical);
}

} // namespace

bool TapImageToTzx(std::string_view tap, Bytes& tzx) {
    tzx.clear();
    // First check that the lengths add up exactly, so that nothing is built
    // from a file that only looks like a TAP.
    std::size_t pos = 0, count = 0;
    while (pos < tap.size()) {
        if (tap.size() - pos < 2) return false;
        std::size_t len = static_cast<std::uint8_t>(tap[pos]) |
                          static_cast<std::size_t>(static_cast<std::uint8_t>(tap[pos + 1])) << 8;
        if (tap.size() - pos - 2 < len) return false;
        pos += 2 + len;
        ++count;
    }
    if (count == 0) return false;
    tzx.reserve(10 + tap.size() + 3 * count);
    tzx.append("ZXTape!\x1A\x01\x0D", 10);
    for (pos = 0; pos < tap.size();) {
        std::size_t len = static_cast<std::uint8_t>(tap[pos]) |
                          static_cast<std::size_t>(static_cast<std::uint8_t>(tap[pos + 1])) << 8;
        tzx += '\x10';
        tzx += '\xE8'; // pause of 1000 ms
        tzx += '\x03';
        tzx.append(tap.substr(pos, 2 + len));
        pos += 2 + len;
    }
    return true;
}

bool ConvertTapToTzx(const std::string& tapPath, std::string* tzxPath) {
    std::string tap;
    if (!detail::CurrentFileOps().Read(tapPath, tap)) {
        Ask("No se puede leer el archivo " + tapPath);
        return false;
    }
    Bytes tzx;
    if (!TapImageToTzx(tap, tzx)) {
        Refuse(tapPath + " no es un archivo TAP válido");
        return false;
    }
    const std::string dir = FolderOf(tapPath);
    const std::string target = JoinPath(dir, FileNameOf(tapPath) + ".tzx");
    std::string existing = ExistingFile(target);
    if (!existing.empty()) {
        Refuse("Ya existe " + existing);
        return false;
    }
    std::string temp, reason;
    if (!detail::WriteTempFile(dir, tzx, {}, temp, reason)) {
        Refuse("No se puede escribir " + target + ": " + reason);
        return false;
    }
    // Checked again right before the rename, which would replace a file made
    // in the meantime.
    existing = ExistingFile(target);
    if (!existing.empty() || !detail::RenameFile(temp, target, reason)) {
        std::string ignored;
        detail::RemoveFile(temp, ignored);
        Refuse(existing.empty() ? "No se puede escribir " + target + ": " + reason
                                : "Ya existe " + existing);
        return false;
    }
    if (tzxPath) *tzxPath = target;
    return true;
}

} // namespace cintal
