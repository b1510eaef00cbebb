#include "catalogue/Breathe.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace cintal {

void Breathe() {
    static QElapsedTimer last;
    if (last.isValid() && last.elapsed() < 30) return;
    last.start();
    QCoreApplication::processEvents();
}

} // namespace cintal
