#include "catalogue/Settings.h"

#include <QSettings>
#include <memory>

namespace cintal {

namespace {

QString settingsFile;

std::unique_ptr<QSettings> Open() {
    if (!settingsFile.isEmpty())
        return std::make_unique<QSettings>(settingsFile, QSettings::IniFormat);
    return std::make_unique<QSettings>(QStringLiteral("Cintal"), QStringLiteral("Cintal"));
}

QString KeyOf(const QString& section, const QString& key) {
    return section + '/' + key.toLower();
}

} // namespace

QString GetSetting(const QString& section, const QString& key, const QString& defaultValue) {
    auto s = Open();
    return s->value(KeyOf(section, key), defaultValue).toString();
}

void SaveSetting(const QString& section, const QString& key, const QString& value) {
    auto s = Open();
    s->setValue(KeyOf(section, key), value);
    s->sync();
}

void UseSettingsFile(const QString& path) {
    settingsFile = path;
}

} // namespace cintal
