#include "tape/Content.h"

#include "tape/SafeWrite.h"
#include "tape/TZXFunct.h"

namespace cintal {

std::optional<ExtractedFile> Extract(const Block& block, const BlockContent& content) {
    if (content.kind == ContentKind::None) return std::nullopt;
    if (content.kind == ContentKind::Program)
        return ExtractedFile{ListingOf(block, content), content.extension};
    return ExtractedFile{Bytes(ContentBytes(block, content)), content.extension};
}

std::string ProposedName(const std::string& tapePath, std::int64_t number,
                         const std::string& extension) {
    return JoinPath(FolderOf(tapePath),
                    FileNameOf(tapePath) + "-" + std::to_string(number) + "." + extension);
}

std::string ExistingFile(const std::string& path) {
    const std::string dir = FolderOf(path);
    std::string_view name = std::string_view(path).substr(dir.size());
    while (!name.empty() && (name.front() == '/' || name.front() == kPathSep))
        name.remove_prefix(1);
    if (name.empty()) return {};
    for (const std::string& entry : detail::CurrentFileOps().List(dir))
        if (detail::SameNameIgnoringCase(entry, name)) return JoinPath(dir, entry);
    return {};
}

namespace {

// Writes beside with writeTemp, then renames into place.
template <class WriteTemp>
bool WriteNewFile(const std::string& path, bool replace, std::string& reason, WriteTemp writeTemp) {
    auto refuse = [&](const std::string& existing) {
        reason = "ya existe " + existing;
        return false;
    };
    if (!replace) {
        const std::string existing = ExistingFile(path);
        if (!existing.empty()) return refuse(existing);
    }
    std::string temp;
    if (!writeTemp(FolderOf(path), path, temp, reason)) return false;
    // Looked at again right before the rename, which would replace a file
    // made in the meantime.
    const std::string existing = replace ? std::string() : ExistingFile(path);
    if (!existing.empty() || !detail::RenameFile(temp, path, reason)) {
        std::string ignored;
        detail::RemoveFile(temp, ignored);
        return existing.empty() ? false : refuse(existing);
    }
    return true;
}

} // namespace

bool WriteContentFile(const std::string& path, std::string_view bytes, bool replace,
                      std::string& reason) {
    return WriteNewFile(
        path, replace, reason,
        [&](const std::string& dir, const std::string& avoid, std::string& temp, std::string& why) {
            return detail::WriteTempFile(dir, bytes, avoid, temp, why);
        });
}

bool WriteContentFile(const std::string& path, const ByteSource& bytes, bool replace,
                      std::string& reason) {
    return WriteNewFile(
        path, replace, reason,
        [&](const std::string& dir, const std::string& avoid, std::string& temp, std::string& why) {
            return detail::WriteTempFile(dir, bytes, avoid, temp, why);
        });
}

} // namespace cintal
