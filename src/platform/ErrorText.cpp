#include "platform/ErrorText.h"

#include "tape/SafeWrite.h"

#include <QCoreApplication>
#include <QFileDevice>
#include <QProcess>
#include <QSqlError>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

namespace cintal {

namespace {

bool EndsWithReason(const QString& message, const QString& reason) {
    if (reason.isEmpty() || !message.endsWith(reason)) return false;
    const qsizetype before = message.size() - reason.size();
    return before == 0 || message.mid(before - 2, 2) == QLatin1String(": ");
}

// The errno whose text ends the message; 0 when none does. Qt puts the
// system's text at the end of its own messages ("execv: No such file or
// directory"), and words a few codes itself, in the translation loaded.
int CodeOfText(const QString& message) {
    static const std::pair<int, const char*> kQtWords[] = {{EACCES, "Permission denied"},
                                                           {EMFILE, "Too many open files"},
                                                           {ENOENT, "No such file or directory"},
                                                           {ENOSPC, "No space left on device"}};
    for (const auto& [code, words] : kQtWords)
        if (EndsWithReason(message, QCoreApplication::translate("QIODevice", words)) ||
            EndsWithReason(message, QString::fromLatin1(words)))
            return code;
    static const std::vector<QString> texts = [] {
        std::vector<QString> t(1);
        for (int code = 1; code < 200; ++code)
            t.push_back(QString::fromLocal8Bit(std::strerror(code)));
        return t;
    }();
    for (std::size_t code = 1; code < texts.size(); ++code)
        if (EndsWithReason(message, texts[code])) return static_cast<int>(code);
    return 0;
}

// SQLite's primary result codes.
QString SqliteText(int code, const QString& own) {
    switch (code & 0xFF) {
    case 3:
        return QStringLiteral("permiso denegado");
    case 4:
    case 9:
        return QStringLiteral("la operación se ha interrumpido");
    case 5:
        return QStringLiteral("el catálogo está en uso por otro programa");
    case 6:
        return QStringLiteral("el catálogo está bloqueado");
    case 7:
        return QStringLiteral("no queda memoria");
    case 8:
        return QStringLiteral("el catálogo es de sólo lectura");
    case 10:
        return QStringLiteral("error de lectura o escritura en el disco");
    case 11:
        return QStringLiteral("el archivo del catálogo está dañado");
    case 13:
        return QStringLiteral("no queda espacio en el disco");
    case 14:
        return QStringLiteral("no se puede abrir el archivo del catálogo");
    case 17:
        return QStringLiteral("la estructura del catálogo ha cambiado");
    case 18:
        return QStringLiteral("el dato es demasiado grande");
    case 19:
        // RAISE in a trigger speaks its own words; SQLite's own checks say
        // "... constraint failed".
        if (!own.isEmpty() && !own.contains(QLatin1String("constraint failed"))) return own;
        return QStringLiteral("el catálogo rechaza el dato");
    case 20:
        return QStringLiteral("el tipo del dato no es el de la columna");
    case 26:
        return QStringLiteral("el archivo no es un catálogo");
    }
    static const QLatin1String kNoTable("no such table: "), kNoColumn("no such column: ");
    if (own.startsWith(kNoTable))
        return QStringLiteral("no existe la tabla ") + own.mid(kNoTable.size());
    if (own.startsWith(kNoColumn))
        return QStringLiteral("no existe la columna ") + own.mid(kNoColumn.size());
    return QStringLiteral("error del catálogo número %1").arg(code);
}

} // namespace

QString ErrorText(int code) {
    return ErrorText(std::error_code(code, std::generic_category()));
}

QString ErrorText(std::error_code code) {
    return QString::fromStdString(detail::ReasonOf(code));
}

QString ErrorText(const QFileDevice& file) {
    if (const int code = CodeOfText(file.errorString())) return ErrorText(code);
    switch (file.error()) {
    case QFileDevice::NoError:
        return QStringLiteral("sin error");
    case QFileDevice::ReadError:
        return QStringLiteral("error al leer el archivo");
    case QFileDevice::WriteError:
        return QStringLiteral("error al escribir el archivo");
    case QFileDevice::OpenError:
        return QStringLiteral("no se puede abrir el archivo");
    case QFileDevice::ResourceError:
        return QStringLiteral("no quedan recursos del sistema");
    case QFileDevice::RemoveError:
        return QStringLiteral("no se puede borrar el archivo");
    case QFileDevice::RenameError:
        return QStringLiteral("no se puede cambiar el nombre del archivo");
    case QFileDevice::CopyError:
        return QStringLiteral("no se puede copiar el archivo");
    case QFileDevice::PositionError:
        return QStringLiteral("no se puede posicionar en el archivo");
    case QFileDevice::ResizeError:
        return QStringLiteral("no se puede cambiar el tamaño del archivo");
    case QFileDevice::PermissionsError:
        return QStringLiteral("no se pueden cambiar los permisos del archivo");
    case QFileDevice::AbortError:
        return QStringLiteral("la operación se ha cancelado");
    case QFileDevice::TimeOutError:
        return QStringLiteral("se ha agotado el tiempo de espera");
    case QFileDevice::FatalError:
    case QFileDevice::UnspecifiedError:
        break;
    }
    return QStringLiteral("error desconocido");
}

QString ErrorText(const QProcess& process) {
    if (const int code = CodeOfText(process.errorString())) return ErrorText(code);
    switch (process.error()) {
    case QProcess::FailedToStart:
        return QStringLiteral("el programa no existe o no se puede ejecutar");
    case QProcess::Crashed:
        return QStringLiteral("el programa se ha cerrado por un fallo");
    case QProcess::Timedout:
        return QStringLiteral("se ha agotado el tiempo de espera");
    case QProcess::ReadError:
    case QProcess::WriteError:
        return QStringLiteral("error al comunicarse con el programa");
    case QProcess::UnknownError:
        break;
    }
    return QStringLiteral("error desconocido");
}

QString ErrorText(const QSqlError& error) {
    if (error.type() == QSqlError::NoError) return QStringLiteral("error desconocido");
    bool native = false;
    const int code = error.nativeErrorCode().toInt(&native);
    if (native && code != 0) return SqliteText(code, error.databaseText());
    // Qt's own reasons: no SQLite behind them.
    if (error.driverText().contains(QLatin1String("Driver not loaded")))
        return QStringLiteral("falta el controlador de SQLite de Qt");
    switch (error.type()) {
    case QSqlError::ConnectionError:
        return QStringLiteral("no se puede conectar con el catálogo");
    case QSqlError::StatementError:
        return QStringLiteral("la consulta al catálogo no es válida");
    case QSqlError::TransactionError:
        return QStringLiteral("error en la transacción del catálogo");
    default:
        return QStringLiteral("error desconocido");
    }
}

} // namespace cintal
