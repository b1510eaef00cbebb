#pragma once
// The purge of catalogue references to files that are no longer on disk.
// An unplugged drive makes a whole folder look gone, so the purge first
// counts what it would delete and only deletes when told to.

#include <QString>
#include <functional>
#include <vector>

namespace cintal {

class Purger {
public:
    struct Row {
        qint64 FileId = 0;
        QString path; // empty when the PathIndex is outside the register
    };

    // Reads every tFiles row and tests its file on disk. False after a store
    // failure, which has been reported.
    bool Plan();
    // Deletes the planned missing rows in one transaction. False after a
    // store failure: then nothing was deleted.
    bool Run();

    // The interactive purge: tells what it is about to do, asks with the
    // count and the first paths, and deletes on Yes. Every message goes
    // through the prompt.
    void Interactive();

    qint64 total = 0;         // rows looked at
    std::vector<Row> missing; // rows whose file is not on disk
    qint64 deleted = 0;
    // Called every so often with the rows done and the rows in all.
    std::function<void(qint64 done, qint64 total)> progress;
};

} // namespace cintal
