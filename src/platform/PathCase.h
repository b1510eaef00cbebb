#pragma once
// The collection was made on a file system that ignores case, and this one
// may not. Every reader finds a catalogue's name on disk through here, by one
// rule: the exact name; else the entry whose name differs only in the case of
// its extension (the scan keeps extensions in lower case); else the one entry
// equal ignoring case. Two entries that differ only in case are two files, so
// a name that could be either of them finds neither.

#include <QHash>
#include <QString>
#include <QStringList>
#include <unordered_map>
#include <utility>
#include <vector>

namespace cintal::platform {

enum class EntryKind { File, Folder };

// One folder's entries, read once, for those that look up many names in it
// (the reorganiser's plan changes it as it goes).
class FolderListing {
public:
    FolderListing() = default;
    explicit FolderListing(const QString& dir);

    // The name of the entry of that kind that stands for name; empty when
    // there is none or when it can't be told which.
    QString Find(const QString& name, EntryKind kind = EntryKind::File) const;
    // The same rule over several folders taken as one (a side folder may
    // stand in two cases): the index of the folder, -1 for none, and the name.
    static std::pair<int, QString> FindIn(const std::vector<const FolderListing*>& folders,
                                          const QString& name, EntryKind kind);
    // Every entry of that kind equal to name ignoring case, the exact one first.
    QStringList AllCases(const QString& name, EntryKind kind) const;
    // An entry equal to name in any case: a destination that must be left alone.
    QString Taken(const QString& name) const;

    void Add(const QString& name, EntryKind kind);
    void Remove(const QString& name);

private:
    struct Entry {
        QString name;
        EntryKind kind;
    };
    QHash<QString, std::vector<Entry>> byFolded;
};

// Finds entries by the rule above, keeping the listing of each folder that
// had to be read: a purge looks up thousands of names in a few folders.
class EntryFinder {
public:
    // The path of the entry of dir that stands for name; empty when none.
    QString Find(const QString& dir, const QString& name, EntryKind kind = EntryKind::File);
    // The listing of dir, read the first time it is asked for.
    const FolderListing& Listing(const QString& dir);
    // As FindFolders and FindInFolders below, from the listings kept.
    QStringList Folders(const QString& dir, const QString& folder);
    QString FindInFolders(const QString& dir, const QString& folder, const QString& name);
    // A file the run itself moved: the listings already read follow it, so
    // that a run renaming thousands of files of one folder lists it once.
    void Moved(const QString& from, const QString& to);

private:
    // Node-based: a listing handed out stays where it is as others are read.
    std::unordered_map<QString, FolderListing> listings;
};

// The same for a single look-up.
QString FindEntry(const QString& dir, const QString& name, EntryKind kind = EntryKind::File);

// Every folder below dir named folder in any case ("Scrshot", "SCRSHOT").
QStringList FindFolders(const QString& dir, const QString& folder);

// A side file: name found in any of the folders below dir named folder in
// any case, the exactly spelled folder first; empty when none holds it.
QString FindInFolders(const QString& dir, const QString& folder, const QString& name);

// An entry whose name isn't valid UTF-8: Qt can't spell it, so it never
// lists it, and no path of ours can reach it.
struct UnnamedEntry {
    QString shown; // the name with each bad byte written "\xNN"
    bool folder = false;
    bool tape = false; // ends in ".tzx" in any case
};
std::vector<UnnamedEntry> UnnamedEntries(const QString& dir);

} // namespace cintal::platform
