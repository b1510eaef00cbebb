#include "platform/MoveFile.h"

#include "platform/ErrorText.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cintal::platform {

namespace {

bool Fail(QString* reason, int code) {
    if (reason) *reason = ErrorText(code);
    return false;
}

// Copies across volumes: beside the destination first, then linked into
// place, which refuses a name that appeared meanwhile.
bool CopyAcross(const QByteArray& from, const QByteArray& to, QString* reason) {
    const int in = ::open(from.constData(), O_RDONLY | O_CLOEXEC);
    if (in < 0) return Fail(reason, errno);
    struct stat st {};
    if (::fstat(in, &st) != 0) {
        const int e = errno;
        ::close(in);
        return Fail(reason, e);
    }
    const QByteArray part = QFile::encodeName(PartFile(QFile::decodeName(to)));
    const int out = ::open(part.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (out < 0) {
        const int e = errno;
        ::close(in);
        return Fail(reason, e);
    }
    char buffer[1 << 16];
    qint64 copied = 0;
    int error = 0;
    for (;;) {
        const ssize_t n = ::read(in, buffer, sizeof buffer);
        if (n < 0) {
            if (errno == EINTR) continue;
            error = errno;
            break;
        }
        if (n == 0) break;
        ssize_t done = 0;
        while (done < n) {
            const ssize_t w = ::write(out, buffer + done, static_cast<size_t>(n - done));
            if (w < 0) {
                if (errno == EINTR) continue;
                error = errno;
                break;
            }
            done += w;
        }
        if (error) break;
        copied += n;
    }
    ::close(in);
    if (!error && ::fsync(out) != 0) error = errno;
    if (::close(out) != 0 && !error) error = errno;
    if (!error && copied != static_cast<qint64>(st.st_size)) error = EIO;
    if (!error && ::link(part.constData(), to.constData()) != 0) error = errno;
    ::unlink(part.constData());
    if (error) return Fail(reason, error);
    if (::unlink(from.constData()) != 0) {
        // Both copies stand: the new one goes, so that the file is in one place.
        const int e = errno;
        ::unlink(to.constData());
        return Fail(reason, e);
    }
    return true;
}

} // namespace

bool MoveNoReplace(const QString& from, const QString& to, QString* reason) {
    const QByteArray f = QFile::encodeName(from);
    const QByteArray t = QFile::encodeName(to);
    if (::renameat2(AT_FDCWD, f.constData(), AT_FDCWD, t.constData(), RENAME_NOREPLACE) == 0)
        return true;
    int e = errno;
    if (e == EINVAL || e == ENOSYS) {
        // A file system without the atomic move: a second name, then the
        // first one goes. The link refuses an existing name just the same.
        if (::link(f.constData(), t.constData()) == 0) {
            ::unlink(f.constData());
            return true;
        }
        e = errno;
    }
    if (e == EXDEV) return CopyAcross(f, t, reason);
    return Fail(reason, e);
}

QString PartFile(const QString& to) {
    return to + QStringLiteral(".cintal-part");
}

bool IsLeftoverPart(const QString& from, const QString& part) {
    const QFileInfo p(part), f(from);
    if (p.isSymLink() || !p.isFile() || !f.isFile() || p.size() > f.size()) return false;
    QFile a(part), b(from);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly)) return false;
    while (!a.atEnd()) {
        const QByteArray chunk = a.read(1 << 16);
        if (chunk.isEmpty() || b.read(chunk.size()) != chunk) return false;
    }
    return true;
}

bool RemoveLeftoverPart(const QString& from, const QString& part, QString* reason) {
    if (!IsLeftoverPart(from, part)) {
        if (reason) *reason = QStringLiteral("no es una copia a medias de %1").arg(from);
        return false;
    }
    if (::unlink(QFile::encodeName(part).constData()) == 0) return true;
    return Fail(reason, errno);
}

bool MakeFolder(const QString& path, QString* reason) {
    if (::mkdir(QFile::encodeName(path).constData(), 0777) == 0) return true;
    return Fail(reason, errno);
}

} // namespace cintal::platform
