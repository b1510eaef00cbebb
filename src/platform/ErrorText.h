#pragma once
// What the system, Qt and SQLite say went wrong comes in English whatever the
// user's language. Every such reason that reaches the user goes through here
// and comes out in Spanish.

#include <QString>
#include <system_error>

class QFileDevice;
class QProcess;
class QSqlError;

namespace cintal {

// A code of errno.
QString ErrorText(int code);
QString ErrorText(std::error_code code);
// The last failure of a file, or of a program that was to be started.
QString ErrorText(const QFileDevice& file);
QString ErrorText(const QProcess& process);
// A failure of the catalogue's store. A trigger's own message is kept as it
// is written.
QString ErrorText(const QSqlError& error);

} // namespace cintal
