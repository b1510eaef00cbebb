#include "platform/DesktopShell.h"

#include <QDesktopServices>
#include <QUrl>

namespace cintal {

bool DesktopShell::Open(const QString& target) {
    const QUrl url = target.contains(QLatin1String("://")) ? QUrl(target, QUrl::TolerantMode)
                                                           : QUrl::fromLocalFile(target);
    return QDesktopServices::openUrl(url);
}

} // namespace cintal
