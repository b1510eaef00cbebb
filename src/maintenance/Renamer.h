#pragma once
// Renaming one file of the collection with its side files, and its row with
// it: all of it happens, or none of it stays.

#include <QString>
#include <vector>

namespace cintal {

namespace platform {
class EntryFinder;
}

struct RenameEntry {
    QString label;  // as the list shows it: the old base name and its ending
    QString source; // the side file on disk
    QString folder; // the side folder, as found on disk
    QString ending; // what follows the base name, with its case on disk
    bool ticked = true;
};

class Renamer {
public:
    static inline const QString kFallido = QStringLiteral("FALLIDO");

    // Takes the file, "name.ext" in folder, and finds its side files.
    // inner: the path inside the archive fullName names, for a zipped file,
    // which is never renamed: the archive holds other files too.
    void Load(const QString& folder, const QString& fullName, qint64 pathIndex,
              const QString& inner = {});

    // Renames the file and its ticked side files to newBase on disk, then
    // its row; when any part fails, what was renamed gets its old name back.
    // Returns the new full name, or "FALLIDO" after telling the user why.
    QString Rename(const QString& newBase);

    enum class Outcome { Done, Inner, Blank, Same, Invalid, Taken, Failed };
    // The same without a word to the user: the new full name in newName, or
    // what stopped it (with the reason of a failure in why).
    Outcome Apply(const QString& newBase, QString& newName, QString& why);

    QString folder;
    QString oldFull;
    QString oldBase;
    QString extension;
    qint64 pathIndex = 0;
    QString inner;
    std::vector<RenameEntry> entries;
    QString screenFile; // the file's loading screen, when there is one
    // Given by a run that renames many files: the folders it lists once and
    // that follow its renames. Without it each call reads what it needs.
    platform::EntryFinder* finder = nullptr;
    // The name the file already bears in its folder when a run was killed
    // after renaming it and before its row followed: then only its side
    // files and its row are brought to that name.
    QString renamedAs;

private:
    bool RenombraFileInDB(const QString& newBase);
};

} // namespace cintal
