#include "DemoDat.h"

#include "catalogue/DatFile.h"
#include "catalogue/Dats.h"
#include "catalogue/Store.h"
#include "maintenance/Reorganiser.h"

#include <QFile>
#include <QFileInfo>
#include <QXmlStreamWriter>

namespace cintal::demo {

namespace {

struct Entry {
    QString game, extension;
    qint64 size;
    QString crc32, md5, sha1;
};

} // namespace

bool WriteAndLoadDat(const QString& demoDir, QString& why) {
    QSqlQuery q = Store::NewQuery();
    if (!Store::Exec(q, "SELECT t.Name, t.Year, p.PublisherName, f.Extension, f.InnerPath, "
                        "f.FileSize, f.Crc32, f.Md5, f.Sha1 FROM tFiles f "
                        "JOIN Titles t ON t.TitleId = f.TitleId "
                        "LEFT JOIN Publishers p ON p.IdPub = t.IdPub "
                        "WHERE f.Sha1 IS NOT NULL AND f.Sha1 <> '' ORDER BY f.FileId")) {
        why = Store::LastError();
        return false;
    }
    std::vector<Entry> entries;
    int plain = 0, zipped = 0;
    while (q.next()) {
        const QString inner = TextOf(q.value(4));
        if (inner.isEmpty() ? plain >= 4 : zipped >= 1) continue;
        (inner.isEmpty() ? plain : zipped)++;
        const QString year = TextOf(q.value(1)).isEmpty() ? "19xx" : TextOf(q.value(1));
        const QString publisher = TextOf(q.value(2)).isEmpty() ? "-" : TextOf(q.value(2));
        const QString game = Reorganiser::FolderName(
            QStringLiteral("%1 (%2)(%3)").arg(TextOf(q.value(0)), year, publisher));
        const QString extension =
            inner.isEmpty() ? TextOf(q.value(3)).toLower() : QFileInfo(inner).suffix().toLower();
        entries.push_back({game, extension, NumberOf(q.value(5)), TextOf(q.value(6)),
                           TextOf(q.value(7)), TextOf(q.value(8))});
    }
    q.finish();
    // Games the collection lacks.
    const char* missing[][2] = {
        {"Galaxia Perdida (1985)(Nebulosa Soft)", "0f1e2d3c"},
        {"Castillo de Hielo (1986)(Erizo Soft)", "a1b2c3d4"},
        {"Piratas del Estrecho (1988)(Topacio Soft)", "5e6f7a8b"},
    };
    for (const auto& m : missing)
        entries.push_back({QString::fromUtf8(m[0]), "tzx", 12345, m[1], {}, {}});

    const QString path = demoDir + "/Cintal - Ejemplo (TOSEC).dat";
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        why = QStringLiteral("no se puede escribir %1").arg(path);
        return false;
    }
    QXmlStreamWriter xml(&file);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeDTD("<!DOCTYPE datafile PUBLIC \"-//Logiqx//DTD ROM Management Datafile//EN\" "
                 "\"http://www.logiqx.com/Dats/datafile.dtd\">");
    xml.writeStartElement("datafile");
    xml.writeStartElement("header");
    xml.writeTextElement("name", "Sinclair ZX Spectrum - Cintal de ejemplo");
    xml.writeTextElement("description", "Las cintas de la colección de ejemplo de Cintal");
    xml.writeTextElement("category", "Juegos");
    xml.writeTextElement("version", "2024-06-01");
    xml.writeTextElement("author", "Cintal");
    xml.writeEndElement();
    for (const Entry& e : entries) {
        xml.writeStartElement("game");
        xml.writeAttribute("name", e.game);
        xml.writeTextElement("description", e.game);
        xml.writeStartElement("rom");
        xml.writeAttribute("name", e.game + '.' + e.extension);
        xml.writeAttribute("size", QString::number(e.size));
        xml.writeAttribute("crc", e.crc32);
        if (!e.md5.isEmpty()) xml.writeAttribute("md5", e.md5);
        if (!e.sha1.isEmpty()) xml.writeAttribute("sha1", e.sha1);
        xml.writeEndElement();
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    file.close();

    Dat dat;
    if (!ReadDatFile(path, dat, why)) return false;
    if (!Dats::Add(dat)) {
        why = Store::LastError();
        return false;
    }
    return true;
}

} // namespace cintal::demo
