#pragma once
// Per-user settings of the application "Cintal", in the sections Conf,
// Emulador and Caminos. Keys that differ only in case are one key, as they
// were on the system the collection came from.

#include <QString>

namespace cintal {

QString GetSetting(const QString& section, const QString& key, const QString& defaultValue = {});
void SaveSetting(const QString& section, const QString& key, const QString& value);

// Tests keep their settings in a file of their own; empty goes back to the
// user's settings.
void UseSettingsFile(const QString& path);

} // namespace cintal
