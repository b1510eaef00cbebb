#include "catalogue/Comunes.h"

#include "catalogue/Settings.h"
#include "catalogue/Store.h"
#include "platform/Places.h"
#include "tape/Cp1252.h"

namespace cintal::Comunes {

namespace {
// Each publisher's name in lower case, with its lowest IdPub.
QHash<QString, qint64> publishersLowered;
} // namespace

ArchiveInfo& Info() {
    if (!CurInfo) CurInfo = std::make_shared<ArchiveInfo>();
    return *CurInfo;
}

QString DefaultDbPath() {
    return Places::CatalogueFile();
}

bool InitGlobals(const QString& path, QString* reason) {
    DbPath = path.isEmpty() ? DefaultDbPath() : path;
    if (!Store::Open(DbPath, reason)) return false;
    {
        // A catalogue whose registers can't be read is one that can't be
        // opened: one message, in the caller's words.
        QuietErrors quiet;
        if (!LoadPaths() || !LoadPublishers()) {
            if (reason) *reason = Store::LastError();
            Store::Close();
            return false;
        }
    }
    EmulPath =
        GetSetting(QStringLiteral("Emulador"), QStringLiteral("DefaultEmulPath"),
                   QStringLiteral("C:\\Archivos de programa\\Spectaculator\\spectaculator.exe"));
    Tap2TzxPath = QStringLiteral("c:\\utils\\tap2tzx.exe");
    return true;
}

bool LoadPublishers() {
    PublisherNames.assign(1, QString());
    publishersLowered.clear();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT IdPub FROM Publishers ORDER BY IdPub DESC LIMIT 1")) return false;
    if (!q.next()) return true;
    const qint64 top = NumberOf(q.value(0));
    q.finish();
    if (top < 0) return true;
    PublisherNames.assign(static_cast<std::size_t>(top) + 1, QString());
    if (!Store::Exec(q, "SELECT IdPub, PublisherName FROM Publishers")) return false;
    while (q.next()) {
        const qint64 id = NumberOf(q.value(0));
        if (id >= 0 && id <= top) PublisherNames[static_cast<std::size_t>(id)] = TextOf(q.value(1));
    }
    for (std::size_t i = PublisherNames.size(); i-- > 0;)
        if (!PublisherNames[i].isEmpty())
            publishersLowered.insert(PublisherNames[i].toLower(), static_cast<qint64>(i));
    return true;
}

bool LoadPaths() {
    // With an empty table the register still has the columns 0 and 1.
    PathTable.number.assign(2, QString());
    PathTable.dir.assign(2, QString());
    PathTable.lowered.clear();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT PathIndex FROM Paths ORDER BY PathIndex DESC LIMIT 1"))
        return false;
    if (!q.next()) return true;
    const qint64 top = NumberOf(q.value(0));
    q.finish();
    if (top < 1) return true;
    PathTable.number.assign(static_cast<std::size_t>(top) + 1, QString());
    PathTable.dir.assign(static_cast<std::size_t>(top) + 1, QString());
    if (!Store::Exec(q, "SELECT PathIndex, GameDir FROM Paths ORDER BY PathIndex")) return false;
    while (q.next()) {
        const qint64 i = NumberOf(q.value(0));
        if (i < 1 || i > top) continue;
        PathTable.number[static_cast<std::size_t>(i)] = QString::number(i);
        PathTable.dir[static_cast<std::size_t>(i)] = TextOf(q.value(1));
    }
    // Downwards, so that the lowest number of a folder written twice wins.
    for (qint64 n = top; n >= 1; --n) {
        const QString& dir = PathTable.dir[static_cast<std::size_t>(n)];
        if (!PathTable.number[static_cast<std::size_t>(n)].isEmpty() && !dir.isEmpty())
            PathTable.lowered.insert(dir.toLower(), n);
    }
    return true;
}

bool RegisterPublisher(qint64 idPub, const QString& name) {
    if (idPub < 1 || idPub != static_cast<qint64>(PublisherNames.size()) ||
        (PublisherNames.size() == 1 && PublisherNames[0].isEmpty()))
        return LoadPublishers();
    PublisherNames.push_back(name);
    if (!name.isEmpty() && !publishersLowered.contains(name.toLower()))
        publishersLowered.insert(name.toLower(), idPub);
    return true;
}

QString PublisherName(qint64 idPub) {
    if (idPub < 0 || idPub >= static_cast<qint64>(PublisherNames.size())) return {};
    return PublisherNames[static_cast<std::size_t>(idPub)];
}

qint64 FindPublisher(const QString& name) {
    if (name.isEmpty()) return -1;
    if (name.compare(kUnknownPublisher, Qt::CaseInsensitive) == 0) return 0;
    return publishersLowered.value(name.toLower(), -1);
}

QString FromTape(const std::string& cp1252) {
    return QString::fromStdString(Cp1252ToUtf8(cp1252));
}

std::string ToTape(const QString& text) {
    return Utf8ToCp1252(text.toStdString());
}

void Reset() {
    Store::Close();
    DbPath.clear();
    PublisherNames.clear();
    PathTable = {};
    EmulPath.clear();
    Tap2TzxPath.clear();
    CurTape.reset();
    CurInfo.reset();
    CurName.clear();
    publishersLowered.clear();
}

} // namespace cintal::Comunes
