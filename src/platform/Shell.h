#pragma once
// Opening a file or an address with whatever the desktop has for it. Tests
// put a recorder in its place.

#include <QString>
#include <QStringList>

namespace cintal {

class Shell {
public:
    virtual ~Shell() = default;
    // A local path or a web address. False when nothing could open it.
    virtual bool Open(const QString& target) = 0;
    // Starts a program without waiting for it, each argument handed over as
    // it is. False, with the reason, when it could not start.
    virtual bool Start(const QString& program, const QStringList& arguments, QString* reason) = 0;

    static Shell& Current();
    static void Set(Shell* shell);
};

// Records what would have been opened, and answers as told.
class RecordingShell : public Shell {
public:
    bool Open(const QString& target) override {
        calls << target;
        return result;
    }
    // Each start as the program and its arguments joined by "|".
    bool Start(const QString& program, const QStringList& arguments, QString* reason) override {
        starts << (QStringList{program} + arguments).join('|');
        if (!startResult && reason) *reason = startReason;
        return startResult;
    }
    QStringList calls;
    bool result = true;
    QStringList starts;
    bool startResult = true;
    QString startReason;
};

} // namespace cintal
