#pragma once
// Moving every file of one title to another: the records change title and
// the tapes take the other title's name, year and publisher. Each file's
// record and tape go together; a tape that can't be rewritten keeps its
// record where it was.

#include <QString>
#include <QStringList>
#include <vector>

namespace cintal {

class TitleMover {
public:
    struct Step {
        qint64 FileId = 0;
        QString path;      // empty when the folder is outside the register
        bool tape = false; // a TZX file on disk, to be rewritten
    };
    struct Failure {
        QString path;
        QString reason;
    };

    // The new title's data as the tapes will carry it; an empty year, and an
    // empty or unknown publisher ("- Desconocido -"), leave the tape's own. Read from the store by
    // LoadTarget, or set by a window from its grid.
    qint64 from = 0;
    qint64 into = 0;
    QString name, year, publisher;

    // Reads the new title's name, year and publisher. False when it isn't in
    // the catalogue or the store failed.
    bool LoadTarget();
    // The old title's file rows, in FileId order. False after a store failure.
    bool Plan();
    // Carries out the plan. Refuses (false, with "Elija otro título") when
    // both titles are the same. A missing file moves by record only, after
    // "No existe el archivo"; a tape that can't be read whole or saved keeps
    // its record and is listed in failures.
    bool Run();
    // "N archivos movidos" and the files that stayed, one a line.
    QString Summary() const;

    std::vector<Step> steps;
    int moved = 0;
    std::vector<Failure> failures;
};

} // namespace cintal
