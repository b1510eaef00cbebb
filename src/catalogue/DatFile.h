#pragma once
// A DAT file of a preservation set (Logiqx XML): its header and, for each
// game, the files it is made of with their sizes and hashes.

#include <QString>
#include <vector>

class QIODevice;

namespace cintal {

struct DatRom {
    QString name;
    qint64 size = -1;         // -1 when the DAT doesn't say
    QString crc32, md5, sha1; // lower-case hex, empty when the DAT doesn't say
};

struct DatGame {
    QString name;
    std::vector<DatRom> roms;
};

struct Dat {
    QString name, description, version, category;
    std::vector<DatGame> games;
};

// Reads a whole DAT. False, with "línea N: motivo" in why, on anything that
// isn't a well-formed DAT; dat then holds nothing to keep.
bool ReadDat(QIODevice& device, Dat& dat, QString& why);
bool ReadDatFile(const QString& path, Dat& dat, QString& why);

} // namespace cintal
