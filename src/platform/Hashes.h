#pragma once
// What a file is known by, whatever its name: its size and the CRC32, MD5
// and SHA1 of its content, all four from one read.

#include <QByteArray>
#include <QString>

namespace cintal::platform {

struct ContentHashes {
    qint64 size = 0;
    QString crc32; // lower-case hexadecimal, 8 digits
    QString md5;
    QString sha1;
};

ContentHashes HashBytes(const char* data, qint64 size);
// Reads the file once, in large pieces. False when it can't be read.
bool HashFile(const QString& path, ContentHashes& hashes);

} // namespace cintal::platform
