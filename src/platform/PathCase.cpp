#include "platform/PathCase.h"

#include <QDir>
#include <QFileInfo>

namespace cintal {

QString FindIgnoringCase(const QString& dir, const QStringList& parts) {
    if (dir.isEmpty()) return {};
    QString at = dir;
    for (int i = 0; i < parts.size(); ++i) {
        const QString& part = parts[i];
        const bool last = i == parts.size() - 1;
        const QString exact = QDir(at).filePath(part);
        const QFileInfo info(exact);
        if (info.exists() && (last ? info.isFile() : info.isDir())) {
            at = exact;
            continue;
        }
        const QDir d(at);
        if (!d.exists()) return {};
        const QStringList entries = d.entryList(
            last ? QDir::Files | QDir::Hidden : QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden,
            QDir::Name);
        QString found;
        for (const QString& e : entries) {
            if (e.compare(part, Qt::CaseInsensitive) == 0) {
                found = e;
                break;
            }
        }
        if (found.isEmpty()) return {};
        at = d.filePath(found);
    }
    return at;
}

} // namespace cintal
