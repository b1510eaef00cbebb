#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace cintal {

// One row of tFiles as the file grid shows it. Unset text columns read as
// empty text; unset numbers as "no value".
struct FileRow {
    qint64 FileId = 0;
    qint64 TitleId = 0;
    QString FileName;
    QString Extension;
    qint64 PathIndex = 0;
    bool HasMemory = false;
    qint64 Memory = 0;
    bool HasPlayers = false;
    qint64 Players = 0;
    qint64 FileSize = 0;
    QString Origin;
    QString IdLang;
    QString LoadSchema;
    bool HaveIt = false;
    QString Joysticks;
    bool AYSound = false;
    bool MultiLoad = false;
    // For a file inside an archive (FileName and Extension name the archive)
    // the path inside it; empty for a plain file.
    QString InnerPath;
    QString Crc32;   // lower-case hexadecimal, empty before the file is hashed
    QString DatGame; // the game a DAT names it, empty when no DAT knows it
};

// The title's file rows in the store's order. False after a reported store
// failure.
bool LoadFileRows(qint64 titleId, std::vector<FileRow>& rows);

// What a tape saved from the inspector leaves in its file row: the size and
// origin always, the language and load schema only when the tape has them.
struct TapeRowValues {
    qint64 fileSize = 0;
    QString origin;
    QString lang;
    QString schema;
};
enum class FileRowSaved { Saved, NoRow, Failed };
// Writes them into the row with that key; on Saved, row holds the row as it
// now stands.
FileRowSaved SaveTapeFileRow(qint64 fileId, const TapeRowValues& values, FileRow& row);

// How the Origen column reads a release kind: the icon key and the text.
struct OriginMark {
    QString icon;
    QString text;
};
OriginMark DecodeOrigin(const QString& origin);

// The side files of a title or of one file: below its folder, in a side
// folder, named by a base name and an ending. The reorganiser moves every
// kind, the renamer the ones it ranks, and the main window shows the screen,
// the inlay, the map and the code sheet.
enum class SideKind { Screen, Pokes, InfoText, InfoDoc, InfoPdf, Inlay, Map, CodeSheet };

struct SideFile {
    SideKind kind;
    const char* folder; // as the reorganiser makes it; found in any case
    const char* ending; // after the base name; the renamer lists it in lower case
    int renameRank;     // place in the renamer's list; 0 when it isn't there
};

// Every kind, in the order the reorganiser moves them.
const std::vector<SideFile>& SideFiles();
// The kinds the renamer lists, in its order.
std::vector<SideFile> RenamedSideFiles();
// The side folders, in the order the reorganiser makes them.
const QStringList& SideFolders();

// The title's name as side files are named: ": " becomes " - ", "?" goes.
QString SideBaseName(const QString& titleName);

// The side file of that kind below a file's folder, found ignoring case;
// empty when there is none or the folder is unknown.
QString FindSideFile(const QString& fileDir, SideKind kind, const QString& baseName);

} // namespace cintal
