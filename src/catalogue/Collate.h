#pragma once
// The order shown to the user: Spanish, ignoring case, numbers in numeric
// order, so that "Ábaco" stands beside "Abadía" and "Juego 2" before "Juego 10".

#include "platform/Ranks.h"

#include <QCollator>
#include <QString>
#include <vector>

namespace cintal {

// The order for comparing a few texts.
QCollator TextCollator();

// The place of each text in that same order, from 0; texts that compare
// equal share one. Sorting by these numbers is sorting by the texts. Made for
// whole columns: each text is keyed once into one buffer (a column of a few
// hundred publishers costs a few hundred keys), and the keys are compared as
// bytes.
std::vector<int> SortRanks(const std::vector<QString>& texts);

} // namespace cintal
