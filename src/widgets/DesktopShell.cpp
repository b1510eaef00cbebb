#include "widgets/DesktopShell.h"

#include "platform/ErrorText.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

namespace cintal {

bool DesktopShell::Open(const QString& target) {
    const QUrl url = target.contains(QLatin1String("://")) ? QUrl(target, QUrl::TolerantMode)
                                                           : QUrl::fromLocalFile(target);
    return QDesktopServices::openUrl(url);
}

bool DesktopShell::Start(const QString& program, const QStringList& arguments, QString* reason) {
    // Never a command line put together as text: a path with blanks or quotes
    // reaches the program as one argument.
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    if (process.startDetached()) return true;
    if (reason) *reason = ErrorText(process);
    return false;
}

} // namespace cintal
