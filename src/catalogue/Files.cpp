#include "catalogue/Files.h"

#include "catalogue/Store.h"
#include "platform/PathCase.h"

#include <algorithm>

namespace cintal {

namespace {

const char* const kFileRowSelect =
    "SELECT FileId, TitleId, FileName, Extension, PathIndex, Memory, Players, FileSize, Origin, "
    "IdLang, LoadSchema, HaveIt, Joysticks, AYSound, MultiLoad, InnerPath, Crc32, "
    // The game the file is in the first DAT that knows it, as "identify" says.
    "(SELECT g.Name FROM FileMatches m JOIN DatRoms r ON r.RomId = m.RomId "
    "JOIN DatGames g ON g.GameId = r.GameId WHERE m.FileId = tFiles.FileId "
    "ORDER BY m.DatId, m.Rank DESC, m.RomId LIMIT 1) FROM tFiles ";

FileRow FileRowOf(const QSqlQuery& q) {
    FileRow r;
    r.FileId = NumberOf(q.value(0));
    r.TitleId = NumberOf(q.value(1));
    r.FileName = TextOf(q.value(2));
    r.Extension = TextOf(q.value(3));
    r.PathIndex = NumberOf(q.value(4));
    r.HasMemory = !q.value(5).isNull();
    r.Memory = NumberOf(q.value(5));
    r.HasPlayers = !q.value(6).isNull();
    r.Players = NumberOf(q.value(6));
    r.FileSize = NumberOf(q.value(7));
    r.Origin = TextOf(q.value(8));
    r.IdLang = TextOf(q.value(9));
    r.LoadSchema = TextOf(q.value(10));
    r.HaveIt = YesOf(q.value(11));
    r.Joysticks = TextOf(q.value(12));
    r.AYSound = YesOf(q.value(13));
    r.MultiLoad = YesOf(q.value(14));
    r.InnerPath = TextOf(q.value(15));
    r.Crc32 = TextOf(q.value(16));
    r.DatGame = TextOf(q.value(17));
    return r;
}

} // namespace

bool LoadFileRows(qint64 titleId, std::vector<FileRow>& rows) {
    rows.clear();
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, QString::fromLatin1(kFileRowSelect) + "WHERE TitleId = ? ORDER BY FileId",
                     {titleId}))
        return false;
    while (q.next())
        rows.push_back(FileRowOf(q));
    return true;
}

FileRowSaved SaveTapeFileRow(qint64 fileId, const TapeRowValues& values, FileRow& row) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, QString::fromLatin1(kFileRowSelect) + "WHERE FileId = ?", {fileId}))
        return FileRowSaved::Failed;
    if (!q.next()) return FileRowSaved::NoRow;
    row = FileRowOf(q);
    q.finish();
    // A tape without a language or a load schema leaves the row's own.
    if (!Store::Run("UPDATE tFiles SET FileSize = ?, Origin = ?, "
                    "IdLang = CASE WHEN ? THEN ? ELSE IdLang END, "
                    "LoadSchema = CASE WHEN ? THEN ? ELSE LoadSchema END WHERE FileId = ?",
                    {values.fileSize, values.origin, values.lang.isEmpty() ? 0 : 1,
                     values.lang.left(3), values.schema.isEmpty() ? 0 : 1, values.schema, fileId}))
        return FileRowSaved::Failed;
    row.FileSize = values.fileSize;
    row.Origin = values.origin;
    if (!values.lang.isEmpty()) row.IdLang = values.lang.left(3);
    if (!values.schema.isEmpty()) row.LoadSchema = values.schema;
    return FileRowSaved::Saved;
}

OriginMark DecodeOrigin(const QString& origin) {
    static const struct {
        const char* word;
        const char* icon;
    } kWords[] = {{"perfec", "SÍ"}, {"origin", "OO"}, {"compil", "OC"},
                  {"hacked", "OH"}, {"corrup", "OB"}, {"re-rel", "OR"},
                  {"magazi", "OM"}, {"type-i", "OT"}, {"incomp", "OI"}};
    const QString word = origin.left(6).toLower();
    for (const auto& w : kWords)
        if (word == QLatin1String(w.word)) return {QString::fromUtf8(w.icon), origin};
    if (origin.isEmpty() || origin == QLatin1String(" "))
        return {QStringLiteral("OU"), QStringLiteral("-Desconocido-")};
    return {QStringLiteral("OU"), origin};
}

QString SideBaseName(const QString& titleName) {
    QString base = titleName;
    base.replace(QLatin1String(": "), QLatin1String(" - "));
    base.remove(QLatin1Char('?'));
    return base;
}

const std::vector<SideFile>& SideFiles() {
    static const std::vector<SideFile> kinds = {
        {SideKind::Screen, "Scrshot", ".scr", 1},
        {SideKind::Pokes, "Pokes", ".pok", 2},
        {SideKind::InfoText, "Info", ".txt", 3},
        {SideKind::InfoDoc, "Info", ".doc", 0},
        {SideKind::InfoPdf, "Info", ".pdf", 0},
        {SideKind::Inlay, "Inlay", ".jpg", 4},
        {SideKind::Map, "Map", "_Map.jpg", 6},
        {SideKind::CodeSheet, "Codesheet", "_Codesheet.jpg", 5},
    };
    return kinds;
}

std::vector<SideFile> RenamedSideFiles() {
    std::vector<SideFile> listed;
    for (const SideFile& s : SideFiles())
        if (s.renameRank > 0) listed.push_back(s);
    std::sort(listed.begin(), listed.end(),
              [](const SideFile& a, const SideFile& b) { return a.renameRank < b.renameRank; });
    return listed;
}

const QStringList& SideFolders() {
    static const QStringList folders = {"Scrshot", "Info", "Pokes", "Map", "Inlay", "Codesheet"};
    return folders;
}

QString FindSideFile(const QString& fileDir, SideKind kind, const QString& baseName) {
    for (const SideFile& s : SideFiles())
        if (s.kind == kind)
            return platform::FindInFolders(fileDir, QString::fromLatin1(s.folder),
                                           baseName + QLatin1String(s.ending));
    return {};
}

} // namespace cintal
