#include "catalogue/Settings.h"

#include "platform/Places.h"

#include <QSettings>
#include <memory>

namespace cintal {

namespace {

QString settingsFile;

std::unique_ptr<QSettings> Open() {
    return std::make_unique<QSettings>(
        settingsFile.isEmpty() ? Places::SettingsFile() : settingsFile, QSettings::IniFormat);
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
