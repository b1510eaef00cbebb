#include "platform/PathCase.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <filesystem>

namespace cintal::platform {

namespace {

QString Folded(const QString& name) {
    return name.toCaseFolded();
}

// The same folder however it was spelled: "/a/b/" and "/a/b".
QString FolderKey(const QString& dir) {
    QString key = dir;
    while (key.size() > 1 && key.endsWith(u'/'))
        key.chop(1);
    return key;
}

QString Join(const QString& dir, const QString& name) {
    return dir.endsWith(u'/') ? dir + name : dir + u'/' + name;
}

// The part before the extension; the whole name when it has none.
QStringView Stem(const QString& name) {
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot <= 0 ? QStringView(name) : QStringView(name).left(dot);
}

} // namespace

FolderListing::FolderListing(const QString& dir) {
    const QFileInfoList found = QDir(dir).entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::NoSort);
    byFolded.reserve(found.size());
    for (const QFileInfo& f : found)
        Add(f.fileName(), f.isDir() ? EntryKind::Folder : EntryKind::File);
}

QString FolderListing::Find(const QString& name, EntryKind kind) const {
    return FindIn({this}, name, kind).second;
}

std::pair<int, QString> FolderListing::FindIn(const std::vector<const FolderListing*>& folders,
                                              const QString& name, EntryKind kind) {
    const QString folded = Folded(name);
    std::pair<int, QString> extensionCase{-1, {}}, anyCase{-1, {}};
    int extensionCases = 0, anyCases = 0;
    for (int i = 0; i < static_cast<int>(folders.size()); ++i) {
        const auto it = folders[static_cast<std::size_t>(i)]->byFolded.constFind(folded);
        if (it == folders[static_cast<std::size_t>(i)]->byFolded.constEnd()) continue;
        for (const Entry& e : *it) {
            if (e.kind != kind) continue;
            if (e.name == name) return {i, e.name};
            if (Stem(e.name) == Stem(name)) {
                extensionCase = {i, e.name};
                ++extensionCases;
            }
            anyCase = {i, e.name};
            ++anyCases;
        }
    }
    if (extensionCases == 1) return extensionCase;
    if (anyCases == 1) return anyCase;
    return {-1, {}};
}

QStringList FolderListing::AllCases(const QString& name, EntryKind kind) const {
    QStringList names;
    const auto it = byFolded.constFind(Folded(name));
    if (it == byFolded.constEnd()) return names;
    for (const Entry& e : *it) {
        if (e.kind != kind) continue;
        if (e.name == name)
            names.prepend(e.name);
        else
            names.append(e.name);
    }
    return names;
}

QString FolderListing::Taken(const QString& name) const {
    const auto it = byFolded.constFind(Folded(name));
    if (it == byFolded.constEnd() || it->empty()) return {};
    for (const Entry& e : *it)
        if (e.name == name) return e.name;
    return it->front().name;
}

void FolderListing::Add(const QString& name, EntryKind kind) {
    std::vector<Entry>& same = byFolded[Folded(name)];
    for (Entry& e : same)
        if (e.name == name) {
            e.kind = kind;
            return;
        }
    same.push_back({name, kind});
}

void FolderListing::Remove(const QString& name) {
    const auto it = byFolded.find(Folded(name));
    if (it == byFolded.end()) return;
    std::erase_if(*it, [&](const Entry& e) { return e.name == name; });
    if (it->empty()) byFolded.erase(it);
}

QString EntryFinder::Find(const QString& dir, const QString& name, EntryKind kind) {
    if (dir.isEmpty() || name.isEmpty()) return {};
    const QString exact = Join(dir, name);
    const QFileInfo info(exact);
    // The exact name costs one look at the disk; only a name in another
    // case needs the folder's listing.
    if (info.exists() && (kind == EntryKind::Folder ? info.isDir() : !info.isDir())) return exact;
    const QString found = Listing(dir).Find(name, kind);
    return found.isEmpty() ? QString() : Join(dir, found);
}

