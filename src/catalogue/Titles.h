#pragma once

#include <QString>
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

} // namespace cintal
