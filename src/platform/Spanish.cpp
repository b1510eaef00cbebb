#include "platform/Spanish.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace cintal {

QLocale SpanishLocale() {
    return QLocale(QLocale::Spanish, QLocale::Spain);
}

void UseSpanish() {
    QLocale::setDefault(SpanishLocale());
}

bool LoadQtSpanish() {
    static QTranslator* qtbase = nullptr;
    if (qtbase) return true;
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(SpanishLocale(), QStringLiteral("qtbase"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath)) ||
        !QCoreApplication::installTranslator(translator)) {
        delete translator;
        return false;
    }
    qtbase = translator;
    return true;
}

QString Number(qint64 n) {
    // Spanish leaves a number of four digits whole and groups longer ones by
    // thousands. Qt 6.4 reads that rule for the highest group alone and
    // writes "1234.567", so the grouping is done here.
    const QLocale spanish = SpanishLocale();
    QString digits = QString::number(n);
    const qsizetype first = n < 0 ? 1 : 0;
    if (digits.size() - first > 4)
        for (qsizetype at = digits.size() - 3; at > first; at -= 3)
            digits.insert(at, spanish.groupSeparator());
    return digits;
}

} // namespace cintal
