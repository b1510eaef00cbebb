#pragma once
// The program speaks Spanish whatever the machine's language: Qt's own
// dialogs and buttons, and every number shown.

#include <QLocale>
#include <QString>

namespace cintal {

// Spain's Spanish.
QLocale SpanishLocale();

// Makes Spanish the default locale, for every QLocale() made after.
void UseSpanish();

// Loads Qt's own Spanish texts ("Buscar en", "Cancelar") from the system's
// translations; false when they are not installed. Needs the application
// object.
bool LoadQtSpanish();

// A quantity as Spanish writes it: "7208", "12.345", "1.234.567".
QString Number(qint64 n);

} // namespace cintal
