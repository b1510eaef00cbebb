#pragma once
// Giving the files a DAT knows the names the DAT gives them: planned first,
// so that a dry run shows what the run then does, and carried out file by
// file through the renamer, side files and row with each.

#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <utility>
#include <vector>

namespace cintal {

struct TidyStep {
    enum class Kind {
        Rename,  // "renombrar A -> B"
        Named,   // "ya tiene su nombre: se deja A"
        Taken,   // "ya existe: se deja B"
        Inside,  // "dentro de un archivo comprimido: se deja A"
        Missing, // "no está: se omite A"
        Invalid, // "nombre no válido: se deja A"
        // The file bears the DAT's name on disk, its row the old one: a run
        // was killed between them. "ya renombrado en disco: se pone al día
        // el catálogo A -> B"
        Unrecorded,
        // After the run:
        Renamed, // "renombrado A -> B"
        Failed,  // "no se pudo renombrar: se deja A"
    };
    Kind kind = Kind::Rename;
    qint64 fileId = 0;
    qint64 pathIndex = 0;
    QString folder;
    QString fullName; // the file's name with its extension, as the row has it
    QString newBase;  // the DAT's name without its extension
    QString source, dest;
    // The side files renamed with it, from and to.
    std::vector<std::pair<QString, QString>> sides;

    QString Text() const;
    // Text() and a line for each side file.
    QStringList Lines() const;
};

inline const QString kTidyTitle = QStringLiteral("Renombrar según la DAT");

class DatTidy {
public:
    // Plans the renames for the files of the DAT of that name. False after
    // a store failure; found says whether there is such a DAT.
    bool Plan(const QString& datName, bool& found);
    // Asks whether to rename the files the plan renames.
    bool Confirm() const;
    // Renames as planned (and brings rows and side files up to a file
    // renamed by a killed run). Steps that end otherwise change their kind.
    void Run();

    std::vector<TidyStep> steps;
    std::vector<QString> notes; // what failed, one line each
    qint64 planned = 0;         // the renames the plan holds
    qint64 renamed = 0, left = 0, failed = 0;
    // Told after each planned rename is tried: how many of them so far.
    std::function<void(qint64 done, qint64 total)> onProgress;
};

} // namespace cintal
