#include "platform/Hashes.h"

#include <QCryptographicHash>
#include <QFile>
#include <zlib.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace cintal::platform {

namespace {

class Hasher {
public:
    void Add(const char* data, qint64 size) {
        total += size;
        const QByteArrayView view(data, size);
        // On a large piece MD5 runs beside the other two: one core alone
        // would not keep up with the disk.
        if (size >= kBeside) {
            std::thread beside([&] { md5.addData(view); });
            Crc(data, size);
            sha1.addData(view);
            beside.join();
            return;
        }
        Crc(data, size);
        md5.addData(view);
        sha1.addData(view);
    }
    ContentHashes Result() const {
        ContentHashes h;
        h.size = total;
        h.crc32 = QStringLiteral("%1").arg(static_cast<qulonglong>(crc), 8, 16, QLatin1Char('0'));
        h.md5 = QString::fromLatin1(md5.result().toHex());
        h.sha1 = QString::fromLatin1(sha1.result().toHex());
        return h;
    }

private:
    static constexpr qint64 kBeside = 256 * 1024;

    void Crc(const char* data, qint64 size) {
        // zlib takes a 32-bit length.
        for (qint64 done = 0; done < size;) {
            const uInt piece = static_cast<uInt>(std::min<qint64>(size - done, 1 << 30));
            crc = crc32(crc, reinterpret_cast<const Bytef*>(data + done), piece);
            done += piece;
        }
    }

    qint64 total = 0;
    uLong crc = crc32(0L, Z_NULL, 0);
    QCryptographicHash md5{QCryptographicHash::Md5};
    QCryptographicHash sha1{QCryptographicHash::Sha1};
};

} // namespace

ContentHashes HashBytes(const char* data, qint64 size) {
    Hasher h;
    h.Add(data, size);
    return h.Result();
}

bool HashFile(const QString& path, ContentHashes& hashes) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return false;
    Hasher h;
    std::vector<char> buffer(1 << 20);
    for (;;) {
        const qint64 n = file.read(buffer.data(), static_cast<qint64>(buffer.size()));
        if (n < 0) return false;
        if (n == 0) break;
        h.Add(buffer.data(), n);
    }
    hashes = h.Result();
    return true;
}

} // namespace cintal::platform