const FolderListing& EntryFinder::Listing(const QString& dir) {
    const QString key = FolderKey(dir);
    auto it = listings.find(key);
    if (it == listings.end()) it = listings.emplace(key, FolderListing(dir)).first;
    return it->second;
}

QStringList EntryFinder::Folders(const QString& dir, const QString& folder) {
    QStringList paths;
    if (dir.isEmpty()) return paths;
    for (const QString& name : Listing(dir).AllCases(folder, EntryKind::Folder))
        paths << Join(dir, name);
    return paths;
}

QString EntryFinder::FindInFolders(const QString& dir, const QString& folder, const QString& name) {
    const QStringList sides = Folders(dir, folder);
    std::vector<const FolderListing*> all;
    for (const QString& side : sides)
        all.push_back(&Listing(side));
    const auto [at, found] = FolderListing::FindIn(all, name, EntryKind::File);
    return at < 0 ? QString() : Join(sides[at], found);
}

void EntryFinder::Moved(const QString& from, const QString& to) {
    const QFileInfo source(from), target(to);
    if (const auto it = listings.find(FolderKey(source.path())); it != listings.end())
        it->second.Remove(source.fileName());
    if (const auto it = listings.find(FolderKey(target.path())); it != listings.end())
        it->second.Add(target.fileName(), EntryKind::File);
}

QString FindEntry(const QString& dir, const QString& name, EntryKind kind) {
    return EntryFinder().Find(dir, name, kind);
}

QStringList FindFolders(const QString& dir, const QString& folder) {
    return EntryFinder().Folders(dir, folder);
}

QString FindInFolders(const QString& dir, const QString& folder, const QString& name) {
    return EntryFinder().FindInFolders(dir, folder, name);
}

namespace {

// The length of the valid UTF-8 sequence at i, or 0.
int SequenceAt(const std::string& s, std::size_t i) {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
    const unsigned char c = byte(i);
    if (c < 0x80) return 1;
    int length = 0;
    char32_t code = 0, least = 0;
    if (c >= 0xC2 && c <= 0xDF)
        length = 2, code = c & 0x1F, least = 0x80;
    else if (c >= 0xE0 && c <= 0xEF)
        length = 3, code = c & 0x0F, least = 0x800;
    else if (c >= 0xF0 && c <= 0xF4)
        length = 4, code = c & 0x07, least = 0x10000;
    else
        return 0;
    if (i + static_cast<std::size_t>(length) > s.size()) return 0;
    for (int k = 1; k < length; ++k) {
        const unsigned char n = byte(i + static_cast<std::size_t>(k));
        if ((n & 0xC0) != 0x80) return 0;
        code = (code << 6) | (n & 0x3F);
    }
    if (code < least || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0;
    return length;
}

} // namespace

std::vector<UnnamedEntry> UnnamedEntries(const QString& dir) {
    std::vector<UnnamedEntry> found;
#ifndef Q_OS_WIN // names there are UTF-16, which Qt always spells
    std::error_code ec;
    std::filesystem::directory_iterator it(QFile::encodeName(dir).toStdString(), ec), end;
    for (; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().native();
        QString shown;
        bool bad = false;
        for (std::size_t i = 0; i < name.size();) {
            const int n = SequenceAt(name, i);
            if (n == 0) {
                shown += QStringLiteral("\\x%1").arg(static_cast<unsigned char>(name[i]), 2, 16,
                                                     QLatin1Char('0'));
                bad = true;
                ++i;
                continue;
            }
            shown += QString::fromUtf8(name.data() + i, n);
            i += static_cast<std::size_t>(n);
        }
        if (!bad) continue;
        std::error_code kind;
        const bool folder = it->is_directory(kind) && !it->is_symlink(kind);
        const bool tape = name.size() > 4 && SequenceAt(name, name.size() - 4) == 1 &&
                          QString::fromLatin1(name.substr(name.size() - 4))
                                  .compare(QLatin1String(".tzx"), Qt::CaseInsensitive) == 0;
        found.push_back({shown, folder, tape && !folder});
    }
#else
    Q_UNUSED(dir);
#endif
    return found;
}

} // namespace cintal::platform
