#pragma once
// Archives made in code with libarchive's writer, for the tests that read
// tapes inside them.

#include <archive.h>
#include <archive_entry.h>

#include <string>
#include <vector>

namespace cintal::test {

struct ZipEntry {
    std::string path;
    std::string bytes;
};

enum class ZipKind { Deflate, Stored, Encrypted };

inline bool WriteZip(const std::string& file, const std::vector<ZipEntry>& entries,
                     ZipKind kind = ZipKind::Deflate) {
    archive* a = archive_write_new();
    bool ok = archive_write_set_format_zip(a) == ARCHIVE_OK;
    if (kind == ZipKind::Stored)
        ok = ok && archive_write_set_options(a, "zip:compression=store") == ARCHIVE_OK;
    if (kind == ZipKind::Encrypted)
        ok = ok && archive_write_set_options(a, "zip:encryption=zipcrypt") == ARCHIVE_OK &&
             archive_write_set_passphrase(a, "clave") == ARCHIVE_OK;
    ok = ok && archive_write_open_filename(a, file.c_str()) == ARCHIVE_OK;
    for (const ZipEntry& e : entries) {
        if (!ok) break;
        archive_entry* entry = archive_entry_new();
        archive_entry_set_pathname(entry, e.path.c_str());
        archive_entry_set_size(entry, static_cast<la_int64_t>(e.bytes.size()));
        archive_entry_set_filetype(entry, AE_IFREG);
        archive_entry_set_perm(entry, 0644);
        ok = archive_write_header(a, entry) == ARCHIVE_OK &&
             archive_write_data(a, e.bytes.data(), e.bytes.size()) ==
                 static_cast<la_ssize_t>(e.bytes.size());
        archive_entry_free(entry);
    }
    ok = archive_write_close(a) == ARCHIVE_OK && ok;
    archive_write_free(a);
    return ok;
}

} // namespace cintal::test
