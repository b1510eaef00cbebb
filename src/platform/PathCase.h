#pragma once
// The collection was made on a file system that ignores case: a side folder
// spelled "SCRSHOT" on disk is the "scrshot" that the program asks for.

#include <QString>
#include <QStringList>

namespace cintal {

// The existing path below dir whose every part equals the one asked for,
// ignoring case (an exact match is preferred); empty when there is none.
QString FindIgnoringCase(const QString& dir, const QStringList& parts);

} // namespace cintal
