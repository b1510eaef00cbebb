#include "maintenance/Emulators.h"

#include "catalogue/Ask.h"
#include "catalogue/Comunes.h"
#include "catalogue/Settings.h"
#include "platform/Archive.h"
#include "platform/Shell.h"
#include "tape/Prompt.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace cintal::Emulators {

namespace {

bool IsFile(const QString& path) {
    return !path.isEmpty() && QFileInfo(path).isFile();
}

bool IsExecutable(const QString& path) {
    const QFileInfo info(path);
    return !path.isEmpty() && info.isFile() && info.isExecutable();
}

} // namespace

QString PathKey(int emulator) {
    return kNames[emulator] + QStringLiteral("Path");
}

QString FormatKey(int format) {
    return QStringLiteral("Fmt") + QString::number(format);
}

int FormatOf(const QString& extension) {
    for (int i = 0; i < kFormats; ++i)
        if (extension.compare(kFormatNames[i], Qt::CaseInsensitive) == 0) return i;
    return -1;
}

std::array<QString, kCount> LoadPaths() {
    std::array<QString, kCount> entries;
    for (int i = 0; i < kCount; ++i) {
        entries[i] = GetSetting(kSection, PathKey(i), kNotInstalled);
        if (!IsFile(entries[i])) entries[i] = kNotInstalled;
    }
#ifdef Q_OS_WIN
    // The folders the installers of these two used by default.
    const std::pair<int, QString> usual[] = {
        {1, QStringLiteral("C:\\Archivos de programa\\Spectaculator\\spectaculator.exe")},
        {3, QStringLiteral("C:\\Archivos de programa\\vbspec\\vbspec.exe")}};
    for (const auto& [i, path] : usual)
        if (entries[i] == kNotInstalled && IsFile(path)) {
            SaveSetting(kSection, PathKey(i), path);
            entries[i] = path;
        }
#endif
    return entries;
}

bool ChoosePath(int emulator, const QString& path) {
    if (emulator < 0 || emulator >= kCount || !IsFile(path)) return false;
    SaveSetting(kSection, PathKey(emulator), path);
    return true;
}

void SetDefault(const QString& name) {
    SaveSetting(kSection, QStringLiteral("DefaultEmul"), name);
    SaveSetting(kSection, QStringLiteral("DefaultEmulPath"),
                GetSetting(kSection, name + QStringLiteral("Path"), kNotInstalled));
    Comunes::EmulPath = GetSetting(kSection, QStringLiteral("DefaultEmulPath"), QString());
}

void SetForFormat(int format, const QString& choice) {
    if (format < 0 || format >= kFormats) return;
    SaveSetting(kSection, FormatKey(format), choice);
}

QString EmulatorFor(const QString& path) {
    const int format = FormatOf(QFileInfo(path).suffix());
    if (format >= 0) {
        const QString choice = GetSetting(kSection, FormatKey(format), kByDefault);
        for (int i = 0; i < kCount; ++i)
            if (choice.compare(kNames[i], Qt::CaseInsensitive) == 0) {
                const QString program = GetSetting(kSection, PathKey(i));
                if (IsExecutable(program)) return program;
            }
    }
    const QString program = GetSetting(kSection, QStringLiteral("DefaultEmulPath"));
    return IsExecutable(program) ? program : QString();
}

bool OpenFile(const QString& path) {
    const QString program = EmulatorFor(path);
    if (!program.isEmpty()) {
        QString reason;
        if (Shell::Current().Start(program, {path}, &reason)) return true;
        Ask(("No se puede iniciar " + program + ": " + reason).toStdString(),
            Comunes::kAppTitle.toStdString(), Icon::Exclamation);
    }
    return Shell::Current().Open(path);
}

QString ScratchFolder() {
    // Destroyed, and so removed, when the program ends.
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/cintal-XXXXXX"));
    return dir.isValid() ? dir.path() : QString();
}

bool OpenLocation(const QString& location) {
    const auto at = platform::SplitInner(location.toStdString());
    if (!at) return OpenFile(location);
    // Each opening in a folder of its own: an emulator may still hold the
    // copy made before, and nothing is written over a file.
    static int openings = 0;
    const QString scratch = ScratchFolder();
    const QString folder = scratch + "/" + QString::number(++openings);
    std::string written, why;
    if (scratch.isEmpty() || !QDir().mkpath(folder)) {
        why = "no se puede crear una carpeta temporal";
    } else if (platform::ExtractInner(*at, folder.toStdString(), written, why)) {
        return OpenFile(QString::fromStdString(written));
    }
    Ask("No se puede abrir " + location + ": " + QString::fromStdString(why), Comunes::kAppTitle,
        Icon::Exclamation);
    return false;
}

} // namespace cintal::Emulators
