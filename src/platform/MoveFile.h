#pragma once
// Moving a user's file: never over another file, never losing the source.

#include <QString>

namespace cintal::platform {

// Moves the file at from to the path to, which must not exist. Within a
// volume the move is one atomic step that refuses an existing destination;
// across volumes the file is copied beside its destination, flushed, checked
// for size, put in place without replacing anything, and only then is the
// source removed. False, with the reason, when nothing moved.
bool MoveNoReplace(const QString& from, const QString& to, QString* reason);

// The name beside to under which a move across volumes copies the file
// before putting it in place.
QString PartFile(const QString& to);
// Whether part is a copy of from cut short, as a move across volumes that
// was interrupted leaves it: a plain file holding the first bytes of from.
// Removing it loses nothing; any other file of that name is the user's.
bool IsLeftoverPart(const QString& from, const QString& part);
// Removes part if it is a leftover of from. False, with the reason, when it
// is not one or can't be removed.
bool RemoveLeftoverPart(const QString& from, const QString& part, QString* reason);

// Makes one folder whose parent exists. False, with the reason, otherwise.
bool MakeFolder(const QString& path, QString* reason);

} // namespace cintal::platform
