#pragma once
// The order shown to the user: Spanish, ignoring case, numbers in numeric
// order, so that "Ábaco" stands beside "Abadía" and "Juego 2" before "Juego 10".

#include <QCollator>
#include <QCollatorSortKey>
#include <QString>
#include <vector>

namespace cintal {

QCollator TextCollator();

// Sort keys for many texts at once: comparing keys is far cheaper than
// comparing the texts again and again.
std::vector<QCollatorSortKey> SortKeys(const QCollator& c, const std::vector<QString>& texts);

// The place of each text in the order, from 0; texts that compare equal share
// one. Sorting by these numbers is sorting by the texts, and each distinct
// text is keyed once: a column of a few hundred publishers costs a few
// hundred keys, not one per row.
std::vector<int> SortRanks(const QCollator& c, const std::vector<QString>& texts);

} // namespace cintal
