#pragma once
// The emulators the collector has installed, the default one and one per
// format, as the settings keep them in the section "Emulador"; and opening a
// file with the emulator chosen for it.

#include <QString>
#include <QStringList>
#include <array>

namespace cintal::Emulators {

inline constexpr int kCount = 5;
inline constexpr int kFormats = 8;

// By index: the name in the combo boxes (and of its setting), the name in
// the list of emulators, and the executable.
inline const std::array<QString, kCount> kNames = {"Es.pectrum", "Spectaculator", "Spin", "VBSpec",
                                                   "RealSpectrum"};
inline const std::array<QString, kCount> kListNames = {"Es.pectrum", "Spectaculator", "Spin",
                                                       "VBSpecem", "RealSectrum"};
inline const std::array<QString, kCount> kExecutables = {
    "espectrum.exe", "Spectaculator.exe", "ZXSpin.exe", "vbspec.exe", "realspec.exe"};
inline const std::array<QString, kFormats> kFormatNames = {"TZX", "TAP", "Z80", "SNA",
                                                           "DSK", "TRD", "SP",  "SLT"};

inline const QString kSection = QStringLiteral("Emulador");
inline const QString kNotInstalled = QStringLiteral("No instalado");
inline const QString kByDefault = QStringLiteral("Por defecto");

// "<name>Path": the key of an emulator's full path.
QString PathKey(int emulator);
// "Fmt" and the digit of the format.
QString FormatKey(int format);
// The format's index for a file extension, any case; -1 for none.
int FormatOf(const QString& extension);

// The entries of the list of paths: the stored path, or "No instalado" when
// there is none or it names no existing file. Settings stay as they are.
// Where the usual folders exist (Windows only), a missing Spectaculator or
// VBSpec is found there and stored.
std::array<QString, kCount> LoadPaths();

// A path the user chose for an emulator: stored and true when it is an
// existing file; nothing changes otherwise.
bool ChoosePath(int emulator, const QString& path);

// The default emulator by its name: stores DefaultEmul, DefaultEmulPath from
// its path setting ("No instalado" without one), and EmulPath.
void SetDefault(const QString& name);

// The emulator for a format: one of the five names or "Por defecto".
void SetForFormat(int format, const QString& choice);

// The executable that opens the file: the emulator chosen for its format,
// else the default emulator, when it is an existing executable; empty for
// the desktop's association.
QString EmulatorFor(const QString& path);

// Opens a file: with its emulator, or, without one or when it fails to
// start ("No se puede iniciar <emulador>: <motivo>"), by the association.
bool OpenFile(const QString& path);

// The program's own temporary folder, made at first use and removed with
// everything in it when the program ends; empty when it can't be made.
QString ScratchFolder();

// OpenFile for a plain path; a file inside an archive ("ARCHIVO.zip|INTERIOR")
// is first copied out into the temporary folder, and that copy opened.
bool OpenLocation(const QString& location);

} // namespace cintal::Emulators
