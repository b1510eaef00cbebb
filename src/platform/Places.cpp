#include "platform/Places.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace cintal::Places {

namespace {

const QString kFolder = QStringLiteral("cintal");

// The share/cintal of an installation, from its bin folder.
QString InstalledShare(const QString& programDir) {
    return QDir(programDir).absoluteFilePath(QStringLiteral("../share/cintal"));
}

} // namespace

Folders For(const QString& programDir) {
    const QDir dir(programDir);
    const bool installed = QFileInfo(InstalledShare(programDir)).isDir();
    if (QFileInfo::exists(dir.filePath(QStringLiteral("cintal.mdb"))) ||
        (!installed && QFileInfo(programDir).isWritable()))
        return {true, dir.absolutePath(), dir.absolutePath()};
    const auto user = [](QStandardPaths::StandardLocation where) {
        return QDir(QStandardPaths::writableLocation(where)).filePath(kFolder);
    };
    return {false, user(QStandardPaths::GenericDataLocation),
            user(QStandardPaths::GenericConfigLocation)};
}

Folders Current() {
    return For(QCoreApplication::applicationDirPath());
}

QString CatalogueFile() {
    return QDir(Current().data).filePath(QStringLiteral("cintal.mdb"));
}

QString SettingsFile() {
    return QDir(Current().config).filePath(QStringLiteral("cintal.ini"));
}

QString SharedFile(const QString& name) {
    const QString programDir = QCoreApplication::applicationDirPath();
    for (const QString& dir : {programDir, InstalledShare(programDir)}) {
        const QString path = QDir(dir).filePath(name);
        if (QFileInfo::exists(path)) return QDir::cleanPath(path);
    }
    const QString shared =
        QStandardPaths::locate(QStandardPaths::GenericDataLocation, kFolder + '/' + name);
    return shared.isEmpty() ? QDir(programDir).filePath(name) : shared;
}

} // namespace cintal::Places
