#pragma once
// Titles and files entering and leaving the catalogue one at a time, and the
// registers growing with them.

#include <QString>
#include <optional>

namespace cintal::Records {

// What a change to one record came to. Failed has been reported, and nothing
// of the change stays; Unchanged means there was nothing to do.
enum class RecordChange { Done, Unchanged, Failed };

// A new publisher row; the caller reloads the register. On an empty table
// the placeholder "- Desconocido -" takes IdPub 0, the slot of no publisher,
// and the name takes 1. Returns the new IdPub, or -1 after a store failure.
qint64 AddPublisher(const QString& name);

// The folder of a file's full path as Paths keeps it: the text before the
// last separator, and "/" itself for a file at the root.
QString FolderOf(const QString& path);
// A name inside a folder: "/" and the name at the root, never "//".
QString PathIn(const QString& dir, const QString& name);

// The folder's PathIndex (the lowest, folding case), or 0 if unknown. An
// empty text is no folder: it never matches the free numbers of the register.
qint64 FindPathIndex(const QString& dir);

// A new Paths row, in the first free number (told in a plain box when it
// fills a gap); reloads the register. False after a store failure.
bool AddPath(const QString& dir);

// Adds the file at path to the title: its folder, its row and the title's
// HaveIt in one transaction. Unchanged when it was in the catalogue already.
RecordChange AddFileToTitle(qint64 titleId, const QString& path);

// The FileId of the row that stands for the file of that name (as the disk
// spells it) in the folder; 0 when none does, nothing after a store failure.
std::optional<qint64> FileRowOf(const QString& name, const QString& extension, qint64 pathIndex);
bool FileInDB(const QString& name, const QString& extension, qint64 pathIndex);
// The same for a file given by its path.
std::optional<qint64> FileRowAt(const QString& path);
// The title a file row belongs to; 0 when there is no such row.
qint64 TitleOfFile(qint64 fileId);

// The title named CurName (cleaned, and left cleaned there) with that
// publisher, or 0.
qint64 FindTitle(qint64 idPub);

// Deletes the file row and, without moreFiles, marks the title as not held:
// both or neither. Unchanged when the row was gone already.
RecordChange DelFileRecord(qint64 fileId, qint64 titleId, bool moreFiles);
RecordChange DelTitleRecord(qint64 titleId);

// Deletes every title; files, folders and publishers stay. False after a
// store failure.
bool EmptyTitles();

// After a store failure in the middle of a command, memory follows the store.
void ReloadRegisters();

} // namespace cintal::Records

namespace cintal {

// The two web look-ups of a title: blanks become "+", nothing else is encoded.
QString InfoseekAddress(const QString& title, const QString& publisher);
QString TipShopAddress(const QString& title);

// Deletes a file from the disk, read-only or not, as the user asked. Shows
// "Archivo borrado", or why it could not be deleted.
void DeleteFileFromDisk(const QString& path);

} // namespace cintal
