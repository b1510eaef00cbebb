#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace cintal {

// One row of Titles as the title grid shows it.
struct TitleRow {
    qint64 TitleId = 0;
    QString Name;
    QString Year;
    qint64 IdPub = 0;
    QString Type;
    bool HaveIt = false;
    bool HasEstado = false; // NULL reads as no value
    qint64 Estado = 0;
    // Where the name stands in name order (equal names share it); -1 until
    // the rows are sorted by name.
    int NameRank = -1;
};

// The clause that orders titles by name; the order itself is the one shown
// to the user, not the store's.
inline const QString kOrderByName = QStringLiteral(" ORDER by Name");

// Reads every title. With kOrderByName the rows come in name order;
// otherwise in the store's own order. False after a reported store failure.
bool LoadTitles(const QString& clause, std::vector<TitleRow>& rows);

// Stable sort by name, in the order shown to the user.
void SortTitlesByName(std::vector<TitleRow>& rows);

// A title's name as the store keeps it: at most 50 characters, and double
// quotes turned into apostrophes, as every writer of titles does.
QString StoredTitleName(const QString& name);

// The first count characters of text. A character outside the basic plane
// is one character, and is never cut in half.
QString LeftChars(const QString& text, int count);

// The text of the Fuente column: the Estado as a number when it is a known
// code (0 to 6), otherwise empty.
QString EstadoText(const TitleRow& row);

// --- What the title panes of the windows save

// The publisher id of a text typed into a publisher box: 0 for an empty text
// or the placeholder of no publisher. Asks whether to register an unknown
// publisher; on Yes text becomes the stored name and added tells the window
// to list the register again. -1 on No, or when the store failed: the title
// keeps the publisher it had.
qint64 ResolvePublisher(QString& text, bool* added = nullptr);

// The title's fields as a catalogue pane holds them. estado is -1 when the
// list has no selection, which keeps the stored value; origenInfo -1 and no
// type leave their columns alone.
struct TitleFields {
    QString name;
    qint64 idPub = 0;
    QString year;
    int estado = -1;
    int origenInfo = -1;
    std::optional<QString> type;
};

enum class TitleSaved { Saved, NoRow, Failed };
// Writes the title row: name and publisher always, the year only when there
// is one, and the source with the year; the origin of the record and the
// type whenever they are given.
TitleSaved SaveTitleRow(qint64 titleId, const TitleFields& fields);

// The origin of a title's record (OrigenInfo), or -1 when the title is gone.
int TitleOrigenInfo(qint64 titleId);
// The title's IdPub as stored, 0 when the title is gone.
qint64 TitleIdPub(qint64 titleId);

} // namespace cintal
