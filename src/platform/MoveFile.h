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

// Makes one folder whose parent exists. False, with the reason, otherwise.
bool MakeFolder(const QString& path, QString* reason);

} // namespace cintal::platform
