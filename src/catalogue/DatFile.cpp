#include "catalogue/DatFile.h"

#include <QFile>
#include <QXmlStreamReader>

namespace cintal {

namespace {

// The reader's own wording is English: the user reads ours.
QString Reason(const QXmlStreamReader& xml) {
    switch (xml.error()) {
    case QXmlStreamReader::PrematureEndOfDocumentError:
        return QStringLiteral("el archivo termina antes de tiempo");
    case QXmlStreamReader::NotWellFormedError:
        return QStringLiteral("el XML no está bien formado (%1)").arg(xml.errorString());
    case QXmlStreamReader::UnexpectedElementError:
        return QStringLiteral("elemento inesperado (%1)").arg(xml.errorString());
    default:
        return xml.errorString();
    }
}

bool IsHex(const QString& text, int length) {
    if (text.size() != length) return false;
    for (const QChar c : text)
        if (!((c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f'))) return false;
    return true;
}

// A hash attribute, lower case; an empty one counts as absent.
bool Hash(const QXmlStreamAttributes& at, const char* name, int length, QString& value,
          QString& why) {
    value = at.value(QLatin1String(name)).toString().trimmed().toLower();
    if (value.isEmpty() || IsHex(value, length)) return true;
    why = QStringLiteral("el %1 \"%2\" no es válido").arg(QString::fromLatin1(name), value);
    return false;
}

bool ReadRom(const QXmlStreamAttributes& at, DatRom& rom, QString& why) {
    rom.name = at.value(QLatin1String("name")).toString();
    if (rom.name.trimmed().isEmpty()) {
        why = QStringLiteral("una rom sin nombre");
        return false;
    }
    const QString size = at.value(QLatin1String("size")).toString().trimmed();
    if (!size.isEmpty()) {
        bool ok = false;
        rom.size = size.toLongLong(&ok);
        if (!ok || rom.size < 0) {
            why = QStringLiteral("el tamaño \"%1\" no es válido").arg(size);
            return false;
        }
    }
    return Hash(at, "crc", 8, rom.crc32, why) && Hash(at, "md5", 32, rom.md5, why) &&
           Hash(at, "sha1", 40, rom.sha1, why);
}

} // namespace

bool ReadDat(QIODevice& device, Dat& dat, QString& why) {
    dat = {};
    QXmlStreamReader xml(&device);
    QString fault;
    bool root = false;
    DatGame* game = nullptr;
    bool inHeader = false;
    int depth = 0, gameDepth = -1;
    while (fault.isEmpty() && !xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            ++depth;
            const QStringView name = xml.name();
            if (depth == 1) {
                if (name != u"datafile") {
                    fault = QStringLiteral("no es un archivo DAT (empieza por <%1>)")
                                .arg(name.toString());
                    break;
                }
                root = true;
            } else if (depth == 2 && name == u"header") {
                inHeader = true;
            } else if (depth == 3 && inHeader) {
                QString* headerField = nullptr;
                if (name == u"name")
                    headerField = &dat.name;
                else if (name == u"description")
                    headerField = &dat.description;
                else if (name == u"version")
                    headerField = &dat.version;
                else if (name == u"category")
                    headerField = &dat.category;
                if (headerField) *headerField = xml.readElementText().trimmed(), --depth;
            } else if (depth == 2 && (name == u"game" || name == u"machine")) {
                dat.games.push_back({xml.attributes().value(QLatin1String("name")).toString(), {}});
                game = &dat.games.back();
                gameDepth = depth;
                if (game->name.trimmed().isEmpty()) fault = QStringLiteral("un juego sin nombre");
            } else if (game && depth == gameDepth + 1 && name == u"rom") {
                DatRom rom;
                if (ReadRom(xml.attributes(), rom, fault)) game->roms.push_back(std::move(rom));
            }
        } else if (xml.isEndElement()) {
            if (depth == gameDepth) game = nullptr, gameDepth = -1;
            if (depth == 2) inHeader = false;
            --depth;
        }
    }
    if (fault.isEmpty() && xml.hasError()) fault = Reason(xml);
    if (fault.isEmpty() && !root) fault = QStringLiteral("no es un archivo DAT (está vacío)");
    if (fault.isEmpty() && dat.name.trimmed().isEmpty())
        fault = QStringLiteral("falta el nombre en la cabecera");
    if (fault.isEmpty()) return true;
    why = QStringLiteral("línea %1: %2").arg(xml.lineNumber()).arg(fault);
    dat = {};
    return false;
}

bool ReadDatFile(const QString& path, Dat& dat, QString& why) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        why = QStringLiteral("no se puede leer el archivo");
        return false;
    }
    return ReadDat(file, dat, why);
}

} // namespace cintal
