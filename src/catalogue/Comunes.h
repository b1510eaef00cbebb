#pragma once
// The shared state of the program: one process's state by design, kept here
// in one place, with a reset for tests.

#include "tape/ArchiveInfo.h"
#include "tape/TZXTape.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <memory>
#include <vector>

namespace cintal {

// The folder register, indexed directly by PathIndex. An empty number marks
// a free index.
struct PathRegister {
    std::vector<QString> number; // row 0: the index as text
    std::vector<QString> dir;    // row 1: GameDir
    // Each folder's text in lower case, with the lowest index that holds it:
    // a scan looks its folder up for every file.
    QHash<QString, qint64> lowered;

    int Count() const { return static_cast<int>(number.size()); }
    bool Has(qint64 i) const { return i >= 0 && i < Count(); }
    QString Number(qint64 i) const { return Has(i) ? number[i] : QString(); }
    QString Dir(qint64 i) const { return Has(i) ? dir[i] : QString(); }
};

namespace Comunes {

inline QString DbPath;
// Publisher names by IdPub, slot 0 included.
inline std::vector<QString> PublisherNames;
inline PathRegister PathTable;
inline QString EmulPath;
inline QString Tap2TzxPath;
inline std::unique_ptr<TZXTape> CurTape;
inline std::shared_ptr<ArchiveInfo> CurInfo;
// The title's name on its way to FindTitle and AddScannedFile. It is
// Unicode: the tape's iName decoded, or the name of a file as the file
// system gives it, which Windows-1252 could not hold. FindTitle leaves it
// cleaned.
inline QString CurName;

// The values on their way into the store, made on first use.
ArchiveInfo& Info();

// The application's title and version.
inline const QString kAppTitle = QStringLiteral("Cintal");
inline constexpr int kVersionMajor = 1;
inline constexpr int kVersionMinor = 0;
inline constexpr int kVersionRevision = 404;

// The catalogue's file: "cintal.mdb" beside the program, or in the user's
// data folder when the program is installed.
QString DefaultDbPath();

// Sets DbPath to path (the program's catalogue when empty), opens it, loads
// the registers and reads the emulator setting. False when the store can't
// be opened; the reason says why.
bool InitGlobals(const QString& path, QString* reason);

// The registers, rebuilt from nothing at each load. False after a store
// failure, which has been reported.
bool LoadPublishers();
bool LoadPaths();

// Puts a publisher that AddPublisher has just written into the register,
// without reading the whole table again as LoadPublishers does: an import
// that meets thousands of new publishers would read it thousands of times.
// Reloads when the number is not the next one (the first publisher of an
// empty table comes with its placeholder). False after a store failure.
bool RegisterPublisher(qint64 idPub, const QString& name);

// The publisher's name for an IdPub; empty outside the register.
QString PublisherName(qint64 idPub);

// The name of the placeholder row that stands for no publisher.
inline const QString kUnknownPublisher = QStringLiteral("- Desconocido -");

// The first register slot whose name equals name, case folded, or -1.
// Slot 0 stands for no publisher, and so does the placeholder's name in any
// case, also in a catalogue that lacks its row or holds a copy of it. An
// empty name is no name: the empty slots of unused numbers never match it.
qint64 FindPublisher(const QString& name);

// Tape texts are Windows-1252 bytes; the catalogue holds Unicode.
QString FromTape(const std::string& cp1252);
std::string ToTape(const QString& text);

void Reset();

} // namespace Comunes

} // namespace cintal
