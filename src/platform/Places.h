#pragma once
// Where the program keeps its catalogue and settings, and where it finds the
// files it ships with. A copy run from a folder it can write (the build
// folder, a portable copy) keeps everything beside itself; an installed one
// uses the user's data and configuration folders.

#include <QString>

namespace cintal::Places {

struct Folders {
    bool beside = false; // catalogue and settings beside the program
    QString data;        // the catalogue's folder
    QString config;      // the settings' folder
};

// The decision for a program in programDir: beside it when the folder holds
// a catalogue already, or when the program can write there and is not
// installed (no share/cintal beside its bin folder).
Folders For(const QString& programDir);
// For the running program.
Folders Current();

// "cintal.mdb" in the data folder.
QString CatalogueFile();
// "cintal.ini" in the configuration folder.
QString SettingsFile();

// A file the program ships with: beside the program, else in the installed
// share/cintal folder (or another of the system's data folders); the path
// beside the program when none has it.
QString SharedFile(const QString& name);

} // namespace cintal::Places
