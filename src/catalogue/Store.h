#pragma once
// The catalogue on SQLite. One connection is opened at start and reused; every
// value goes in as a bound parameter. A failure is shown once, where it
// happens, as "Error en el catálogo: <motivo>", and the caller stops.

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <QVariant>
#include <QVariantList>

namespace cintal {

class Store {
public:
    // Makes a new, empty catalogue with its four tables. Never touches a file
    // that exists: reason then says so.
    static bool CreateEmpty(const QString& path, QString* reason);

    // Opens an existing catalogue; false (with the reason) when the file is
    // missing, can't be opened, or lacks one of the four tables. A catalogue
    // made before the columns of archives and hashes gains them, in one
    // transaction, and a box says so; nothing else is altered.
    static bool Open(const QString& path, QString* reason);
    static void Close();
    static bool IsOpen();
    static QSqlDatabase Db();

    // Prepares and runs sql with the values bound in order. On failure shows
    // the store's error and returns false.
    static bool Exec(QSqlQuery& query, const QString& sql, const QVariantList& values = {});
    // Same, for statements whose rows nobody reads. The statement is kept
    // prepared for the next call of the same text.
    static bool Run(const QString& sql, const QVariantList& values = {});
    // For statements run again and again, such as the look-ups of a scan:
    // prepared once per connection, run with the values bound in order. The
    // rows are read from the query returned, which the next call of the same
    // text reuses: read them, then finish() it. Null after a reported failure.
    static QSqlQuery* Cached(const QString& sql, const QVariantList& values = {});
    // A query ready to read forward only, which is what the fills need.
    static QSqlQuery NewQuery();
    // The key the store gave to the last row inserted.
    static qint64 LastInsertId(const QSqlQuery& query);

    // Several rows written for one event go in one transaction.
    static bool Begin();
    static bool Commit();
    static void Rollback();

    // Shows "Error en el catálogo: <motivo>", unless a QuietErrors is alive.
    static void ReportError(const QString& reason);
    // The reason of the last failure.
    static QString LastError();
    // How many failures there have been: a command compares it before and
    // after its work, so that nothing it says afterwards pretends success.
    static int Failures();
};

// While alive, store failures are kept for the caller to report in its own
// words instead of being shown.
class QuietErrors {
public:
    QuietErrors();
    ~QuietErrors();
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

private:
    bool previous;
};

// Reads of a row's value with the store's rules: NULL is empty text or 0,
// and a Yes/No column is Yes when it holds anything but 0.
inline QString TextOf(const QVariant& v) {
    return v.isNull() ? QString() : v.toString();
}
inline qint64 NumberOf(const QVariant& v) {
    return v.isNull() ? 0 : v.toLongLong();
}
inline bool YesOf(const QVariant& v) {
    return !v.isNull() && v.toLongLong() != 0;
}

} // namespace cintal
